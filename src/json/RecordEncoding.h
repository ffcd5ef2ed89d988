// Writes records as JSON objects: compact, the keys in the order of their declaration, absent
// fields left out.
#pragma once

#include "json/JSONWriting.h"
#include "json/RecordFields.h"
#include "text/Text.h"

#include <concepts>
#include <optional>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace velmora::internal {

/// JSON text that is being written. A type of its own, so that each `encode` below finds the ones
/// of other headers.
struct JSONText {
  std::string utf8;
};

// Each `encode` appends a value. Other headers add types by an `encode` in this namespace. Texts
// are UTF-8.

template <std::integral Integer>
void encode(JSONText& json, Integer integer) {
  json.utf8 += std::to_string(integer);
}

inline void encode(JSONText& json, bool boolean) { json.utf8 += boolean ? "true" : "false"; }

inline void encode(JSONText& json, TextView text) { appendJSONString(json.utf8, text); }

template <class Element>
void encode(JSONText& json, const std::vector<Element>& elements) {
  char separator = '[';
  for (const Element& element : elements) {
    json.utf8 += separator;
    encode(json, element);
    separator = ',';
  }
  json.utf8 += elements.empty() ? "[]" : "]";
}

template <class Value>
bool isAbsent(const Value&) {
  return false;
}

template <class Value>
bool isAbsent(const std::optional<Value>& optional) {
  return !optional.has_value();
}

template <class Value>
void encode(JSONText& json, const std::optional<Value>& present) {
  encode(json, *present);
}

template <RecordWithFields Record>
void encode(JSONText& json, const Record& record) {
  char separator = '{';
  const auto encodeField = [&](const auto& field) {
    const auto& value = record.*field.member;
    if (isAbsent(value)) {
      return;
    }
    json.utf8 += separator;
    appendJSONString(json.utf8, field.key);
    json.utf8 += ':';
    encode(json, value);
    separator = ',';
  };
  std::apply([&](const auto&... fields) { (encodeField(fields), ...); },
             RecordFields<Record>::list);
  json.utf8 += separator == '{' ? "{}" : "}";
}

/// The JSON text of a value.
template <class Value>
[[nodiscard]] std::string encoded(const Value& value) {
  JSONText json;
  encode(json, value);
  return std::move(json.utf8);
}

}  // namespace velmora::internal

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
#include <vector>

namespace velmora {

// Each `encode` appends a value. Types elsewhere join in by an `encode` of their own in this
// namespace. Texts are UTF-8.

template <std::integral Integer>
void encode(std::string& json, Integer integer) {
  json += std::to_string(integer);
}

inline void encode(std::string& json, bool boolean) { json += boolean ? "true" : "false"; }

inline void encode(std::string& json, TextView text) { appendJSONString(json, text); }

template <class Element>
void encode(std::string& json, const std::vector<Element>& elements) {
  char separator = '[';
  for (const Element& element : elements) {
    json += separator;
    encode(json, element);
    separator = ',';
  }
  json += elements.empty() ? "[]" : "]";
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
void encode(std::string& json, const std::optional<Value>& present) {
  encode(json, *present);
}

template <RecordWithFields Record>
void encode(std::string& json, const Record& record) {
  char separator = '{';
  const auto encodeField = [&](const auto& field) {
    const auto& value = record.*field.member;
    if (isAbsent(value)) {
      return;
    }
    json += separator;
    appendJSONString(json, field.key);
    json += ':';
    encode(json, value);
    separator = ',';
  };
  std::apply([&](const auto&... fields) { (encodeField(fields), ...); },
             RecordFields<Record>::list);
  json += separator == '{' ? "{}" : "}";
}

}  // namespace velmora

// Writes records as JSON objects: compact, the keys in the order of their declaration, absent
// fields left out.
#pragma once

#include "json/EncodingError.h"
#include "json/JSONWriting.h"
#include "json/RecordFields.h"
#include "text/Text.h"

#include <concepts>
#include <cstddef>
#include <optional>
#include <ranges>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

namespace velmora::internal {

/// JSON text that is being written. A type of its own, so that each `encode` below finds the ones
/// of other headers.
struct JSONText {
  std::string utf8;
};

// Each `encode` appends a value. It throws EncodingError for a value that it cannot write, such as
// a text that is not UTF-8. Other headers add types by an `encode` in this namespace.

template <std::integral Integer>
void encode(JSONText& json, Integer integer) {
  json.utf8 += std::to_string(integer);
}

inline void encode(JSONText& json, bool boolean) { json.utf8 += boolean ? "true" : "false"; }

inline void encode(JSONText& json, TextView text) {
  if (!isUTF8(text)) {
    throw EncodingError("The text is not UTF-8.");
  }
  appendJSONString(json.utf8, text);
}

inline CodingKey codingKey(std::string_view key) { return std::string(key); }
inline CodingKey codingKey(std::size_t index) { return index; }

/// Appends the value of a key or an index, which becomes a step of the coding path of an error.
template <class Place, class Value>
void encodeAt(Place place, JSONText& json, const Value& value) {
  try {
    encode(json, value);
  } catch (EncodingError& error) {
    error.prependToCodingPath(codingKey(place));
    throw;
  }
}

/// Appends an array of the elements of a range.
template <std::ranges::input_range Elements>
void encodeArray(JSONText& json, const Elements& elements) {
  char separator = '[';
  std::size_t index = 0;
  for (const auto& element : elements) {
    json.utf8 += separator;
    encodeAt(index++, json, element);
    separator = ',';
  }
  json.utf8 += separator == '[' ? "[]" : "]";
}

template <class Element>
void encode(JSONText& json, const std::vector<Element>& elements) {
  encodeArray(json, elements);
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
    encodeAt(field.key, json, value);
    separator = ',';
  };
  std::apply([&](const auto&... fields) { (encodeField(fields), ...); },
             RecordFields<Record>::list);
  json.utf8 += separator == '{' ? "{}" : "}";
}

/// The JSON text of a value. Throws EncodingError if a part of it cannot be written.
template <class Value>
[[nodiscard]] std::string encoded(const Value& value) {
  JSONText json;
  encode(json, value);
  return std::move(json.utf8);
}

}  // namespace velmora::internal

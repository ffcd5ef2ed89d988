// Reads values of the formats from JSON: each `decode` fills its second argument or throws
// DecodingError, whose coding path begins at the value given.
//
// null where a value is required is valueNotFound, another JSON type than the value's own
// typeMismatch. Types elsewhere join in by a `decode` of their own in this namespace.
#pragma once

#include "json/DecodingError.h"
#include "json/ExactInteger.h"
#include "json/strict/JSONValue.h"
#include "text/Text.h"

#include <concepts>
#include <cstddef>
#include <optional>
#include <string>
#include <type_traits>
#include <vector>

namespace velmora::internal {

/// Refuses a value that is not one of those allowed.
[[noreturn]] void refuseData(JSONValue value, const std::string& description);

[[noreturn]] void refuseType(JSONValue value, JSONType type);

/// Throws unless the value is of that type.
inline void requireType(JSONValue value, JSONType type) {
  if (value.type() != type) {
    refuseType(value, type);
  }
}

/// Any number whose exact value is whole; dataCorrupted for a fraction or more than 64 bits.
[[nodiscard]] ExactInteger requireWholeNumber(JSONValue value);

[[noreturn]] void refuseRange(JSONValue value, std::size_t bits, bool isSigned);

template <std::integral Integer>
void decode(JSONValue value, Integer& integer) {
  const std::optional<Integer> fitting = checkedCast<Integer>(requireWholeNumber(value));
  if (!fitting.has_value()) {
    refuseRange(value, 8 * sizeof(Integer), std::is_signed_v<Integer>);
  }
  integer = *fitting;
}

inline void decode(JSONValue value, bool& boolean) {
  requireType(value, JSONType::boolean);
  boolean = value.boolean();
}

/// Refers to the document.
inline void decode(JSONValue value, TextView& text) {
  requireType(value, JSONType::string);
  text = TextView(value.text());
}

inline void decode(JSONValue value, Text& text) {
  requireType(value, JSONType::string);
  text = Text(value.text());
}

/// A value that may be absent: null stands for that, too.
template <class Value>
void decode(JSONValue value, std::optional<Value>& optional) {
  if (value.type() == JSONType::null) {
    optional.reset();
    return;
  }
  decode(value, optional.emplace());
}

/// Calls `decodeElement` with each element of an array, in order.
template <std::invocable<JSONValue> DecodeElement>
void decodeElements(JSONValue array, DecodeElement decodeElement) {
  requireType(array, JSONType::array);
  std::size_t index = 0;
  try {
    for (JSONElements elements(array); !elements.atEnd(); elements.advance()) {
      decodeElement(elements.value());
      ++index;
    }
  } catch (DecodingError& error) {
    error.prependToCodingPath(index);
    throw;
  }
}

/// Takes the place of what `elements` held, in its memory.
template <class Element>
void decode(JSONValue value, std::vector<Element>& elements) {
  elements.clear();
  decodeElements(value,
                 [&elements](JSONValue element) { decode(element, elements.emplace_back()); });
}

}  // namespace velmora::internal

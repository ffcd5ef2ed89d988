// Reads values from JSON. Each `decode` fills its second argument or throws a DecodingError, whose
// coding path begins at the value. A null raises valueNotFound, any other wrong type typeMismatch.
// Other headers add types by a `decode` in this namespace.
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

/// Throws dataCorrupted at the value.
[[noreturn]] void refuseData(JSONValue value, const std::string& description);

[[noreturn]] void refuseType(JSONValue value, JSONType type);

/// Throws unless the value is of that type.
inline void requireType(JSONValue value, JSONType type) {
  if (value.type() != type) {
    refuseType(value, type);
  }
}

/// The value of a number that is an integer; dataCorrupted for a fraction or more than 64 bits.
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

/// `text` refers to the document.
inline void decode(JSONValue value, TextView& text) {
  requireType(value, JSONType::string);
  text = TextView(value.text());
}

inline void decode(JSONValue value, Text& text) {
  requireType(value, JSONType::string);
  text = Text(value.text());
}

/// Reads null as absent.
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

/// Replaces the elements, and reuses their memory.
template <class Element>
void decode(JSONValue value, std::vector<Element>& elements) {
  elements.clear();
  decodeElements(value,
                 [&elements](JSONValue element) { decode(element, elements.emplace_back()); });
}

}  // namespace velmora::internal

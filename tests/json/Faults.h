// What is wrong with a document, in one line that a test can compare.
#pragma once

#include "json/DecodingError.h"

#include <cstddef>
#include <string>
#include <variant>

namespace velmora::internal {

/// As in `list.0.name`, empty for the document as a whole.
inline std::string joined(const std::vector<CodingKey>& codingPath) {
  std::string text;
  for (const CodingKey& key : codingPath) {
    text += text.empty() ? "" : ".";
    const auto* const index = std::get_if<std::size_t>(&key);
    text += index == nullptr ? std::get<std::string>(key) : std::to_string(*index);
  }
  return text;
}

/// As in `typeMismatch list.0.name @12: Expected a string but found a number.`; the path and the
/// byte offset are left out where there is none.
inline std::string describe(const DecodingError& error) {
  std::string text(name(error.kind()));
  if (!error.codingPath().empty()) {
    text += " " + joined(error.codingPath());
  }
  if (error.byteOffset().has_value()) {
    text += " @" + std::to_string(*error.byteOffset());
  }
  return text + ": " + error.what();
}

/// The DecodingError that `action` throws, as above; "none" when it throws nothing.
template <class Action>
std::string faultOf(Action action) {
  try {
    action();
  } catch (const DecodingError& error) {
    return describe(error);
  }
  return "none";
}

}  // namespace velmora::internal

// Describes the fault of a document or of a value in one line, so that a test can compare it.
#pragma once

#include "json/DecodingError.h"
#include "json/EncodingError.h"

#include <cstddef>
#include <string>
#include <variant>

namespace velmora::internal {

/// Joins the keys as in `list.0.name`. Empty for the document as a whole.
inline std::string joined(const std::vector<CodingKey>& codingPath) {
  std::string text;
  for (const CodingKey& key : codingPath) {
    text += text.empty() ? "" : ".";
    const auto* const index = std::get_if<std::size_t>(&key);
    text += index == nullptr ? std::get<std::string>(key) : std::to_string(*index);
  }
  return text;
}

/// As in `typeMismatch list.0.name @12: Expected a string but found a number.` An error without
/// path or byte offset has neither.
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

/// The description of the DecodingError that `action` throws; "none" when it throws nothing.
template <class Action>
std::string faultOf(Action action) {
  try {
    action();
  } catch (const DecodingError& error) {
    return describe(error);
  }
  return "none";
}

/// The path and description of the EncodingError that `action` throws; "none" when it throws
/// nothing.
template <class Action>
std::string encodingFaultOf(Action action) {
  try {
    static_cast<void>(action());
  } catch (const EncodingError& error) {
    return joined(error.codingPath()) + ": " + error.what();
  }
  return "none";
}

}  // namespace velmora::internal

// The shared code of the fuzz targets: properties that must hold for every input, and the two
// halves of an input.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>
#include <utility>

namespace velmora {

/// Ends the process when a property does not hold. libFuzzer then reports the input and the stack.
inline void require(bool holds) {
  if (!holds) {
    std::abort();
  }
}

inline std::string_view textOf(const std::uint8_t* data, std::size_t size) {
  return {reinterpret_cast<const char*>(data), size};
}

/// The text before the first NUL, and the text after it. The second is empty without a NUL.
inline std::pair<std::string_view, std::string_view> halvesOf(std::string_view input) {
  const std::size_t end = input.find('\0');
  if (end == std::string_view::npos) {
    return {input, {}};
  }
  return {input.substr(0, end), input.substr(end + 1)};
}

}  // namespace velmora

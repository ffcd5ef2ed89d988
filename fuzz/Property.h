// What the fuzz targets share: properties that must hold for every input, and the input's two
// halves.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>
#include <utility>

namespace velmora {

/// Ends the process when a property fails, which libFuzzer reports with the input and the stack.
inline void require(bool holds) {
  if (!holds) {
    std::abort();
  }
}

inline std::string_view textOf(const std::uint8_t* data, std::size_t size) {
  return {reinterpret_cast<const char*>(data), size};
}

/// What stands before and after the first NUL; the second is empty when there is none.
inline std::pair<std::string_view, std::string_view> halvesOf(std::string_view input) {
  const std::size_t end = input.find('\0');
  if (end == std::string_view::npos) {
    return {input, {}};
  }
  return {input.substr(0, end), input.substr(end + 1)};
}

}  // namespace velmora

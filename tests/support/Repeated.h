// Long texts for tests.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace velmora {

inline std::string repeated(std::string_view text, std::size_t count) {
  std::string result;
  for (; count > 0; --count) {
    result += text;
  }
  return result;
}

}  // namespace velmora

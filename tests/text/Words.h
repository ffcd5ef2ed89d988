// Many short texts in one string.
#pragma once

#include <iterator>
#include <sstream>
#include <string>
#include <vector>

namespace velmora::internal {

/// The words between blanks.
inline std::vector<std::string> wordsOf(const std::string& text) {
  std::istringstream stream(text);
  return {std::istream_iterator<std::string>(stream), {}};
}

}  // namespace velmora::internal

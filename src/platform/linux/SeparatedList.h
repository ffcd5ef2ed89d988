// Lists in environment variables, such as "a:b".
#pragma once

#include <algorithm>
#include <string_view>

namespace velmora {

/// Removes the first part of `list` and the separator after it. Returns the part, which is the
/// whole list if there is no separator.
[[nodiscard]] inline std::string_view takePart(std::string_view& list, char separator) {
  const std::string_view part = list.substr(0, list.find(separator));
  list.remove_prefix(std::min(part.size() + 1, list.size()));
  return part;
}

}  // namespace velmora

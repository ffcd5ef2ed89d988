// The distance of two words is the number of letters to insert, remove, replace or exchange with
// the next one (optimal string alignment). Row r of the table has the distances of the word's first
// r letters from each beginning of the name. A row follows from the two rows before it.
#include "common/NearestName.h"

#include <algorithm>
#include <cstddef>
#include <numeric>
#include <utility>
#include <vector>

namespace velmora {

namespace {

std::size_t maxDistanceOf(std::string_view name) { return name.size() < 6 ? 1 : 2; }

std::size_t distanceOf(std::string_view word, std::string_view name) {
  std::vector<std::size_t> beforeLast;
  std::vector<std::size_t> last(name.size() + 1);
  std::iota(last.begin(), last.end(), 0);
  for (std::size_t row = 1; row <= word.size(); ++row) {
    std::vector<std::size_t> distances = {row};
    for (std::size_t column = 1; column <= name.size(); ++column) {
      const bool isEqual = word[row - 1] == name[column - 1];
      std::size_t distance = std::min(
          {last[column] + 1, distances[column - 1] + 1, last[column - 1] + (isEqual ? 0 : 1)});
      if (row > 1 && column > 1 && word[row - 2] == name[column - 1] &&
          word[row - 1] == name[column - 2]) {
        distance = std::min(distance, beforeLast[column - 2] + 1);
      }
      distances.push_back(distance);
    }
    beforeLast = std::exchange(last, std::move(distances));
  }
  return last.back();
}

}  // namespace

std::optional<std::string_view> nearestName(std::string_view word,
                                            std::span<const std::string_view> names) {
  std::optional<std::string_view> nearest;
  std::size_t nearestDistance = std::string_view::npos;
  for (const std::string_view name : names) {
    if (!word.empty() && name.starts_with(word)) {
      return name;
    }
    // A table for a word of any length would take long.
    const std::size_t distance = word.size() <= name.size() + maxDistanceOf(name)
                                     ? distanceOf(word, name)
                                     : std::string_view::npos;
    if (distance <= maxDistanceOf(name) && distance < nearestDistance) {
      nearest = name;
      nearestDistance = distance;
    }
  }
  return nearest;
}

}  // namespace velmora

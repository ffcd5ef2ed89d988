#include "text/UniquePaths.h"

#include <algorithm>
#include <iterator>
#include <unordered_set>

namespace velmora::internal {

std::vector<Text> uniquePaths(const std::vector<Text>& paths) {
  std::vector<Text> unique;
  std::unordered_set<Text> seen;
  std::ranges::copy_if(paths, std::back_inserter(unique),
                       [&](const Text& path) { return seen.insert(path).second; });
  return unique;
}

}  // namespace velmora::internal

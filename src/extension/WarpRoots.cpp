#include "extension/WarpRoots.h"

#include "platform/PathStandardizer.h"
#include "text/Characters.h"
#include "text/UniquePaths.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <string>
#include <string_view>
#include <utility>

namespace velmora {

namespace {

struct MeasuredPath {
  std::size_t characterCount;
  Text path;
};

bool matchesBefore(const MeasuredPath& a, const MeasuredPath& b) {
  return a.characterCount != b.characterCount ? a.characterCount > b.characterCount
                                              : a.path < b.path;
}

/// The standardised absolute paths among `paths`, in their order.
std::vector<Text> absolutePaths(const std::vector<Text>& paths,
                                const PathStandardizer& standardizer) {
  std::vector<Text> absolute;
  absolute.reserve(paths.size());
  std::ranges::transform(paths, std::back_inserter(absolute),
                         [&](const Text& path) { return standardizer.standardizedPath(path); });
  std::erase_if(absolute, [](const Text& path) { return !hasCharacterPrefix(path, "/"); });
  return absolute;
}

/// The ancestors of `path` from the innermost to "/": what stands before each "/" that ends a
/// character. (A "/" may begin a longer character, or end one that begins before it.)
std::vector<std::string_view> ancestors(std::string_view path) {
  std::vector<std::string_view> result;
  for (std::size_t end = path.size(); end > 1; --end) {
    if (path[end - 1] == '/' && isCharacterBoundaryAfterASCII(path, end)) {
      result.push_back(path.substr(0, end - 1));
    }
  }
  result.push_back("/");
  return result;
}

}  // namespace

std::vector<Text> normalizedWarpRoots(const std::vector<Text>& paths,
                                      const PathStandardizer& standardizer) {
  std::vector<Text> roots = uniquePaths(absolutePaths(paths, standardizer));
  std::vector<MeasuredPath> measured;
  measured.reserve(roots.size());
  for (Text& root : roots) {
    const std::size_t length = characterCount(root);
    measured.push_back({.characterCount = length, .path = std::move(root)});
  }
  std::ranges::sort(measured, matchesBefore);
  std::ranges::transform(measured, roots.begin(),
                         [](MeasuredPath& root) { return std::move(root.path); });
  return roots;
}

WarpRoots::WarpRoots(const std::vector<Text>& warpedFolderPaths,
                     const PathStandardizer& standardizer)
    : standardizer_(standardizer) {
  roots_.reserve(warpedFolderPaths.size());
  for (Text& root : normalizedWarpRoots(warpedFolderPaths, standardizer)) {
    roots_.insert(std::move(root));
  }
}

std::optional<Text> WarpRoots::enclosingWarpRoot(const Text& path) const {
  const Text standardized = standardizer_.standardizedPath(path);
  if (roots_.empty() || !hasCharacterPrefix(standardized, "/")) {
    return std::nullopt;
  }
  // The item itself first, then inwards out: of the roots that match, the longest is innermost.
  const std::string item = normalizedNFC(standardized);
  std::vector<std::string_view> candidates = ancestors(item);
  candidates.insert(candidates.begin(), item);
  for (const std::string_view candidate : candidates) {
    const auto root = roots_.find(Text(candidate));
    if (root != roots_.end()) {
      return *root;
    }
  }
  return std::nullopt;
}

}  // namespace velmora

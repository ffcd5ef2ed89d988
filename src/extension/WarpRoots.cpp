#include "extension/WarpRoots.h"

#include "platform/PathStandardizer.h"
#include "text/Characters.h"
#include "text/UniquePaths.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <string>
#include <string_view>

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
  std::vector<Text> standardized;
  std::ranges::transform(paths, std::back_inserter(standardized),
                         [&](const Text& path) { return standardizer.standardizedPath(path); });
  std::erase_if(standardized, [](const Text& path) { return !hasCharacterPrefix(path, "/"); });
  std::vector<MeasuredPath> measured;
  std::ranges::transform(
      uniquePaths(standardized), std::back_inserter(measured), [](const Text& path) {
        return MeasuredPath{.characterCount = characterCount(path), .path = path};
      });
  std::ranges::sort(measured, matchesBefore);
  std::vector<Text> roots;
  std::ranges::transform(measured, std::back_inserter(roots), &MeasuredPath::path);
  return roots;
}

WarpRoots::WarpRoots(const std::vector<Text>& warpedFolderPaths,
                     const PathStandardizer& standardizer)
    : standardizer_(standardizer) {
  for (const Text& root : normalizedWarpRoots(warpedFolderPaths, standardizer)) {
    rootsByNormalizedPath_.emplace(normalizedNFC(root), root);
  }
}

std::optional<Text> WarpRoots::enclosingWarpRoot(const Text& path) const {
  const Text standardized = standardizer_.standardizedPath(path);
  if (rootsByNormalizedPath_.empty() || !hasCharacterPrefix(standardized, "/")) {
    return std::nullopt;
  }
  // The item itself first, then inwards out: of the roots that match, the longest is innermost.
  const std::string item = normalizedNFC(standardized);
  std::vector<std::string_view> candidates = ancestors(item);
  candidates.insert(candidates.begin(), item);
  for (const std::string_view candidate : candidates) {
    const auto root = rootsByNormalizedPath_.find(Text(candidate));
    if (root != rootsByNormalizedPath_.end()) {
      return root->second;
    }
  }
  return std::nullopt;
}

}  // namespace velmora

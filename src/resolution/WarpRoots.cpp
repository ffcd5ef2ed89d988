#include "resolution/WarpRoots.h"

#include "platform/PathStandardizer.h"
#include "text/Characters.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace velmora {

std::vector<Text> pathAndAncestors(const Text& path) {
  // Normalised once, because each part of a normalised text is normalised.
  const std::string normalized = normalizedNFC(path);
  std::vector<Text> result = {normalized};
  for (std::size_t end = normalized.size(); end > 1; --end) {
    if (normalized[end - 1] == '/' && isCharacterBoundaryAfterASCII(normalized, end)) {
      result.emplace_back(std::string_view(normalized).substr(0, end - 1));
    }
  }
  if (normalized != "/") {
    result.emplace_back("/");
  }
  return result;
}

WarpRoots::WarpRoots(const std::vector<Text>& warpedFolderPaths,
                     const PathStandardizer& standardizer)
    : standardizer_(standardizer) {
  roots_.reserve(warpedFolderPaths.size());
  for (const Text& path : warpedFolderPaths) {
    const Text root = standardizer.standardizedPath(path);
    if (hasCharacterPrefix(root, "/")) {
      roots_.insert(root);
    }
  }
}

std::optional<Text> WarpRoots::enclosingWarpRoot(const Text& path) const {
  if (roots_.empty()) {
    return std::nullopt;
  }
  const Text item = standardizer_.standardizedPath(path);
  if (!hasCharacterPrefix(item, "/")) {
    return std::nullopt;
  }
  for (const Text& folder : pathAndAncestors(item)) {
    const auto root = roots_.find(folder);
    if (root != roots_.end()) {
      return *root;
    }
  }
  return std::nullopt;
}

}  // namespace velmora

#include "resolution/WarpRoots.h"

#include "platform/PathStandardizer.h"
#include "text/Characters.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace velmora {

StandardizedPath standardized(const Text& path, const PathStandardizer& standardizer) {
  return {standardizer.standardizedPath(path)};
}

std::vector<Text> pathAndAncestors(const StandardizedPath& path) {
  if (!hasCharacterPrefix(path.text, "/")) {
    return {};
  }
  // Normalised once, because each part of a normalised text is normalised.
  const std::string normalized = normalizedNFC(path.text);
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

WarpRoots::WarpRoots(const std::vector<StandardizedPath>& roots) {
  roots_.reserve(roots.size());
  for (const StandardizedPath& root : roots) {
    roots_.insert(root.text);
  }
}

std::optional<Text> WarpRoots::enclosingWarpRoot(const StandardizedPath& item) const {
  if (roots_.empty()) {
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

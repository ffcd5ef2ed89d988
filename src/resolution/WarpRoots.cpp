#include "resolution/WarpRoots.h"

namespace velmora {

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

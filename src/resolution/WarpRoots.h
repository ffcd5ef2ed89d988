// The warped folders, prepared for the question in which of them an item lies.
#pragma once

#include "text/Text.h"

#include <optional>
#include <unordered_set>
#include <vector>

namespace velmora {

class PathStandardizer;

/// `path`, which is standardised and absolute, and its ancestors from the nearest to "/". A
/// separator is a whole character: a "/" with a combining mark is none.
[[nodiscard]] std::vector<Text> pathAndAncestors(const Text& path);

/// A look-up takes one search for each folder around the item, whatever the number of roots.
class WarpRoots {
 public:
  /// `standardizer` outlives the object. Of the paths, which it standardises, only absolute ones
  /// count.
  WarpRoots(const std::vector<Text>& warpedFolderPaths, const PathStandardizer& standardizer);

  /// The innermost root that is the item at `path` or contains it, or none. `path` is standardised
  /// first; one that is not absolute lies in no root. Of equal roots the first one is told.
  [[nodiscard]] std::optional<Text> enclosingWarpRoot(const Text& path) const;

 private:
  const PathStandardizer& standardizer_;
  std::unordered_set<Text> roots_;
};

}  // namespace velmora

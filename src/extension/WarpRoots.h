// The warped folders, prepared for the question in which of them an item lies.
#pragma once

#include "text/Text.h"

#include <optional>
#include <unordered_set>
#include <vector>

namespace velmora {

class PathStandardizer;

/// The standardised absolute paths among `paths`, without repetitions, in matching order: longest
/// in characters first, so that the innermost folder wins; equally long ones in ascending order.
[[nodiscard]] std::vector<Text> normalizedWarpRoots(const std::vector<Text>& paths,
                                                    const PathStandardizer& standardizer);

/// The warp roots of one screening. A look-up takes one search for each folder around the item,
/// whatever the number of roots.
class WarpRoots {
 public:
  /// `standardizer` outlives the object.
  WarpRoots(const std::vector<Text>& warpedFolderPaths, const PathStandardizer& standardizer);

  /// The first root in matching order that is the item at `path` or contains it, or none. `path`
  /// is standardised first; one that is not absolute lies in no root.
  [[nodiscard]] std::optional<Text> enclosingWarpRoot(const Text& path) const;

 private:
  const PathStandardizer& standardizer_;
  /// In no order: the folders around an item are asked for from the innermost on.
  std::unordered_set<Text> roots_;
};

}  // namespace velmora

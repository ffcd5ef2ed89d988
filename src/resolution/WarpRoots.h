// Looks up the warped folder that an item is in, by standardised paths.
#pragma once

#include "text/Text.h"

#include <optional>
#include <unordered_set>
#include <vector>

namespace velmora {

class PathStandardizer;

/// A path in the form in which items and warped folders are compared. A type of its own, so that a
/// lookup cannot compare another form.
struct StandardizedPath {
  Text text;

  bool operator==(const StandardizedPath&) const = default;
};

[[nodiscard]] StandardizedPath standardized(const Text& path, const PathStandardizer& standardizer);

/// The path and its ancestors, from the nearest to "/". None if the path is not absolute. A
/// separator is a whole character: a "/" with a combining mark separates nothing.
[[nodiscard]] std::vector<Text> pathAndAncestors(const StandardizedPath& path);

/// The warped folders. A lookup takes time in proportion to the depth of the item, whatever the
/// number of roots.
class WarpRoots {
 public:
  /// Of equal roots the first one is kept. A root that is not absolute contains nothing.
  explicit WarpRoots(const std::vector<StandardizedPath>& roots);

  /// The innermost root that is the item or contains it; none also for an item that is not
  /// absolute.
  [[nodiscard]] std::optional<Text> enclosingWarpRoot(const StandardizedPath& item) const;

 private:
  std::unordered_set<Text> roots_;
};

}  // namespace velmora

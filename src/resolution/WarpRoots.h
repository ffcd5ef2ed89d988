// Looks up the warped folder that an item is in.
#pragma once

#include "resolution/StandardizedPath.h"
#include "text/Text.h"

#include <optional>
#include <unordered_set>
#include <vector>

namespace velmora {

/// The warped folders. A look-up takes time in proportion to the depth of the item, whatever the
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

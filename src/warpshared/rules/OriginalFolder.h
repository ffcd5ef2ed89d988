// The paths that belong to a warped folder: its own path and those below it.
#pragma once

#include "text/Text.h"

#include <string>
#include <string_view>

namespace velmora::internal {

class OriginalFolder {
 public:
  /// `path` outlives the object.
  explicit OriginalFolder(TextView path);

  [[nodiscard]] bool owns(TextView path) const;

 private:
  TextView path_;
  /// The path with a separator at its end.
  std::string prefix_;
};

/// The longest common ancestor of a stream of paths, which may be one of them, so that they can be
/// checked against a folder that becomes known only after the paths have been discarded.
class CommonAncestor {
 public:
  /// Adds a path, which begins with a separator. False when the ancestor is no longer known.
  [[nodiscard]] bool add(std::string_view path);

  /// True only if `folder` owns all added paths. May be false if they spell a folder in more than
  /// one way.
  [[nodiscard]] bool isBelow(const OriginalFolder& folder) const;

  void clear() { prefix_.clear(); }

 private:
  /// The common beginning of all paths with a separator at their ends. Ends with a separator; empty
  /// before the first path.
  std::string prefix_;
};

}  // namespace velmora::internal

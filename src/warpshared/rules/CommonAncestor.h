// The longest common ancestor of a stream of paths, so that they can be checked against a folder
// that becomes known only after the paths have been discarded.
#pragma once

#include <string>
#include <string_view>

namespace velmora::internal {

class OriginalFolder;

class CommonAncestor {
 public:
  /// Adds a path, which begins with a separator. False when the ancestor is no longer known.
  [[nodiscard]] bool add(std::string_view path);

  /// False if an added path is not below `folder`. May also be false if an added path equals that
  /// of `folder`.
  [[nodiscard]] bool isBelow(const OriginalFolder& folder) const;

  void clear() { prefix_.clear(); }

 private:
  /// The common beginning of all paths, which ends with a separator. Empty before the first path.
  std::string prefix_;
};

}  // namespace velmora::internal

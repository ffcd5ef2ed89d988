// The longest common ancestor of a stream of paths, so that they can be checked against a folder
// that becomes known only after the paths have been discarded.
#pragma once

#include <string>
#include <string_view>

namespace velmora::internal {

class OriginalFolder;

class CommonAncestor {
 public:
  /// `path` begins with a separator. False when the ancestor cannot be told any more.
  [[nodiscard]] bool add(std::string_view path);

  /// False when a path that was added is not below `folder`. May also be false when a path that was
  /// added equals the path of `folder`.
  [[nodiscard]] bool isBelow(const OriginalFolder& folder) const;

  void clear() { prefix_.clear(); }

 private:
  /// All paths begin with these characters, the last of which is a separator. Empty at first.
  std::string prefix_;
};

}  // namespace velmora::internal

// Which paths belong to a warped folder: its own and those below it.
#pragma once

#include "text/Text.h"

#include <string>
#include <string_view>

namespace velmora {

class OriginalFolder {
 public:
  /// `path` outlives the object.
  explicit OriginalFolder(TextView path);

  [[nodiscard]] bool owns(TextView path) const;

 private:
  TextView path_;
  /// With a separator at its end.
  std::string prefix_;
};

/// What many paths have in common, for who learns of their folder later, when they are gone.
class CommonFolder {
 public:
  /// `path` begins with a separator. False when nothing can be told of the paths any more.
  [[nodiscard]] bool add(std::string_view path);

  /// False when a path that was added is not below `folder`; may be also where it is its very path.
  [[nodiscard]] bool isBelow(const OriginalFolder& folder) const;

  void clear() { prefix_.clear(); }

 private:
  /// All paths begin with these characters, the last of which is a separator. Empty at first.
  std::string prefix_;
};

}  // namespace velmora

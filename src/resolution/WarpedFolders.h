// Which folders count as warped.
#pragma once

#include "text/Text.h"

#include <vector>

namespace velmora {

class WarpedFolders {
 public:
  virtual ~WarpedFolders() = default;

  /// The original folder path of every mirrored manifest that is not recorded as destroyed and
  /// whose folder still holds a marker of the same Warp, newest manifest first. Read afresh at
  /// every call. Never fails outward: what cannot be read or is invalid is left out. Throws only
  /// when memory runs out.
  virtual std::vector<Text> confirmedOriginalFolderPaths() const = 0;
};

}  // namespace velmora

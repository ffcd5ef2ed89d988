// Stands where the warped folders are looked up.
#pragma once

#include "resolution/WarpedFolders.h"

namespace velmora {

/// Knows of no warped folder, because the application's record of them is not read yet: every
/// folder can be warped, and none restored.
class NoWarpedFolders final : public WarpedFolders {
 public:
  std::vector<Text> confirmedOriginalFolderPaths() const override { return {}; }
};

}  // namespace velmora

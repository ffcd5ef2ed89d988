// Stands where the warped folders are looked up.
#pragma once

#include "resolution/WarpedFolders.h"

namespace velmora {

/// Knows of no warped folder, since this program does not read the application's record of them:
/// every folder can be warped, and none restored.
class NoWarpedFolders final : public WarpedFolders {
 public:
  std::vector<Text> confirmedOriginalFolderPaths() const override { return {}; }
};

}  // namespace velmora

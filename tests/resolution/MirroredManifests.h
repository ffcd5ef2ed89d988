// Manifests as they come from the mirror.
#pragma once

#include "resolution/ManifestMirror.h"
#include "tests/fakes/WarpRecords.h"

#include <string>
#include <string_view>

namespace velmora {

/// The manifest of a folder with nothing in it, from a file that has the Warp's name.
inline MirroredManifest mirroredManifestOf(std::string_view folderPath, std::string_view warpID) {
  const VelmoraWarpSharedManifest manifest = manifestOf(folderPath, warpID);
  return {.filePath = "/mirror/" + std::string(warpID) + ".json",
          .manifest = {.warpID = manifest.warpID,
                       .manifestKey = manifest.manifestKey,
                       .originalFolderPath = manifest.originalFolderPath,
                       .createdAt = manifest.createdAt,
                       .status = manifest.status,
                       .entryCount = 0,
                       .sampleCount = 0}};
}

}  // namespace velmora

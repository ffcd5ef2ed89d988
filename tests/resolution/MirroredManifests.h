// Manifests as the mirror delivers them.
#pragma once

#include "resolution/ManifestMirror.h"
#include "tests/fakes/WarpRecords.h"

#include <string>
#include <string_view>

namespace velmora {

/// The manifest of an empty folder, from a file with the Warp's name.
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

// Warped folders in the fakes' file system, as the application records them.
#pragma once

#include "tests/fakes/FakePlatform.h"
#include "tests/fakes/WarpRecords.h"
#include "text/LexicalPath.h"

#include <string>
#include <string_view>

namespace velmora {

/// The shared Warp root of a platform prepared by the functions below.
inline constexpr std::string_view recordedWarpRoot = "/C/Warp";

/// Gives the platform a shared Warp root with an empty mirror.
inline void prepareMirror(FakePlatform& fake) {
  fake.locations.groupContainers["group.io.tolvane.Velmora"] = "/C";
  fake.fileSystem.createDirectories(std::string(recordedWarpRoot) + "/ManifestMirror");
}

/// Puts a manifest into the mirror, under the name of its Warp.
inline void mirror(FakePlatform& fake, const VelmoraWarpSharedManifest& manifest) {
  prepareMirror(fake);
  fake.fileSystem.files[std::string(recordedWarpRoot) + "/ManifestMirror/" +
                        manifest.warpID.utf8() + ".json"] = encodeManifest(manifest);
}

/// Puts the marker of a Warp into a folder.
inline void mark(FakePlatform& fake, std::string_view folderPath, std::string_view warpID) {
  fake.fileSystem.createDirectories(folderPath);
  fake.fileSystem.files[appendingPathComponent(folderPath, ".velmora-warped.json")] =
      markerJSON(warpID);
}

/// Warps a folder: a manifest in the mirror and a marker in the folder, of a Warp `warpID`.
inline void recordWarp(FakePlatform& fake, std::string_view folderPath, std::string_view warpID) {
  mirror(fake, manifestOf(folderPath, warpID));
  mark(fake, folderPath, warpID);
}

}  // namespace velmora

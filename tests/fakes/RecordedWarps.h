// Warped folders in the fakes' file system, as the application records them.
#pragma once

#include "tests/fakes/FakePlatform.h"
#include "warpshared/records/VelmoraWarpSharedManifest.h"

#include <string_view>

namespace velmora {

/// The shared Warp root of a platform that the functions below have prepared.
inline constexpr std::string_view recordedWarpRoot = "/C/Warp";

/// Gives the platform a shared Warp root with an empty mirror.
void prepareMirror(FakePlatform& fake);

/// Puts a manifest into the mirror, under the name of its Warp.
void mirror(FakePlatform& fake, const VelmoraWarpSharedManifest& manifest);

/// Puts the marker of a Warp into a folder.
void mark(FakePlatform& fake, std::string_view folderPath, std::string_view warpID);

/// Warps a folder: puts a manifest into the mirror and a marker into the folder.
void recordWarp(FakePlatform& fake, std::string_view folderPath, std::string_view warpID);

}  // namespace velmora

// Example files as the application writes them.
#pragma once

#include "warpshared/records/DestroyedManifestIndex.h"
#include "warpshared/records/VelmoraWarpSharedManifest.h"

#include <string>
#include <string_view>
#include <vector>

namespace velmora {

/// A valid entry for a directory.
VelmoraWarpSharedEntry entryOf(std::string_view path);

/// A valid manifest of an empty folder.
VelmoraWarpSharedManifest manifestOf(std::string_view folderPath, std::string_view warpID);

/// A marker that names a Warp.
std::string markerJSON(std::string_view warpID);

/// A tombstone for `manifest`.
VelmoraWarpSharedDestroyedManifestRecord tombstoneOf(const VelmoraWarpSharedManifest& manifest);

/// A valid index of these tombstones.
std::string indexJSON(std::vector<VelmoraWarpSharedDestroyedManifestRecord> records);

}  // namespace velmora

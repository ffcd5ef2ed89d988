// The index of destroyed manifests (docs/formats.md). A record in it tells that a manifest, which
// may still be there, names a Warp that no longer exists.
#pragma once

#include "text/Text.h"
#include "warpshared/records/Date.h"

#include <cstdint>
#include <string_view>
#include <vector>

namespace velmora {

/// The only format version that is read.
inline constexpr std::int64_t destroyedManifestIndexVersion = 1;

/// The name of the index below the shared Warp root.
inline constexpr std::string_view destroyedManifestIndexFileName = "destroyed-manifest-index.json";

struct VelmoraWarpSharedDestroyedManifestRecord {
  Text warpID;
  Text manifestKey;
  Text originalFolderPath;
  Date destroyedAt;

  bool operator==(const VelmoraWarpSharedDestroyedManifestRecord&) const = default;
};

struct VelmoraWarpSharedDestroyedManifestIndex {
  std::int64_t version = 0;
  Date generatedAt;
  std::vector<VelmoraWarpSharedDestroyedManifestRecord> records;

  bool operator==(const VelmoraWarpSharedDestroyedManifestIndex&) const = default;
};

}  // namespace velmora

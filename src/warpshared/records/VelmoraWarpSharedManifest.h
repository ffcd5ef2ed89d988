// A shared Warp manifest (docs/formats.md): one folder that the application has offloaded to object
// storage, and everything that was in it.
//
// A plain value, equal to another when all fields are, texts by canonical equivalence. All
// manifests and entries that come from JSON have passed every check (ManifestDecoding.h).
#pragma once

#include "text/Text.h"
#include "warpshared/records/Date.h"
#include "warpshared/records/Enumerations.h"
#include "warpshared/records/VelmoraWarpSharedEntry.h"
#include "warpshared/records/WarpSharedEntries.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace velmora {

/// The one format version that is read.
inline constexpr std::int64_t sharedWarpManifestVersion = 4;

struct VelmoraWarpSharedManifest {
  std::int64_t version = 0;
  /// The identity of the manifest.
  Text warpID;
  Text deviceID;
  Text manifestKey;
  Text originalFolderPath;
  Text displayName;
  Date createdAt;
  std::optional<Date> uploadedAt;
  std::optional<Date> replacedAt;
  VelmoraWarpSharedStatus status = VelmoraWarpSharedStatus::uploading;
  std::optional<Text> failureDescription;
  /// Absolute, whatever the name says.
  std::vector<Text> verificationSampleRelativePaths;
  /// The warped folder itself.
  VelmoraWarpSharedEntry rootMetadata;
  /// Everything below the folder.
  WarpSharedEntries entries;

  [[nodiscard]] const Text& id() const { return warpID; }

  bool operator==(const VelmoraWarpSharedManifest&) const = default;
};

}  // namespace velmora

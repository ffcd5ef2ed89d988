// A shared Warp manifest (docs/formats.md): a folder that the application has offloaded to object
// storage, with all its items.
//
// A plain value. Manifests are equal if all their fields are, texts by canonical equivalence. Every
// manifest that was decoded has passed all checks (ManifestDecoding.h).
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

/// The only format version that is read.
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
  /// Absolute paths, in spite of the name.
  std::vector<Text> verificationSampleRelativePaths;
  /// The warped folder itself.
  VelmoraWarpSharedEntry rootMetadata;
  /// All items below the folder.
  WarpSharedEntries entries;

  [[nodiscard]] const Text& id() const { return warpID; }

  bool operator==(const VelmoraWarpSharedManifest&) const = default;
};

}  // namespace velmora

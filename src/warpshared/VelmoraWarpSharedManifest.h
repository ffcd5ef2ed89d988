// A shared Warp manifest (docs/formats.md): one folder that the application has offloaded to object
// storage, and everything that was in it.
//
// A plain value, equal to another when all fields are, texts by canonical equivalence. All
// manifests and entries that come from JSON have passed every check (ManifestDecoding.h).
#pragma once

#include "json/JSONValue.h"
#include "json/RecordFields.h"
#include "text/Text.h"
#include "warpshared/Date.h"
#include "warpshared/Enumerations.h"
#include "warpshared/VelmoraWarpSharedEntry.h"
#include "warpshared/WarpSharedEntries.h"

#include <cstdint>
#include <optional>
#include <string>
#include <tuple>
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

/// A manifest is read by a ManifestDecoder only, so that no check is left out.
void decode(JSONValue value, VelmoraWarpSharedManifest& manifest) = delete;

/// The manifest as JSON, without blanks; it decodes to an equal value. Dates are as
/// internetDateTime (Date.h) wants them.
[[nodiscard]] std::string encodeManifest(const VelmoraWarpSharedManifest& manifest);

template <>
struct RecordFields<VelmoraWarpSharedManifest> {
  using Manifest = VelmoraWarpSharedManifest;
  static constexpr std::tuple list{
      RecordField{"version", &Manifest::version},
      RecordField{"warpID", &Manifest::warpID},
      RecordField{"deviceID", &Manifest::deviceID},
      RecordField{"manifestKey", &Manifest::manifestKey},
      RecordField{"originalFolderPath", &Manifest::originalFolderPath},
      RecordField{"displayName", &Manifest::displayName},
      RecordField{"createdAt", &Manifest::createdAt},
      RecordField{"uploadedAt", &Manifest::uploadedAt},
      RecordField{"replacedAt", &Manifest::replacedAt},
      RecordField{"status", &Manifest::status},
      RecordField{"failureDescription", &Manifest::failureDescription},
      RecordField{"verificationSampleAbsolutePaths", &Manifest::verificationSampleRelativePaths},
      RecordField{"rootMetadata", &Manifest::rootMetadata},
      RecordField{"entries", &Manifest::entries},
  };
};

}  // namespace velmora

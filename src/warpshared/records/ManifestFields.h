// The fields of a manifest, with their keys, in the order of reading.
#pragma once

#include "json/RecordFields.h"
#include "json/strict/JSONValue.h"
#include "warpshared/records/VelmoraWarpSharedManifest.h"

#include <tuple>

namespace velmora::internal {

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

/// Deleted, because a ManifestDecoder alone reads manifests, so that no check is left out.
void decode(JSONValue value, VelmoraWarpSharedManifest& manifest) = delete;

}  // namespace velmora::internal

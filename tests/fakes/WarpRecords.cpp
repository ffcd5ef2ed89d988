#include "tests/fakes/WarpRecords.h"

#include "json/JSONWriting.h"
#include "warpshared/writing/ManifestEncoding.h"

#include <utility>

namespace velmora {

VelmoraWarpSharedEntry entryOf(std::string_view path) {
  VelmoraWarpSharedEntry entry;
  entry.relativePath = path;
  entry.displayName = path.substr(path.rfind('/') + 1);
  entry.kind = VelmoraWarpSharedEntryKind::directory;
  entry.posixPermissions = 0755;
  entry.hasModificationTimeMetadata = true;
  entry.hasOwnershipMetadata = true;
  entry.hasPOSIXPermissionsMetadata = true;
  entry.hasBSDFlagsMetadata = true;
  entry.hasExtendedAttributesMetadata = true;
  entry.hasACLMetadata = true;
  return entry;
}

VelmoraWarpSharedManifest manifestOf(std::string_view folderPath, std::string_view warpID) {
  VelmoraWarpSharedManifest manifest;
  manifest.version = 4;
  manifest.warpID = warpID;
  manifest.deviceID = "device";
  manifest.manifestKey = "manifests/" + std::string(warpID) + ".json";
  manifest.originalFolderPath = folderPath;
  manifest.displayName = folderPath.substr(folderPath.rfind('/') + 1);
  manifest.status = VelmoraWarpSharedStatus::verified;
  manifest.rootMetadata = entryOf(folderPath);
  return manifest;
}

std::string markerJSON(std::string_view warpID) {
  std::string json = R"({"version":1,"warpID":)";
  internal::appendJSONString(json, warpID);
  json += '}';
  return json;
}

VelmoraWarpSharedDestroyedManifestRecord tombstoneOf(const VelmoraWarpSharedManifest& manifest) {
  return {.warpID = manifest.warpID,
          .manifestKey = manifest.manifestKey,
          .originalFolderPath = manifest.originalFolderPath,
          .destroyedAt = manifest.createdAt};
}

std::string indexJSON(std::vector<VelmoraWarpSharedDestroyedManifestRecord> records) {
  return encodeDestroyedManifestIndex(
      {.version = 1, .generatedAt = {}, .records = std::move(records)});
}

}  // namespace velmora

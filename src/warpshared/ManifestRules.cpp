#include "warpshared/ManifestRules.h"

#include "warpshared/PathPredicates.h"

#include <optional>

namespace velmora {

namespace {

bool isAbsentOrFinite(const std::optional<Date>& date) {
  return !date.has_value() || isFinite(*date);
}

}  // namespace

bool isIdentitySafe(const VelmoraWarpSharedManifest& manifest) {
  return !manifest.warpID.empty() && !manifest.deviceID.empty() &&
         isSafeRelativeObjectKey(manifest.manifestKey) &&
         isCanonicalAbsolutePath(manifest.originalFolderPath);
}

bool areDatesFinite(const VelmoraWarpSharedManifest& manifest) {
  return isFinite(manifest.createdAt) && isAbsentOrFinite(manifest.uploadedAt) &&
         isAbsentOrFinite(manifest.replacedAt);
}

}  // namespace velmora

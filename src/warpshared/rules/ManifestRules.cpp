#include "warpshared/rules/ManifestRules.h"

#include "warpshared/records/FieldLists.h"
#include "warpshared/rules/OriginalFolder.h"
#include "warpshared/rules/TextRules.h"

#include <array>
#include <optional>

namespace velmora::internal {

namespace {

using Manifest = VelmoraWarpSharedManifest;

bool hasSupportedVersion(const ManifestFacts& facts) {
  return facts.manifest.version == sharedWarpManifestVersion;
}

bool isIdentitySafe(const ManifestFacts& facts) {
  const Manifest& manifest = facts.manifest;
  return !manifest.warpID.empty() && !manifest.deviceID.empty() &&
         isSafeRelativeObjectKey(manifest.manifestKey) &&
         isCanonicalAbsolutePath(manifest.originalFolderPath);
}

bool isAbsentOrFinite(const std::optional<Date>& date) {
  return !date.has_value() || isFinite(*date);
}

bool areDatesFinite(const Manifest& manifest) {
  return isFinite(manifest.createdAt) && isAbsentOrFinite(manifest.uploadedAt) &&
         isAbsentOrFinite(manifest.replacedAt);
}

bool areDatesAndOwnershipConsistent(const ManifestFacts& facts) {
  const Manifest& manifest = facts.manifest;
  return areDatesFinite(manifest) &&
         manifest.rootMetadata.relativePath == manifest.originalFolderPath &&
         facts.areEntriesOwned && facts.areSamplesOwned;
}

template <KeyLiteral key>
constexpr std::size_t field = fieldIndex<Manifest, key>;

bool areHardLinksInside(const ManifestFacts& facts) { return facts.areHardLinksInside; }

// In each row: the field that is read before the test, the field of the report, the test, the
// words.
constexpr std::array<ManifestRule, 4> rules = {{
    {field<"version">, field<"version">, hasSupportedVersion,
     "Unsupported shared Warp manifest version."},
    {field<"originalFolderPath">, field<"originalFolderPath">, isIdentitySafe,
     "Shared Warp identity, object key, or original path is unsafe."},
    {field<"entries">, field<"entries">, areDatesAndOwnershipConsistent,
     "Shared Warp manifest dates or original-path ownership are inconsistent."},
    {field<"entries">, field<"entries">, areHardLinksInside,
     "Shared Warp hard-link references must remain inside the manifest."},
}};

}  // namespace

bool isSampleOwned(TextView sample, const OriginalFolder& folder) {
  return isCanonicalAbsolutePath(sample) && folder.owns(sample);
}

std::span<const ManifestRule> manifestRules() { return rules; }

}  // namespace velmora::internal

// The rules that a manifest must satisfy beyond the types of its fields (docs/formats.md): the one
// list of them, for both readers. The rules of an entry are in EntryRules.h.
#pragma once

#include "text/Text.h"
#include "warpshared/records/VelmoraWarpSharedManifest.h"

#include <cstddef>
#include <span>

namespace velmora::internal {

class OriginalFolder;

/// A manifest and what is known of its lists, which each reader finds out in its own way.
struct ManifestFacts {
  /// Without samples and entries.
  const VelmoraWarpSharedManifest& manifest;
  /// Every entry has a path of its own, in the original folder.
  bool areEntriesOwned = true;
  /// Every sample is a canonical path of its own, in the original folder.
  bool areSamplesOwned = true;
  /// Every hard link leads to the path of another entry.
  bool areHardLinksInside = true;
};

/// One rule. Fields are indexes into RecordFields<VelmoraWarpSharedManifest>.
struct ManifestRule {
  /// The rule is tested as soon as this field has been read, before any later field is.
  std::size_t testedAfter;
  /// The field that a broken rule is reported at.
  std::size_t field;
  bool (*holds)(const ManifestFacts& facts);
  const char* message;
};

/// Whether `sample` is canonical and in `folder`, as every sample of a manifest must be.
[[nodiscard]] bool isSampleOwned(TextView sample, const OriginalFolder& folder);

/// All rules, in the order in which they are tested.
[[nodiscard]] std::span<const ManifestRule> manifestRules();

}  // namespace velmora::internal

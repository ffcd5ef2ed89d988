#include "warpshared/reading/DiagnosingManifestReader.h"

#include "json/strict/RecordDecoding.h"
#include "warpshared/reading/EntryDecoding.h"
#include "warpshared/records/FieldCodecs.h"
#include "warpshared/records/FieldLists.h"
#include "warpshared/rules/ManifestRules.h"
#include "warpshared/rules/OriginalFolder.h"

#include <algorithm>

namespace velmora::internal {

namespace {

using Manifest = VelmoraWarpSharedManifest;

template <KeyLiteral key>
constexpr std::size_t field = fieldIndex<Manifest, key>;

/// Refuses the manifest for the first broken rule of those that are tested after `lastRead`.
void requireRules(const RecordReader<Manifest>& reader, const ManifestFacts& facts,
                  std::size_t lastRead) {
  for (const ManifestRule& rule : manifestRules()) {
    if (rule.testedAfter == lastRead && !rule.holds(facts)) {
      reader.refuse(rule.field, rule.message);
    }
  }
}

}  // namespace

Manifest DiagnosingManifestReader::read(std::string& bytes, const ManifestVisitor& visitor) {
  visitor.begin();
  Manifest manifest;
  RecordReader reader(reader_.read(bytes), manifest);
  ManifestFacts facts{.manifest = manifest};
  reader.readThrough<"version">();
  requireRules(reader, facts, field<"version">);
  reader.readThrough<"originalFolderPath">();
  requireRules(reader, facts, field<"originalFolderPath">);
  reader.readThrough<"failureDescription">();
  reader.readBy<"verificationSampleAbsolutePaths">(
      [this](JSONValue samples) { decode(samples, samples_); });
  reader.readThrough<"rootMetadata">();
  const OriginalFolder folder(manifest.originalFolderPath);
  entryPaths_.clear();
  hardLinks_.clear();
  reader.readBy<"entries">([&](JSONValue entries) {
    decodeElements(entries, [&](JSONValue value) {
      decode(value, entry_);
      // After one entry breaks the rule no other path is tested, because a test may read as many
      // bytes as the folder's path has.
      facts.areEntriesOwned = facts.areEntriesOwned && entryPaths_.insert(entry_.relativePath) &&
                              folder.owns(entry_.relativePath);
      if (entry_.hardLinkPrimaryPath.has_value()) {
        hardLinks_.push_back(
            {.path = entry_.relativePath, .primaryPath = *entry_.hardLinkPrimaryPath});
      }
      visitor.entry(entry_);
    });
  });
  samplePaths_.clear();
  facts.areSamplesOwned = std::ranges::all_of(samples_, [&](TextView sample) {
    return samplePaths_.insert(sample) && isSampleOwned(sample, folder);
  });
  facts.areHardLinksInside = std::ranges::all_of(hardLinks_, [this](const HardLink& link) {
    return link.primaryPath != link.path && entryPaths_.contains(link.primaryPath);
  });
  requireRules(reader, facts, field<"entries">);
  std::ranges::for_each(samples_, visitor.sample);
  return manifest;
}

}  // namespace velmora::internal

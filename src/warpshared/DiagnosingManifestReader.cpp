#include "warpshared/DiagnosingManifestReader.h"

#include "json/RecordDecoding.h"
#include "warpshared/FieldCodecs.h"
#include "warpshared/ManifestRules.h"
#include "warpshared/OriginalFolder.h"
#include "warpshared/PathPredicates.h"

#include <algorithm>
#include <utility>

namespace velmora {

DecodedHeader DiagnosingManifestReader::read(std::string& bytes, const EntryVisitor& visitEntry) {
  const JSONValue document = reader_.read(bytes);
  VelmoraWarpSharedManifest manifest;
  RecordReader reader(document, manifest);
  reader.read<"version">();
  if (manifest.version != sharedWarpManifestVersion) {
    reader.refuse<"version">("Unsupported shared Warp manifest version.");
  }
  reader.read<"warpID", "originalFolderPath">();
  if (!isIdentitySafe(manifest)) {
    reader.refuse<"originalFolderPath">(
        "Shared Warp identity, object key, or original path is unsafe.");
  }
  reader.read<"displayName", "failureDescription">();
  reader.readBy<"verificationSampleAbsolutePaths">(
      [&](JSONValue samples) { velmora::decode(samples, samples_); });
  reader.read<"rootMetadata">();
  const OriginalFolder folder(manifest.originalFolderPath);
  bool areEntriesConsistent = true;
  entryPaths_.clear();
  hardLinks_.clear();
  reader.readBy<"entries">([&](JSONValue entries) {
    decodeElements(entries, [&](JSONValue value) {
      velmora::decode(value, entry_);
      // Not asked again once it is known: a foreign path may take as long as the folder's is.
      areEntriesConsistent = areEntriesConsistent && entryPaths_.insert(entry_.relativePath) &&
                             folder.owns(entry_.relativePath);
      if (entry_.hardLinkPrimaryPath.has_value()) {
        hardLinks_.push_back(
            {.path = entry_.relativePath, .primaryPath = *entry_.hardLinkPrimaryPath});
      }
      visitEntry(entry_);
    });
  });
  samplePaths_.clear();
  const auto isSampleConsistent = [&](TextView path) {
    return samplePaths_.insert(path) && isCanonicalAbsolutePath(path) && folder.owns(path);
  };
  if (!areDatesFinite(manifest) ||
      manifest.rootMetadata.relativePath != manifest.originalFolderPath || !areEntriesConsistent ||
      !std::ranges::all_of(samples_, isSampleConsistent)) {
    reader.refuse<"entries">(
        "Shared Warp manifest dates or original-path ownership are inconsistent.");
  }
  const auto remainsInside = [&](const HardLink& link) {
    return link.primaryPath != link.path && entryPaths_.contains(link.primaryPath);
  };
  if (!std::ranges::all_of(hardLinks_, remainsInside)) {
    reader.refuse<"entries">("Shared Warp hard-link references must remain inside the manifest.");
  }
  return {.manifest = std::move(manifest), .samples = samples_};
}

}  // namespace velmora

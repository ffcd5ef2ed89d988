#include "warpshared/ManifestDecoding.h"

#include "json/RecordDecoding.h"
#include "text/Characters.h"
#include "warpshared/PathPredicates.h"
#include "warpshared/RecordValues.h"

#include <algorithm>
#include <optional>
#include <string_view>
#include <utility>

namespace velmora {

namespace {

/// Which paths belong to the warped folder: its own and those below it.
class OriginalFolder {
 public:
  explicit OriginalFolder(TextView path) : path_(path), prefix_(path.view()) {
    if (!prefix_.ends_with('/')) {
      prefix_ += '/';
    }
  }

  [[nodiscard]] bool owns(TextView path) const {
    return hasCharacterPrefix(path, prefix_) || path == path_;
  }

 private:
  TextView path_;
  std::string prefix_;
};

bool isIdentitySafe(const VelmoraWarpSharedManifest& manifest) {
  return !manifest.warpID.empty() && !manifest.deviceID.empty() &&
         isSafeRelativeObjectKey(manifest.manifestKey) &&
         isCanonicalAbsolutePath(manifest.originalFolderPath);
}

bool isAbsentOrFinite(const std::optional<Date>& date) {
  return !date.has_value() || isFinite(*date);
}

bool areDatesFinite(const VelmoraWarpSharedManifest& manifest) {
  return isFinite(manifest.createdAt) && isAbsentOrFinite(manifest.uploadedAt) &&
         isAbsentOrFinite(manifest.replacedAt);
}

}  // namespace

VelmoraWarpSharedManifest ManifestDecoder::decodeDocument(
    std::string& bytes, const std::function<void(const EntryView&)>& useEntry) {
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
      useEntry(entry_);
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
  return manifest;
}

VelmoraWarpSharedManifest ManifestDecoder::decode(std::string& bytes) {
  std::vector<VelmoraWarpSharedEntry> entries;
  VelmoraWarpSharedManifest manifest = decodeDocument(
      bytes, [&entries](const EntryView& entry) { entries.push_back(ownedEntry(entry)); });
  manifest.verificationSampleRelativePaths = std::vector<Text>(samples_.begin(), samples_.end());
  manifest.entries = std::move(entries);
  return manifest;
}

ManifestSummary ManifestDecoder::decodeSummary(std::string& bytes) {
  std::size_t entryCount = 0;
  VelmoraWarpSharedManifest manifest =
      decodeDocument(bytes, [&entryCount](const EntryView&) { ++entryCount; });
  return {.warpID = std::move(manifest.warpID),
          .manifestKey = std::move(manifest.manifestKey),
          .originalFolderPath = std::move(manifest.originalFolderPath),
          .createdAt = manifest.createdAt,
          .status = manifest.status,
          .entryCount = entryCount,
          .sampleCount = samples_.size()};
}

}  // namespace velmora

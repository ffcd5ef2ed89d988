#include "warpshared/reading/DestroyedManifestIndexDecoding.h"

#include "json/strict/JSONReader.h"
#include "json/strict/RecordDecoding.h"
#include "platform/PathStandardizer.h"
#include "text/CanonicalTextSet.h"
#include "text/LexicalPath.h"
#include "warpshared/records/FieldCodecs.h"
#include "warpshared/records/FieldLists.h"
#include "warpshared/rules/TextRules.h"

#include <algorithm>
#include <cstddef>

namespace velmora {

namespace {

/// The rest of 64 MiB is for the records.
constexpr std::size_t maxIndexDocumentMemory = std::size_t{32} << 20;

VelmoraWarpSharedDestroyedManifestIndex decodeIndex(std::string& bytes,
                                                    internal::JSONReader& documents) {
  VelmoraWarpSharedDestroyedManifestIndex index;
  internal::RecordReader reader(documents.read(bytes), index);
  constexpr std::size_t version =
      internal::fieldIndex<VelmoraWarpSharedDestroyedManifestIndex, "version">;
  reader.readThrough(version);
  if (index.version != destroyedManifestIndexVersion) {
    reader.refuse(version, "Unsupported restored-Warp tombstone index version.");
  }
  reader.readAll();
  return index;
}

}  // namespace

VelmoraWarpSharedDestroyedManifestIndex decodeDestroyedManifestIndex(std::string& bytes) {
  internal::JSONReader documents;
  return decodeIndex(bytes, documents);
}

void validateDestroyedManifestIndex(const VelmoraWarpSharedDestroyedManifestIndex& index) {
  internal::CanonicalTextSet warpIDs;
  internal::CanonicalTextSet manifestKeys;
  const auto isSound = [&](const VelmoraWarpSharedDestroyedManifestRecord& record) {
    return !record.warpID.empty() && internal::isSafeRelativeObjectKey(record.manifestKey) &&
           isFinite(record.destroyedAt) &&
           internal::isCanonicalAbsolutePath(record.originalFolderPath) &&
           warpIDs.insert(record.warpID) && manifestKeys.insert(record.manifestKey);
  };
  if (!isFinite(index.generatedAt) || !std::ranges::all_of(index.records, isSound)) {
    throw corruptFileError();
  }
}

Text destroyedManifestIndexPath(const Text& sharedWarpRoot, const PathStandardizer& paths) {
  return paths.standardizedFileURLPath(
      appendingPathComponent(sharedWarpRoot, destroyedManifestIndexFileName));
}

std::vector<VelmoraWarpSharedDestroyedManifestRecord> loadDestroyedManifestRecords(
    const Text& sharedWarpRoot, const FileReader& files, const PathStandardizer& paths) {
  const Text path = destroyedManifestIndexPath(sharedWarpRoot, paths);
  if (!files.exists(path)) {
    return {};
  }
  std::string bytes = files.read(path, maxDestroyedManifestIndexLength);
  internal::JSONReader documents(maxIndexDocumentMemory);
  VelmoraWarpSharedDestroyedManifestIndex index = decodeIndex(bytes, documents);
  validateDestroyedManifestIndex(index);
  return std::move(index.records);
}

}  // namespace velmora

#include "warpshared/DestroyedManifestIndex.h"

#include "json/JSONReader.h"
#include "json/RecordDecoding.h"
#include "json/RecordEncoding.h"
#include "platform/FileReader.h"
#include "platform/PathStandardizer.h"
#include "platform/PlatformError.h"
#include "text/CanonicalTextSet.h"
#include "text/LexicalPath.h"
#include "warpshared/FieldCodecs.h"
#include "warpshared/PathPredicates.h"

#include <algorithm>
#include <cstddef>

namespace velmora {

VelmoraWarpSharedDestroyedManifestIndex decodeDestroyedManifestIndex(std::string& bytes) {
  JSONReader documents;
  VelmoraWarpSharedDestroyedManifestIndex index;
  RecordReader reader(documents.read(bytes), index);
  reader.read<"version">();
  if (index.version != destroyedManifestIndexVersion) {
    reader.refuse<"version">("Unsupported restored-Warp tombstone index version.");
  }
  reader.read<"generatedAt", "records">();
  return index;
}

void validateDestroyedManifestIndex(const VelmoraWarpSharedDestroyedManifestIndex& index) {
  CanonicalTextSet warpIDs;
  CanonicalTextSet manifestKeys;
  const auto isSound = [&](const VelmoraWarpSharedDestroyedManifestRecord& record) {
    return !record.warpID.empty() && isSafeRelativeObjectKey(record.manifestKey) &&
           isFinite(record.destroyedAt) && isCanonicalAbsolutePath(record.originalFolderPath) &&
           warpIDs.insert(record.warpID) && manifestKeys.insert(record.manifestKey);
  };
  if (!isFinite(index.generatedAt) || !std::ranges::all_of(index.records, isSound)) {
    throw corruptFileError();
  }
}

std::string encodeDestroyedManifestIndex(const VelmoraWarpSharedDestroyedManifestIndex& index) {
  std::string json;
  encode(json, index);
  return json;
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
  VelmoraWarpSharedDestroyedManifestIndex index = decodeDestroyedManifestIndex(bytes);
  validateDestroyedManifestIndex(index);
  return std::move(index.records);
}

}  // namespace velmora

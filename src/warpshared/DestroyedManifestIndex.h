// The tombstones of destroyed manifests (docs/formats.md): what tells a manifest that still lies
// about from a Warp that no longer exists.
#pragma once

#include "json/JSONValue.h"
#include "json/RecordFields.h"
#include "text/Text.h"
#include "warpshared/Date.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

namespace velmora {

class FileReader;
class PathStandardizer;

/// The one format version that is read.
inline constexpr std::int64_t destroyedManifestIndexVersion = 1;

/// The name of the index below the shared Warp root.
inline constexpr std::string_view destroyedManifestIndexFileName = "destroyed-manifest-index.json";

/// A longer index is not read. (A megabyte holds the tombstones of some thousand folders.)
inline constexpr std::size_t maxDestroyedManifestIndexLength = std::size_t{256} << 20;

struct VelmoraWarpSharedDestroyedManifestRecord {
  Text warpID;
  Text manifestKey;
  Text originalFolderPath;
  Date destroyedAt;

  bool operator==(const VelmoraWarpSharedDestroyedManifestRecord&) const = default;
};

struct VelmoraWarpSharedDestroyedManifestIndex {
  std::int64_t version = 0;
  Date generatedAt;
  std::vector<VelmoraWarpSharedDestroyedManifestRecord> records;

  bool operator==(const VelmoraWarpSharedDestroyedManifestIndex&) const = default;
};

template <>
struct RecordFields<VelmoraWarpSharedDestroyedManifestRecord> {
  using Record = VelmoraWarpSharedDestroyedManifestRecord;
  static constexpr std::tuple list{
      RecordField{"warpID", &Record::warpID},
      RecordField{"manifestKey", &Record::manifestKey},
      RecordField{"originalFolderPath", &Record::originalFolderPath},
      RecordField{"destroyedAt", &Record::destroyedAt},
  };
};

template <>
struct RecordFields<VelmoraWarpSharedDestroyedManifestIndex> {
  using Index = VelmoraWarpSharedDestroyedManifestIndex;
  static constexpr std::tuple list{
      RecordField{"version", &Index::version},
      RecordField{"generatedAt", &Index::generatedAt},
      RecordField{"records", &Index::records},
  };
};

/// An index is read as a whole document only, so that its version is looked at.
void decode(JSONValue value, VelmoraWarpSharedDestroyedManifestIndex& index) = delete;

/// Reads an index from JSON. The first fault in the order of the fields raises a DecodingError;
/// another version is refused before anything else is read. `bytes` are scratch afterwards. The
/// rules of validateDestroyedManifestIndex are not looked at.
[[nodiscard]] VelmoraWarpSharedDestroyedManifestIndex decodeDestroyedManifestIndex(
    std::string& bytes);

/// Throws corruptFileError() (PlatformError.h), which tells no more, unless the dates are finite
/// and every record has an identifier and a safe object key, both its own, and a canonical path.
void validateDestroyedManifestIndex(const VelmoraWarpSharedDestroyedManifestIndex& index);

/// The index as JSON, without blanks; it decodes to an equal value.
[[nodiscard]] std::string encodeDestroyedManifestIndex(
    const VelmoraWarpSharedDestroyedManifestIndex& index);

/// The path of the index below the shared Warp root, whether or not there is such a file.
[[nodiscard]] Text destroyedManifestIndexPath(const Text& sharedWarpRoot,
                                              const PathStandardizer& paths);

/// The records of the index below the shared Warp root, in its order; none when there is no file.
/// Throws what reading raises (PlatformError), what decoding raises (DecodingError), or
/// corruptFileError() for an index that breaks a rule: it is never used in part. Any thread.
[[nodiscard]] std::vector<VelmoraWarpSharedDestroyedManifestRecord> loadDestroyedManifestRecords(
    const Text& sharedWarpRoot, const FileReader& files, const PathStandardizer& paths);

}  // namespace velmora

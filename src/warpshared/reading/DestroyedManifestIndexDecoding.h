// Reads the index of destroyed manifests.
#pragma once

#include "json/DecodingError.h"
#include "platform/FileReader.h"
#include "platform/PlatformError.h"
#include "text/Text.h"
#include "warpshared/records/DestroyedManifestIndex.h"

#include <cstddef>
#include <string>
#include <vector>

namespace velmora {

class PathStandardizer;

/// The longest index that is read, in bytes. (A megabyte is enough for some thousand records.)
inline constexpr std::size_t maxDestroyedManifestIndexLength = std::size_t{12} << 20;

/// Reads an index from JSON. Throws DecodingError for the first fault in the order of the fields.
/// The version is checked before other fields are read. Does not check the rules of
/// validateDestroyedManifestIndex. `bytes` are scratch afterwards.
[[nodiscard]] VelmoraWarpSharedDestroyedManifestIndex decodeDestroyedManifestIndex(
    std::string& bytes);

/// Throws corruptFileError() (PlatformError.h), without details, unless all dates are finite and
/// every record has an identifier and a safe object key, both unique, and a canonical path.
void validateDestroyedManifestIndex(const VelmoraWarpSharedDestroyedManifestIndex& index);

/// The path of the index below the shared Warp root, whether or not there is such a file.
[[nodiscard]] Text destroyedManifestIndexPath(const Text& sharedWarpRoot,
                                              const PathStandardizer& paths);

/// The records of the index below the shared Warp root, in their order; none if there is no file.
/// Takes at most 64 MiB of memory; an index of unusually many values is refused for that.
/// Throws the errors of reading (PlatformError), of decoding (DecodingError), and of
/// validateDestroyedManifestIndex: an index is never used in part. Any thread.
[[nodiscard]] std::vector<VelmoraWarpSharedDestroyedManifestRecord> loadDestroyedManifestRecords(
    const Text& sharedWarpRoot, const FileReader& files, const PathStandardizer& paths);

}  // namespace velmora

// Reads the index of destroyed manifests.
#pragma once

#include "text/Text.h"
#include "warpshared/records/DestroyedManifestIndex.h"

#include <cstddef>
#include <string>
#include <vector>

namespace velmora {

class FileReader;
class PathStandardizer;

/// A longer index is not read. (A megabyte holds the tombstones of some thousand folders.)
inline constexpr std::size_t maxDestroyedManifestIndexLength = std::size_t{256} << 20;

/// Reads an index from JSON. The first fault in the order of the fields raises a DecodingError;
/// another version is refused before anything else is read. `bytes` are scratch afterwards. The
/// rules of validateDestroyedManifestIndex are not looked at.
[[nodiscard]] VelmoraWarpSharedDestroyedManifestIndex decodeDestroyedManifestIndex(
    std::string& bytes);

/// Throws corruptFileError() (PlatformError.h), which tells no more, unless the dates are finite
/// and every record has an identifier and a safe object key, both its own, and a canonical path.
void validateDestroyedManifestIndex(const VelmoraWarpSharedDestroyedManifestIndex& index);

/// The path of the index below the shared Warp root, whether or not there is such a file.
[[nodiscard]] Text destroyedManifestIndexPath(const Text& sharedWarpRoot,
                                              const PathStandardizer& paths);

/// The records of the index below the shared Warp root, in its order; none when there is no file.
/// Throws what reading raises (PlatformError), what decoding raises (DecodingError), or
/// corruptFileError() for an index that breaks a rule: it is never used in part. Any thread.
[[nodiscard]] std::vector<VelmoraWarpSharedDestroyedManifestRecord> loadDestroyedManifestRecords(
    const Text& sharedWarpRoot, const FileReader& files, const PathStandardizer& paths);

}  // namespace velmora

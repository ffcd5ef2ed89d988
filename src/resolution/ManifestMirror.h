// The mirror: where the application keeps a copy of the manifest of every folder that it has
// warped.
#pragma once

#include "text/Text.h"
#include "warpshared/reading/ManifestDecoding.h"

#include <cstddef>
#include <exception>
#include <functional>
#include <optional>
#include <string_view>
#include <vector>

namespace velmora {

class FileReader;
class PathStandardizer;

/// The name of the mirror below the shared Warp root.
inline constexpr std::string_view manifestMirrorDirectoryName = "ManifestMirror";

/// A valid manifest of the mirror. The name of its file has no meaning; it is there to tell people.
struct MirroredManifest {
  Text filePath;
  ManifestSummary manifest;
};

/// A file of the mirror that cannot be read (PlatformError, std::bad_alloc) or is no valid manifest
/// (DecodingError).
struct RefusedManifest {
  Text filePath;
  std::exception_ptr fault;
};

/// What was found in the mirror.
struct ManifestMirror {
  /// Newest first; those of one instant in the order of their files' names. All paths in them are
  /// absolute, and all else that ManifestDecoding.h promises.
  std::vector<MirroredManifest> manifests;
  /// In the order of their names.
  std::vector<RefusedManifest> refused;
  /// Why the mirror cannot be listed (PlatformError), if it cannot.
  std::exception_ptr fault;
};

/// Called before the first file and after each one.
using MirrorProgress = std::function<void(std::size_t readCount, std::size_t fileCount)>;

/// Whether a file of this name is taken for a manifest: it ends in ".json", and not only in that.
[[nodiscard]] bool isManifestFileName(std::string_view name);

/// The path of the mirror.
[[nodiscard]] Text manifestMirrorPath(const Text& sharedWarpRoot, const PathStandardizer& paths);

/// Reads the manifests of the mirror, afresh at every call. Given `warpIDs`, a file that cannot be
/// the manifest of one of these Warps may be left out unread (WarpIDSearch.h).
///
/// Throws only when memory runs out for the lists themselves, and what `progress` throws. Takes no
/// lock; the application may change the mirror meanwhile. Any thread.
[[nodiscard]] ManifestMirror mirroredManifests(const Text& sharedWarpRoot, const FileReader& files,
                                               const PathStandardizer& paths,
                                               const std::optional<std::vector<Text>>& warpIDs = {},
                                               const MirrorProgress& progress = {});

}  // namespace velmora

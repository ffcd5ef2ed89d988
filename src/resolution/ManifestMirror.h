// The mirror: the directory in which the application keeps a copy of the manifest of every warped
// folder.
#pragma once

#include "text/Text.h"
#include "warpshared/reading/ManifestDecoding.h"
#include "warpshared/records/VelmoraWarpSharedManifest.h"

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

/// A valid manifest of the mirror. The path of its file is for messages only.
struct MirroredManifest {
  Text filePath;
  ManifestSummary manifest;
};

/// A file of the mirror that cannot be read or is not a valid manifest.
struct RefusedManifest {
  Text filePath;
  /// PlatformError, std::bad_alloc or DecodingError. Null for an invalid manifest that was not
  /// diagnosed.
  std::exception_ptr fault;
};

/// The content of the mirror.
struct ManifestMirror {
  /// Newest first; manifests of one instant in the order of their file names.
  std::vector<MirroredManifest> manifests;
  /// In the order of their file names.
  std::vector<RefusedManifest> refused;
  /// The reason why the mirror cannot be listed (PlatformError); null if it can.
  std::exception_ptr fault;
};

/// What is found out about the files that are no valid manifests.
enum class RefusedFiles {
  listed,
  /// Listed with their faults. A file is in memory as a whole for that, if it is not longer than
  /// maxDiagnosedManifestLength.
  diagnosed,
};

inline constexpr std::size_t maxDiagnosedManifestLength = std::size_t{64} << 20;

/// A valid manifest of the mirror with all its entries.
struct WholeMirroredManifest {
  Text filePath;
  VelmoraWarpSharedManifest manifest;
};

/// The content of the mirror with all entries of its manifests. As ManifestMirror.
struct WholeManifestMirror {
  std::vector<WholeMirroredManifest> manifests;
  std::vector<RefusedManifest> refused;
  std::exception_ptr fault;
};

/// Called before the first file and after each one.
using MirrorProgress = std::function<void(std::size_t readCount, std::size_t fileCount)>;

/// Whether a file of this name is a manifest: the name ends in ".json" and is longer.
[[nodiscard]] bool isManifestFileName(std::string_view name);

/// The path of the mirror.
[[nodiscard]] Text manifestMirrorPath(const Text& sharedWarpRoot, const PathStandardizer& paths);

/// The reason why the file at `path` is no valid manifest; null if it is one by now.
[[nodiscard]] std::exception_ptr manifestFault(const Text& path, const FileReader& files);

/// Reads the manifests of the mirror, afresh at every call. With `warpIDs`, leaves out files that
/// cannot be manifests of these Warps (WarpIDSearch.h).
///
/// Throws only when memory runs out for the lists themselves, and the errors of `progress`. Takes
/// at most 64 MiB of memory for a file, unless refused files are diagnosed. Takes no lock; the
/// application may change the mirror meanwhile. Any thread.
[[nodiscard]] ManifestMirror mirroredManifests(const Text& sharedWarpRoot, const FileReader& files,
                                               const PathStandardizer& paths,
                                               RefusedFiles refusedFiles,
                                               const std::optional<std::vector<Text>>& warpIDs = {},
                                               const MirrorProgress& progress = {});

/// Reads the whole manifests of the mirror. All their entries are in memory at the end: about half
/// as many bytes as their files have when written without blanks (docs/performance.md). A manifest
/// that memory does not suffice for is refused. Otherwise as mirroredManifests. No program here
/// calls it, because the actions need no entry.
[[nodiscard]] WholeManifestMirror wholeMirroredManifests(const Text& sharedWarpRoot,
                                                         const FileReader& files,
                                                         const PathStandardizer& paths,
                                                         const MirrorProgress& progress = {});

}  // namespace velmora

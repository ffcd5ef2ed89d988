// The mirror: where the application keeps a copy of the manifest of every folder that it has
// warped.
#pragma once

#include "text/Text.h"
#include "warpshared/ManifestDecoding.h"

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

namespace velmora {

class FileReader;
class PathStandardizer;
class ResolutionObserver;

/// The name of the mirror below the shared Warp root.
inline constexpr std::string_view manifestMirrorDirectoryName = "ManifestMirror";

/// A manifest of the mirror. Its file's name carries no meaning; it is there to tell people.
struct MirroredManifest {
  Text filePath;
  ManifestSummary manifest;
};

/// Whether a file of this name is taken for a manifest: it ends in ".json", and not only in that.
[[nodiscard]] bool isManifestFileName(std::string_view name);

/// The path of the mirror.
[[nodiscard]] Text manifestMirrorPath(const Text& sharedWarpRoot, const PathStandardizer& paths);

/// The manifests of the mirror, newest first; those of one instant in the order of their files'
/// names. Read afresh at every call. All paths in them are absolute, and all else that
/// ManifestDecoding.h promises.
///
/// A large mirror is read by up to `workerCount` (at least 1) threads, the calling one included;
/// without a number by as many as suit the machine (WorkerCount.h), and a small one by the calling
/// thread alone. The list, its order and what `observer` hears on the calling thread are the same
/// whatever the number, except that each thread takes memory for a file of its own. When a thread
/// cannot be started, the others do the work; all have ended when this returns or throws.
///
/// Never fails outward: without a readable mirror the list is empty, and a file that cannot be
/// read (for want of memory, too) or is not a valid manifest is left out; `observer` hears of it.
/// Throws only when memory runs out for the list itself. Takes no lock; the application may change
/// the mirror meanwhile. Any thread.
[[nodiscard]] std::vector<MirroredManifest> mirroredManifests(
    const Text& sharedWarpRoot, const FileReader& files, const PathStandardizer& paths,
    ResolutionObserver& observer, std::optional<std::size_t> workerCount = {});

}  // namespace velmora

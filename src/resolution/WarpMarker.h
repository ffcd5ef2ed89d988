// The marker: the file that the application leaves in a warped folder. A manifest alone does not
// prove that its folder is still warped; the marker of the same Warp does.
#pragma once

#include "json/RecordFields.h"
#include "resolution/ManifestMirror.h"
#include "text/Text.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

namespace velmora {

class FileReader;
class JSONReader;
class PathStandardizer;
class ResolutionObserver;

/// The name of the marker, directly inside the warped folder.
inline constexpr std::string_view warpMarkerFileName = ".velmora-warped.json";

/// A longer marker is not read. (The application writes one of some hundred bytes.)
inline constexpr std::size_t longestWarpMarker = std::size_t{16} << 20;

/// What is read of a marker; the application may write more.
struct WarpMarker {
  Text warpID;

  bool operator==(const WarpMarker&) const = default;
};

template <>
struct RecordFields<WarpMarker> {
  static constexpr std::tuple list{RecordField{"warpID", &WarpMarker::warpID}};
};

/// Reads a marker from JSON; `bytes` are scratch afterwards. Throws DecodingError.
[[nodiscard]] WarpMarker decodeWarpMarker(std::string& bytes, JSONReader& reader);

/// The path of the marker of a folder.
[[nodiscard]] Text warpMarkerPath(const Text& folderPath);

/// Of `manifests`, those whose Warp is not recorded as destroyed and whose folder holds a marker of
/// the same Warp, in their order. Each is judged on its own. Identifiers and keys compare by
/// canonical equivalence, case and all. The marker of a destroyed Warp is not looked for.
///
/// Many markers are read by up to `workerCount` (at least 1) threads, as a large mirror is
/// (ManifestMirror.h), few by the calling thread alone. The list, its order and what `observer`
/// hears on the calling thread, in the order of the manifests, are the same whatever the number.
/// When a thread cannot be started, the others do the work; all have ended when this returns or
/// throws.
///
/// Never fails outward: an index of destroyed manifests that cannot be read or breaks a rule
/// counts as if there were none, and a manifest whose marker cannot be read is left out; `observer`
/// hears of it. Throws only when memory runs out, also over a marker, since a warped folder must
/// not be taken for an ordinary one then; the manifests before that one have got their verdicts.
/// Takes no lock; the files may change meanwhile. Any thread.
[[nodiscard]] std::vector<MirroredManifest> confirmedWarpManifests(
    std::vector<MirroredManifest> manifests, const Text& sharedWarpRoot, const FileReader& files,
    const PathStandardizer& paths, ResolutionObserver& observer,
    std::optional<std::size_t> workerCount = {});

}  // namespace velmora

// Which folders are warped, and why the others that a manifest names are not. Start reading here.
//
// A folder is warped when a manifest of the mirror (ManifestMirror.h) names it, no tombstone
// (Tombstones.h) names the manifest, and the folder holds the marker (WarpMarker.h) of the same
// Warp. Manifests need not be looked at when they cannot matter to an item: WarpsAround.h.
#pragma once

#include "handoff/SharedContainer.h"
#include "resolution/ManifestMirror.h"
#include "resolution/StandardizedPath.h"
#include "text/Text.h"

#include <cstddef>
#include <exception>
#include <optional>
#include <vector>

namespace velmora {

struct Platform;

/// Whether a manifest of the mirror counts.
enum class ManifestVerdict {
  /// Its folder is warped.
  confirmed,
  /// A tombstone names its Warp.
  destroyedByWarpID,
  /// A tombstone names its object key.
  destroyedByManifestKey,
  /// Its folder holds no marker.
  noMarker,
  /// The marker is there but cannot be read.
  unreadableMarker,
  /// The marker is not one: no JSON, no object, or without an identifier.
  malformedMarker,
  /// The marker names another Warp.
  markerOfAnotherWarp,
  /// Its folder neither is nor contains an item that was asked about, so its marker was not read.
  aroundNoItem,
};

struct JudgedManifest {
  Text filePath;
  ManifestSummary manifest;
  /// The folder that the manifest names.
  StandardizedPath folder = {};
  ManifestVerdict verdict = ManifestVerdict::confirmed;
  /// What reading the marker raised, if that is why.
  std::exception_ptr markerFault = {};
};

/// The result of one look at the shared Warp root. A fault is null when there is none.
struct Resolution {
  /// None when it was not asked for, because no manifest can matter, and when there is none.
  std::optional<SharedWarpRoot> root;
  /// Why there is no shared Warp root (PlatformError); then nothing else was looked at.
  std::exception_ptr rootFault;
  /// Why the mirror cannot be listed (PlatformError).
  std::exception_ptr mirrorFault;
  /// Why the index of destroyed manifests cannot be used; then no manifest counts as destroyed.
  std::exception_ptr tombstonesFault;
  std::size_t tombstoneCount = 0;
  /// Newest first.
  std::vector<JudgedManifest> judged;
  std::vector<RefusedManifest> refused;
};

/// Judges every manifest of the mirror, each on its own, and reads everything afresh. Identifiers
/// and keys compare by canonical equivalence, case and all. The marker of a destroyed Warp is not
/// read.
///
/// Throws only when memory runs out, also over a marker, because a warped folder must not be taken
/// for an ordinary one then; and what `progress` throws. Takes no lock; the files may change
/// meanwhile. Any thread.
[[nodiscard]] Resolution resolveWarpedFolders(const Platform& platform,
                                              const MirrorProgress& progress = {});

/// The same, but only of manifests that may matter to one of `items`: every warped folder that is
/// or contains an item is among them. The mirror is not read when there can be none, and no marker
/// of another folder is.
[[nodiscard]] Resolution resolveWarpedFoldersAround(const std::vector<StandardizedPath>& items,
                                                    const Platform& platform);

/// The manifests that are confirmed, newest first.
[[nodiscard]] std::vector<ManifestSummary> confirmedWarpManifests(const Resolution& resolution);

/// The folders that are warped, newest Warp first.
[[nodiscard]] std::vector<StandardizedPath> warpedFolderPaths(const Resolution& resolution);

}  // namespace velmora

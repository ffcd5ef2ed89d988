// Finds the folders that are warped, and the reasons why other folders with a manifest are not.
// Start reading here.
//
// A folder is warped if a manifest of the mirror (ManifestMirror.h) names it, no tombstone
// (Tombstones.h) names that manifest, and the folder contains the marker (WarpMarker.h) of the same
// Warp. For a given item most manifests do not matter, and are not read: WarpsAround.h.
#pragma once

#include "handoff/SharedContainer.h"
#include "resolution/ManifestMirror.h"
#include "resolution/WarpRoots.h"
#include "text/Text.h"

#include <cstddef>
#include <exception>
#include <optional>
#include <vector>

namespace velmora {

struct Platform;

/// Whether a manifest of the mirror counts, or the reason why not.
enum class ManifestVerdict {
  /// Its folder is warped.
  confirmed,
  /// A tombstone names its Warp.
  destroyedByWarpID,
  /// A tombstone names its object key.
  destroyedByManifestKey,
  /// Its folder contains no marker.
  noMarker,
  /// The marker cannot be read. It may even be unknown whether there is one.
  unreadableMarker,
  /// The marker is not JSON, or not an object with an identifier.
  malformedMarker,
  /// The marker names another Warp.
  markerOfAnotherWarp,
  /// Its folder is not around any item in question, so its marker was not read.
  aroundNoItem,
};

struct JudgedManifest {
  Text filePath;
  ManifestSummary manifest;
  /// The folder that the manifest names.
  StandardizedPath folder = {};
  ManifestVerdict verdict = ManifestVerdict::confirmed;
  /// The error of reading the marker, for the two verdicts that have one.
  std::exception_ptr markerFault = {};
};

/// The result of one look at the shared Warp root. A fault is null when there is none.
struct Resolution {
  /// Absent in two cases: no manifest can matter, so nothing was looked up; or the platform has no
  /// shared Warp root (`rootFault`).
  std::optional<SharedWarpRoot> root;
  /// The reason why there is no shared Warp root (PlatformError). Nothing else was read then.
  std::exception_ptr rootFault;
  /// The reason why the mirror cannot be listed (PlatformError).
  std::exception_ptr mirrorFault;
  /// The reason why the index of destroyed manifests cannot be used. No manifest counts as
  /// destroyed then.
  std::exception_ptr tombstonesFault;
  std::size_t tombstoneCount = 0;
  /// Newest first.
  std::vector<JudgedManifest> judged;
  std::vector<RefusedManifest> refused;
};

/// Judges every manifest of the mirror. Reads everything afresh. Identifiers and keys are compared
/// by canonical equivalence; case matters. The marker of a destroyed Warp is not read.
///
/// Throws when memory runs out, also while a marker is read. But a manifest that memory does not
/// suffice for is only refused, so that one large file does not stop every action. Also throws the
/// errors of `progress`. Takes no lock; the files may
/// change meanwhile. Any thread.
[[nodiscard]] Resolution resolveWarpedFolders(const Platform& platform,
                                              const MirrorProgress& progress = {});

/// Judges the manifests that may matter to one of `items`: every warped folder that is or contains
/// an item is among them. Reads no mirror if there can be none, and no marker of another folder.
/// Diagnoses no refused file, and takes at most 64 MiB of memory for any file. Otherwise as
/// resolveWarpedFolders.
[[nodiscard]] Resolution resolveWarpedFoldersAround(const std::vector<StandardizedPath>& items,
                                                    const Platform& platform);

/// The confirmed manifests, newest first.
[[nodiscard]] std::vector<ManifestSummary> confirmedWarpManifests(const Resolution& resolution);

/// The warped folders, newest Warp first.
[[nodiscard]] std::vector<StandardizedPath> warpedFolderPaths(const Resolution& resolution);

}  // namespace velmora

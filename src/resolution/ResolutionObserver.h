// What happens while the warped folders are looked up: nobody needs it for an action, but people
// ask why a folder counts as warped or does not.
#pragma once

#include "text/Text.h"

#include <cstddef>
#include <exception>

namespace velmora {

struct MirroredManifest;

/// Why a manifest of the mirror counts or does not.
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
};

/// Ignores everything; who wants to know something overrides that. Each function is called at its
/// moment, on the thread that looks the folders up, and references live for the call only. What it
/// throws passes through, and ends the look-up.
class ResolutionObserver {
 public:
  ResolutionObserver() = default;
  ResolutionObserver(const ResolutionObserver&) = delete;
  ResolutionObserver& operator=(const ResolutionObserver&) = delete;
  virtual ~ResolutionObserver() = default;

  /// There is no shared Warp root, and so no warped folder.
  virtual void didFailToLocateRoot(const std::exception& /*error*/) {}

  /// The mirror cannot be listed.
  virtual void didFailToListMirror(const std::exception& /*error*/) {}
  /// So many files of the mirror will be read.
  virtual void willReadManifests(std::size_t /*count*/) {}
  /// A file of the mirror is a valid manifest.
  virtual void didReadManifest(const MirroredManifest& /*manifest*/) {}
  /// A file of the mirror cannot be read (PlatformError, std::bad_alloc) or is not a valid manifest
  /// (DecodingError).
  virtual void didRefuseManifest(const Text& /*filePath*/, const std::exception& /*error*/) {}

  /// So many manifests are recorded as destroyed.
  virtual void didLoadTombstones(std::size_t /*count*/) {}
  /// The record of destroyed manifests cannot be used.
  virtual void didFailToLoadTombstones(const std::exception& /*error*/) {}

  /// `error` is what reading the marker raised, if that is why.
  virtual void didJudgeManifest(const MirroredManifest& /*manifest*/, ManifestVerdict /*verdict*/,
                                const std::exception* /*error*/) {}
};

}  // namespace velmora

#include "resolution/WarpMarker.h"

#include "json/DecodingError.h"
#include "json/JSONReader.h"
#include "json/RecordDecoding.h"
#include "platform/FileReader.h"
#include "platform/PathStandardizer.h"
#include "platform/PlatformError.h"
#include "resolution/ResolutionObserver.h"
#include "text/CanonicalTextSet.h"
#include "text/LexicalPath.h"
#include "warpshared/DestroyedManifestIndex.h"

#include <cstddef>
#include <exception>
#include <utility>

namespace velmora {

namespace {

std::vector<VelmoraWarpSharedDestroyedManifestRecord> tombstones(const Text& sharedWarpRoot,
                                                                 const FileReader& files,
                                                                 const PathStandardizer& paths,
                                                                 ResolutionObserver& observer) {
  std::vector<VelmoraWarpSharedDestroyedManifestRecord> records;
  try {
    records = loadDestroyedManifestRecords(sharedWarpRoot, files, paths);
  } catch (const std::exception& error) {
    observer.didFailToLoadTombstones(error);
    return {};
  }
  observer.didLoadTombstones(records.size());
  return records;
}

/// Judges one manifest after the other.
class ManifestJudge {
 public:
  ManifestJudge(std::vector<VelmoraWarpSharedDestroyedManifestRecord> tombstones,
                const FileReader& files, ResolutionObserver& observer)
      : tombstones_(std::move(tombstones)), files_(files), observer_(observer) {
    destroyedWarpIDs_.reserve(tombstones_.size());
    destroyedManifestKeys_.reserve(tombstones_.size());
    for (const VelmoraWarpSharedDestroyedManifestRecord& tombstone : tombstones_) {
      destroyedWarpIDs_.insert(tombstone.warpID);
      destroyedManifestKeys_.insert(tombstone.manifestKey);
    }
  }

  bool confirms(const MirroredManifest& mirrored) {
    ManifestVerdict verdict = ManifestVerdict::confirmed;
    try {
      verdict = verdictOn(mirrored.manifest);
    } catch (const DecodingError& error) {
      observer_.didJudgeManifest(mirrored, ManifestVerdict::malformedMarker, &error);
      return false;
    } catch (const PlatformError& error) {
      observer_.didJudgeManifest(mirrored, ManifestVerdict::unreadableMarker, &error);
      return false;
    }
    observer_.didJudgeManifest(mirrored, verdict, nullptr);
    return verdict == ManifestVerdict::confirmed;
  }

 private:
  ManifestVerdict verdictOn(const ManifestSummary& manifest) {
    if (destroyedWarpIDs_.contains(manifest.warpID)) {
      return ManifestVerdict::destroyedByWarpID;
    }
    if (destroyedManifestKeys_.contains(manifest.manifestKey)) {
      return ManifestVerdict::destroyedByManifestKey;
    }
    const Text path = warpMarkerPath(manifest.originalFolderPath);
    if (!files_.exists(path)) {
      return ManifestVerdict::noMarker;
    }
    std::string bytes = files_.read(path, longestWarpMarker);
    return decodeWarpMarker(bytes, reader_).warpID == manifest.warpID
               ? ManifestVerdict::confirmed
               : ManifestVerdict::markerOfAnotherWarp;
  }

  const std::vector<VelmoraWarpSharedDestroyedManifestRecord> tombstones_;
  const FileReader& files_;
  ResolutionObserver& observer_;
  CanonicalTextSet destroyedWarpIDs_;
  CanonicalTextSet destroyedManifestKeys_;
  JSONReader reader_;
};

}  // namespace

WarpMarker decodeWarpMarker(std::string& bytes, JSONReader& reader) {
  WarpMarker marker;
  decode(reader.read(bytes), marker);
  return marker;
}

Text warpMarkerPath(const Text& folderPath) {
  return appendingPathComponent(folderPath, warpMarkerFileName);
}

std::vector<MirroredManifest> confirmedWarpManifests(std::vector<MirroredManifest> manifests,
                                                     const Text& sharedWarpRoot,
                                                     const FileReader& files,
                                                     const PathStandardizer& paths,
                                                     ResolutionObserver& observer) {
  ManifestJudge judge(tombstones(sharedWarpRoot, files, paths, observer), files, observer);
  std::erase_if(manifests,
                [&judge](const MirroredManifest& mirrored) { return !judge.confirms(mirrored); });
  return manifests;
}

}  // namespace velmora

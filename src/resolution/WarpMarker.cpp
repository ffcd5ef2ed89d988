#include "resolution/WarpMarker.h"

#include "json/DecodingError.h"
#include "json/JSONReader.h"
#include "json/RecordDecoding.h"
#include "platform/FileReader.h"
#include "platform/PathStandardizer.h"
#include "platform/PlatformError.h"
#include "resolution/OrderedWork.h"
#include "resolution/ReadingCost.h"
#include "resolution/ResolutionObserver.h"
#include "text/CanonicalTextSet.h"
#include "text/LexicalPath.h"
#include "warpshared/DestroyedManifestIndex.h"

#include <cstddef>
#include <exception>
#include <memory>
#include <optional>
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

/// What is recorded as destroyed. Any number of threads may ask.
class DestroyedManifests {
 public:
  explicit DestroyedManifests(std::vector<VelmoraWarpSharedDestroyedManifestRecord> tombstones)
      : tombstones_(std::move(tombstones)) {
    warpIDs_.reserve(tombstones_.size());
    manifestKeys_.reserve(tombstones_.size());
    for (const VelmoraWarpSharedDestroyedManifestRecord& tombstone : tombstones_) {
      warpIDs_.insert(tombstone.warpID);
      manifestKeys_.insert(tombstone.manifestKey);
    }
  }
  // The sets refer to the tombstones.
  DestroyedManifests(const DestroyedManifests&) = delete;
  DestroyedManifests& operator=(const DestroyedManifests&) = delete;
  ~DestroyedManifests() = default;

  /// Why the manifest does not count, if a tombstone is why.
  [[nodiscard]] std::optional<ManifestVerdict> verdictOn(const ManifestSummary& manifest) const {
    if (warpIDs_.contains(manifest.warpID)) {
      return ManifestVerdict::destroyedByWarpID;
    }
    if (manifestKeys_.contains(manifest.manifestKey)) {
      return ManifestVerdict::destroyedByManifestKey;
    }
    return std::nullopt;
  }

 private:
  const std::vector<VelmoraWarpSharedDestroyedManifestRecord> tombstones_;
  CanonicalTextSet warpIDs_;
  CanonicalTextSet manifestKeys_;
};

/// The bytes of a marker; none where there is none. Throws PlatformError.
std::optional<std::string> markerBytes(const Text& path, const FileReader& files) {
  try {
    return files.read(path, longestWarpMarker);
  } catch (const PlatformError&) {
    // Asked only now: of most folders, the marker is there.
    if (!files.exists(path)) {
      return std::nullopt;
    }
    throw;
  }
}

ManifestVerdict verdictByMarker(const ManifestSummary& manifest, const FileReader& files,
                                JSONReader& reader) {
  std::optional<std::string> bytes =
      markerBytes(warpMarkerPath(manifest.originalFolderPath), files);
  if (!bytes.has_value()) {
    return ManifestVerdict::noMarker;
  }
  return decodeWarpMarker(*bytes, reader).warpID == manifest.warpID
             ? ManifestVerdict::confirmed
             : ManifestVerdict::markerOfAnotherWarp;
}

/// Judges manifests, each on some thread, and tells of them on the thread that asks.
class ManifestJudging {
 public:
  ManifestJudging(std::vector<MirroredManifest> manifests, const DestroyedManifests& destroyed,
                  const FileReader& files, ResolutionObserver& observer,
                  std::optional<std::size_t> workerCount)
      : manifests_(std::move(manifests)),
        verdicts_(manifests_.size()),
        destroyed_(destroyed),
        files_(files),
        observer_(observer),
        cost_(workerCount) {}

  /// Those that count, in their order. Once.
  std::vector<MirroredManifest> confirmedManifests() {
    performInOrder(
        {.pieceCount = manifests_.size(),
         .makeWorker = [this] { return makeWorker(); },
         .helpersWorthStarting =
             [this](std::size_t remaining) { return cost_.helpersWorthStarting(remaining); },
         .didFinish = [this](std::size_t index,
                             const std::exception_ptr& fault) { didJudge(index, fault); }});
    manifests_.resize(confirmedCount_);
    return std::move(manifests_);
  }

 private:
  PieceWorker makeWorker() {
    return [this, reader = std::make_shared<JSONReader>()](std::size_t index) {
      const ManifestSummary& manifest = manifests_[index].manifest;
      const std::optional<ManifestVerdict> verdict = destroyed_.verdictOn(manifest);
      verdicts_[index] =
          verdict.has_value() ? *verdict : verdictByMarker(manifest, files_, *reader);
    };
  }

  void didJudge(std::size_t index, const std::exception_ptr& fault) {
    if (fault) {
      cost_.addFile(0);
      tellOfFault(manifests_[index], fault);
      return;
    }
    const ManifestVerdict verdict = verdicts_[index];
    addCostOf(verdict);
    observer_.didJudgeManifest(manifests_[index], verdict, nullptr);
    if (verdict == ManifestVerdict::confirmed) {
      keep(index);
    }
  }

  void tellOfFault(const MirroredManifest& mirrored, const std::exception_ptr& fault) {
    try {
      std::rethrow_exception(fault);
    } catch (const DecodingError& error) {
      observer_.didJudgeManifest(mirrored, ManifestVerdict::malformedMarker, &error);
    } catch (const PlatformError& error) {
      observer_.didJudgeManifest(mirrored, ManifestVerdict::unreadableMarker, &error);
    }
  }

  void addCostOf(ManifestVerdict verdict) {
    if (verdict == ManifestVerdict::destroyedByWarpID ||
        verdict == ManifestVerdict::destroyedByManifestKey) {
      cost_.addUnreadFile();
    } else {
      cost_.addFile(0);
    }
  }

  /// Moves the manifest behind those that are kept already. Both places have been judged, so that
  /// no other thread looks at them.
  void keep(std::size_t index) {
    if (index != confirmedCount_) {
      manifests_[confirmedCount_] = std::move(manifests_[index]);
    }
    ++confirmedCount_;
  }

  /// By the number of the manifest. Each belongs to the thread that judges it, and then to the
  /// caller's; what has no fault has a verdict.
  std::vector<MirroredManifest> manifests_;
  std::vector<ManifestVerdict> verdicts_;
  const DestroyedManifests& destroyed_;
  const FileReader& files_;
  ResolutionObserver& observer_;
  std::size_t confirmedCount_ = 0;
  ReadingCost cost_;
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
                                                     ResolutionObserver& observer,
                                                     std::optional<std::size_t> workerCount) {
  const DestroyedManifests destroyed(tombstones(sharedWarpRoot, files, paths, observer));
  return ManifestJudging(std::move(manifests), destroyed, files, observer, workerCount)
      .confirmedManifests();
}

}  // namespace velmora

#include "resolution/WarpedFolders.h"

#include "handoff/SharedContainer.h"
#include "json/DecodingError.h"
#include "json/strict/JSONReader.h"
#include "platform/PathStandardizer.h"
#include "platform/Platform.h"
#include "platform/PlatformError.h"
#include "resolution/Tombstones.h"
#include "resolution/WarpMarker.h"
#include "resolution/WarpsAround.h"
#include "warpshared/reading/DestroyedManifestIndexDecoding.h"

#include <unordered_set>
#include <utility>

namespace velmora {

namespace {

ManifestVerdict verdictByMarker(const ManifestSummary& manifest, const FileReader& files,
                                internal::JSONReader& reader) {
  const std::optional<WarpMarker> marker =
      readWarpMarker(manifest.originalFolderPath, files, reader);
  if (!marker.has_value()) {
    return ManifestVerdict::noMarker;
  }
  return marker->warpID == manifest.warpID ? ManifestVerdict::confirmed
                                           : ManifestVerdict::markerOfAnotherWarp;
}

StandardizedPath folderOf(const ManifestSummary& manifest, const PathStandardizer& paths) {
  return standardized(paths.standardizedFileURLPath(manifest.originalFolderPath), paths);
}

/// The manifests and markers that a caller needs.
struct Question {
  RefusedFiles refusedFiles;
  /// Only manifests of these Warps; all if none.
  std::optional<std::vector<Text>> warpIDs;
  /// Only markers of these folders; all if none.
  std::optional<std::unordered_set<Text>> folders;
  MirrorProgress progress;
};

class ManifestJudge {
 public:
  ManifestJudge(const Question& question, const Tombstones& tombstones, const Platform& platform)
      : question_(question), tombstones_(tombstones), platform_(platform) {}

  JudgedManifest judge(MirroredManifest&& mirrored) {
    JudgedManifest judged = {.filePath = std::move(mirrored.filePath),
                             .manifest = std::move(mirrored.manifest)};
    judged.folder = folderOf(judged.manifest, platform_.paths);
    try {
      judged.verdict = verdictOn(judged);
    } catch (const DecodingError&) {
      judged.verdict = ManifestVerdict::malformedMarker;
      judged.markerFault = std::current_exception();
    } catch (const PlatformError&) {
      judged.verdict = ManifestVerdict::unreadableMarker;
      judged.markerFault = std::current_exception();
    }
    return judged;
  }

 private:
  ManifestVerdict verdictOn(const JudgedManifest& judged) {
    const ManifestSummary& manifest = judged.manifest;
    if (tombstones_.nameWarp(manifest.warpID)) {
      return ManifestVerdict::destroyedByWarpID;
    }
    if (tombstones_.nameManifest(manifest.manifestKey)) {
      return ManifestVerdict::destroyedByManifestKey;
    }
    if (question_.folders.has_value() && !question_.folders->contains(judged.folder.text)) {
      return ManifestVerdict::aroundNoItem;
    }
    return verdictByMarker(manifest, platform_.fileReader, reader_);
  }

  const Question& question_;
  const Tombstones& tombstones_;
  const Platform& platform_;
  internal::JSONReader reader_{maxWarpMarkerMemory};
};

Tombstones loadTombstones(const Text& root, const Platform& platform, Resolution& resolution) {
  std::vector<VelmoraWarpSharedDestroyedManifestRecord> records;
  try {
    records = loadDestroyedManifestRecords(root, platform.fileReader, platform.paths);
  } catch (const std::exception&) {
    resolution.tombstonesFault = std::current_exception();
  }
  resolution.tombstoneCount = records.size();
  return Tombstones(std::move(records));
}

Resolution resolve(const Platform& platform, const Question& question) {
  Resolution resolution;
  try {
    resolution.root = sharedWarpRoot(platform.locations, platform.paths);
  } catch (const PlatformError&) {
    resolution.rootFault = std::current_exception();
    return resolution;
  }
  const Text& root = resolution.root->url.path;
  ManifestMirror mirror =
      mirroredManifests(root, platform.fileReader, platform.paths, question.refusedFiles,
                        question.warpIDs, question.progress);
  resolution.mirrorFault = std::move(mirror.fault);
  resolution.refused = std::move(mirror.refused);
  const Tombstones tombstones = loadTombstones(root, platform, resolution);
  ManifestJudge judge(question, tombstones, platform);
  for (MirroredManifest& mirrored : mirror.manifests) {
    resolution.judged.push_back(judge.judge(std::move(mirrored)));
  }
  return resolution;
}

std::unordered_set<Text> foldersAround(const std::vector<StandardizedPath>& items) {
  std::unordered_set<Text> folders;
  for (const StandardizedPath& item : items) {
    for (Text& folder : pathAndAncestors(item)) {
      folders.insert(std::move(folder));
    }
  }
  return folders;
}

}  // namespace

Resolution resolveWarpedFolders(const Platform& platform, const MirrorProgress& progress) {
  return resolve(platform, {.refusedFiles = RefusedFiles::diagnosed,
                            .warpIDs = {},
                            .folders = {},
                            .progress = progress});
}

Resolution resolveWarpedFoldersAround(const std::vector<StandardizedPath>& items,
                                      const Platform& platform) {
  std::optional<std::vector<Text>> warpIDs =
      warpsAround(items, platform.fileReader, platform.paths);
  if (warpIDs.has_value() && warpIDs->empty()) {
    return {};
  }
  return resolve(platform, {.refusedFiles = RefusedFiles::listed,
                            .warpIDs = std::move(warpIDs),
                            .folders = foldersAround(items),
                            .progress = {}});
}

std::vector<ManifestSummary> confirmedWarpManifests(const Resolution& resolution) {
  std::vector<ManifestSummary> confirmed;
  for (const JudgedManifest& judged : resolution.judged) {
    if (judged.verdict == ManifestVerdict::confirmed) {
      confirmed.push_back(judged.manifest);
    }
  }
  return confirmed;
}

std::vector<StandardizedPath> warpedFolderPaths(const Resolution& resolution) {
  std::vector<StandardizedPath> folders;
  for (const JudgedManifest& judged : resolution.judged) {
    if (judged.verdict == ManifestVerdict::confirmed) {
      folders.push_back(judged.folder);
    }
  }
  return folders;
}

}  // namespace velmora

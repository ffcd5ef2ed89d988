#include "resolution/ManifestMirror.h"

#include "platform/FileReader.h"
#include "platform/PathStandardizer.h"
#include "platform/PlatformError.h"
#include "resolution/OrderedWork.h"
#include "resolution/ReadingCost.h"
#include "resolution/ResolutionObserver.h"
#include "text/LexicalPath.h"

#include <algorithm>
#include <exception>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace velmora {

namespace {

constexpr std::string_view manifestFileExtension = ".json";

std::vector<std::string> manifestFileNames(const Text& mirror, const FileReader& files,
                                           ResolutionObserver& observer) {
  std::vector<std::string> names;
  try {
    names = files.entryNames(mirror);
  } catch (const PlatformError& error) {
    observer.didFailToListMirror(error);
    return {};
  }
  std::erase_if(names, [](const std::string& name) { return !isManifestFileName(name); });
  return names;
}

std::vector<MirroredManifest> unreadManifests(const Text& mirror,
                                              const std::vector<std::string>& fileNames) {
  std::vector<MirroredManifest> manifests;
  manifests.reserve(fileNames.size());
  for (const std::string& name : fileNames) {
    manifests.push_back({.filePath = appendingPathComponent(mirror, name), .manifest = {}});
  }
  return manifests;
}

/// Reads the files of a mirror, each on some thread, and tells of them on the thread that asks.
class MirrorReading {
 public:
  MirrorReading(std::vector<MirroredManifest> unread, const FileReader& files,
                ResolutionObserver& observer, std::optional<std::size_t> workerCount)
      : read_(std::move(unread)), files_(files), observer_(observer), cost_(workerCount) {}

  /// The valid ones, in the order of the files. Once.
  std::vector<MirroredManifest> validManifests() {
    performInOrder(
        {.pieceCount = read_.size(),
         .makeWorker = [this] { return makeWorker(); },
         .helpersWorthStarting =
             [this](std::size_t remaining) { return cost_.helpersWorthStarting(remaining); },
         .didFinish = [this](std::size_t index,
                             const std::exception_ptr& fault) { didRead(index, fault); }});
    return std::move(valid_);
  }

 private:
  PieceWorker makeWorker() {
    return [this, decoder = std::make_shared<ManifestDecoder>()](std::size_t index) {
      MirroredManifest& mirrored = read_[index];
      mirrored.manifest = decoder->readSummary(mirrored.filePath, files_);
    };
  }

  void didRead(std::size_t index, const std::exception_ptr& fault) {
    MirroredManifest& mirrored = read_[index];
    cost_.addFile(mirrored.manifest.entryCount);
    if (fault) {
      tellOfRefusal(mirrored.filePath, fault);
      return;
    }
    valid_.push_back(std::move(mirrored));
    observer_.didReadManifest(valid_.back());
  }

  void tellOfRefusal(const Text& path, const std::exception_ptr& fault) {
    try {
      std::rethrow_exception(fault);
    } catch (const std::exception& error) {
      observer_.didRefuseManifest(path, error);
    }
  }

  /// By the number of the file. Each belongs to the thread that reads it, and then to the caller's.
  std::vector<MirroredManifest> read_;
  const FileReader& files_;
  ResolutionObserver& observer_;
  std::vector<MirroredManifest> valid_;
  ReadingCost cost_;
};

Date creationOf(const MirroredManifest& mirrored) { return mirrored.manifest.createdAt; }

}  // namespace

bool isManifestFileName(std::string_view name) {
  return name.ends_with(manifestFileExtension) && name.size() > manifestFileExtension.size();
}

Text manifestMirrorPath(const Text& sharedWarpRoot, const PathStandardizer& paths) {
  return paths.standardizedFileURLPath(
      appendingPathComponent(sharedWarpRoot, manifestMirrorDirectoryName));
}

std::vector<MirroredManifest> mirroredManifests(const Text& sharedWarpRoot, const FileReader& files,
                                                const PathStandardizer& paths,
                                                ResolutionObserver& observer,
                                                std::optional<std::size_t> workerCount) {
  const Text mirror = manifestMirrorPath(sharedWarpRoot, paths);
  const std::vector<std::string> names = manifestFileNames(mirror, files, observer);
  observer.willReadManifests(names.size());
  MirrorReading reading(unreadManifests(mirror, names), files, observer, workerCount);
  std::vector<MirroredManifest> manifests = reading.validManifests();
  std::ranges::stable_sort(manifests, std::ranges::greater(), creationOf);
  return manifests;
}

}  // namespace velmora

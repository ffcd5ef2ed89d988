#include "ResolutionRecorder.h"

#include "platform/Platform.h"
#include "platform/PlatformError.h"
#include "resolution/WarpMarker.h"

#include <algorithm>
#include <cerrno>
#include <utility>

namespace velmora::inspect {

namespace {

bool isMissingFileError(const std::exception& error) {
  const auto* const platform = dynamic_cast<const PlatformError*>(&error);
  return platform != nullptr && platform->domain() == posixErrorDomain &&
         platform->code() == ENOENT;
}

}  // namespace

std::size_t Resolution::confirmedCount() const {
  return static_cast<std::size_t>(
      std::ranges::count(judged, ManifestVerdict::confirmed, &JudgedManifest::verdict));
}

std::optional<Text> Resolution::pathOf(Text SharedPlaces::*place) const {
  return places.has_value() ? std::optional((*places).*place) : std::nullopt;
}

ResolutionRecorder::ResolutionRecorder(const Platform& platform, ReadingListener listener)
    : files_(platform.fileReader), listener_(std::move(listener)) {
  resolution_.places = sharedPlaces(platform.locations, platform.paths);
}

void ResolutionRecorder::didFailToLocateRoot(const std::exception& error) {
  resolution_.rootFault = faultOf(error);
}

void ResolutionRecorder::didFailToListMirror(const std::exception& error) {
  if (isMissingFileError(error)) {
    resolution_.isMirrorMissing = true;
  } else {
    resolution_.mirrorFault = faultOf(error);
  }
}

void ResolutionRecorder::willReadManifests(std::size_t count) {
  if (listener_.willRead) {
    listener_.willRead(count);
  }
}

void ResolutionRecorder::didReadManifest(const MirroredManifest& /*manifest*/) {
  if (listener_.didReadOne) {
    listener_.didReadOne();
  }
}

void ResolutionRecorder::didRefuseManifest(const Text& filePath, const std::exception& error) {
  resolution_.refused.push_back(
      {.file = filePath.utf8(), .fault = faultInFile(error, filePath, files_)});
  if (listener_.didReadOne) {
    listener_.didReadOne();
  }
}

void ResolutionRecorder::didLoadTombstones(std::size_t count) {
  resolution_.tombstoneCount = count;
}

void ResolutionRecorder::didFailToLoadTombstones(const std::exception& error) {
  resolution_.indexFault =
      faultInFile(error, resolution_.pathOf(&SharedPlaces::index).value_or(""), files_);
}

void ResolutionRecorder::didJudgeManifest(const MirroredManifest& mirrored, ManifestVerdict verdict,
                                          const std::exception* error) {
  JudgedManifest judged = {.file = mirrored.filePath.utf8(),
                           .manifest = mirrored.manifest,
                           .verdict = verdict,
                           .fault = std::nullopt};
  if (error != nullptr) {
    judged.fault =
        faultInFile(*error, warpMarkerPath(mirrored.manifest.originalFolderPath), files_);
  }
  resolution_.judged.push_back(std::move(judged));
}

void ResolutionRecorder::didScreenItem(const ScreenedItem& item) { items_.push_back(item); }

}  // namespace velmora::inspect

#include "ResolutionReport.h"

#include "platform/Platform.h"
#include "platform/PlatformError.h"
#include "resolution/WarpMarker.h"

#include <algorithm>
#include <cerrno>
#include <exception>
#include <utility>

namespace velmora::inspect {

namespace {

bool isMissingFileError(const std::exception_ptr& fault) {
  try {
    std::rethrow_exception(fault);
  } catch (const PlatformError& error) {
    return error.domain() == posixErrorDomain && error.code() == ENOENT;
  }
}

}  // namespace

std::size_t ResolutionReport::confirmedCount() const {
  return static_cast<std::size_t>(
      std::ranges::count(judged, ManifestVerdict::confirmed, &ReportedManifest::verdict));
}

std::optional<Text> ResolutionReport::pathOf(Text SharedPlaces::*place) const {
  return places.has_value() ? std::optional((*places).*place) : std::nullopt;
}

ResolutionReport reportOn(const Resolution& resolution, const Platform& platform) {
  ResolutionReport report;
  report.places = sharedPlaces(platform.locations, platform.paths);
  report.tombstoneCount = resolution.tombstoneCount;
  if (resolution.rootFault) {
    report.rootFault = faultOf(resolution.rootFault);
  }
  if (resolution.mirrorFault) {
    report.isMirrorMissing = isMissingFileError(resolution.mirrorFault);
    if (!report.isMirrorMissing) {
      report.mirrorFault = faultOf(resolution.mirrorFault);
    }
  }
  if (resolution.tombstonesFault) {
    report.indexFault =
        faultInFile(resolution.tombstonesFault, report.pathOf(&SharedPlaces::index).value_or(""),
                    platform.fileReader);
  }
  for (const JudgedManifest& judged : resolution.judged) {
    ReportedManifest reported = {.file = judged.filePath.utf8(),
                                 .manifest = judged.manifest,
                                 .verdict = judged.verdict,
                                 .fault = std::nullopt};
    if (judged.markerFault) {
      reported.fault =
          faultInFile(judged.markerFault, warpMarkerPath(judged.manifest.originalFolderPath),
                      platform.fileReader);
    }
    report.judged.push_back(std::move(reported));
  }
  for (const RefusedManifest& refused : resolution.refused) {
    report.refused.push_back(
        {.file = refused.filePath.utf8(),
         .fault = faultInFile(refused.fault, refused.filePath, platform.fileReader)});
  }
  return report;
}

}  // namespace velmora::inspect

#include "ResolutionReport.h"

#include "EnumTable.h"
#include "handoff/HandoffRequest.h"
#include "platform/Platform.h"
#include "platform/PlatformError.h"
#include "resolution/ManifestMirror.h"
#include "resolution/WarpMarker.h"
#include "warpshared/reading/DestroyedManifestIndexDecoding.h"

#include <algorithm>
#include <cerrno>
#include <exception>
#include <utility>

namespace velmora::inspect {

namespace {

struct VerdictWords {
  ManifestVerdict value;
  std::string_view name;
  std::string_view explanation;
};

constexpr VerdictWords verdictWords[] = {
    {ManifestVerdict::confirmed, "confirmed", "the folder holds the marker of this Warp"},
    {ManifestVerdict::destroyedByWarpID, "destroyedByWarpID",
     "the index records this Warp as destroyed"},
    {ManifestVerdict::destroyedByManifestKey, "destroyedByManifestKey",
     "the index records this object key as destroyed"},
    {ManifestVerdict::noMarker, "noMarker", "the folder holds no marker"},
    {ManifestVerdict::unreadableMarker, "unreadableMarker", "the folder's marker cannot be read"},
    {ManifestVerdict::malformedMarker, "malformedMarker", "the folder's marker is not one"},
    {ManifestVerdict::markerOfAnotherWarp, "markerOfAnotherWarp",
     "the folder's marker names another Warp"},
    {ManifestVerdict::aroundNoItem, "aroundNoItem", "the folder is another one"},
};

SharedPlaces placesIn(const SharedWarpRoot& root, const PathStandardizer& paths) {
  return {.root = root.url.path,
          .rootParent = root.parent,
          .mirror = manifestMirrorPath(root.url.path, paths),
          .index = destroyedManifestIndexPath(root.url.path, paths),
          .handoff = handoffDirectoryPath(root.url.path, paths)};
}

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
  if (resolution.root.has_value()) {
    report.places = placesIn(*resolution.root, platform.paths);
  }
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
                                 .folder = judged.folder.text,
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
    const std::exception_ptr fault = refused.fault != nullptr
                                         ? refused.fault
                                         : manifestFault(refused.filePath, platform.fileReader);
    // A file that the application has mended since is left out.
    if (fault != nullptr) {
      report.refused.push_back(
          {.file = refused.filePath.utf8(),
           .fault = faultInFile(fault, refused.filePath, platform.fileReader)});
    }
  }
  return report;
}

std::string toJSON(const ReportedRefusal& refused) {
  JSONObject object;
  object.addText("file", refused.file);
  object.addText("verdict", "invalid");
  object.addJSON("error", toJSON(refused.fault));
  return object.json();
}

std::string_view name(ManifestVerdict verdict) { return rowFor(verdictWords, verdict).name; }

std::string_view explanationOf(ManifestVerdict verdict) {
  return rowFor(verdictWords, verdict).explanation;
}

}  // namespace velmora::inspect

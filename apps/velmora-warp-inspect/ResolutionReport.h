// A Resolution (WarpedFolders.h) prepared for output: faults in words, and files with their paths.
#pragma once

#include "Report.h"
#include "handoff/SharedContainer.h"
#include "resolution/WarpedFolders.h"
#include "text/Text.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace velmora {

struct Platform;

namespace inspect {

/// The paths of the files and directories that the actions read and write.
struct SharedPlaces {
  /// The shared Warp root, which contains the other places.
  Text root;
  SharedWarpRootParent rootParent = SharedWarpRootParent::applicationSupport;
  Text mirror;
  /// The index of destroyed manifests.
  Text index;
  /// The directory of request files.
  Text handoff;
};

/// A valid manifest, and whether its folder is warped.
struct ReportedManifest {
  std::string file;
  ManifestSummary manifest = {};
  /// The folder that the manifest names, as a standardised path.
  Text folder = {};
  ManifestVerdict verdict = ManifestVerdict::confirmed;
  /// The error from reading the marker, if it is the reason for the verdict.
  std::optional<Fault> fault = {};
};

/// A file of the mirror that is not a valid manifest.
struct ReportedRefusal {
  std::string file;
  Fault fault;
};

struct ResolutionReport {
  /// None if there is no shared Warp root, or if no manifest was examined.
  std::optional<SharedPlaces> places;
  /// The reason why there is no shared Warp root. Nothing else was examined then.
  std::optional<Fault> rootFault;
  /// None if it cannot be determined whether the mirror exists; `mirrorFault` then has the reason.
  std::optional<bool> mirrorExists;
  /// The reason why a mirror that may exist cannot be listed.
  std::optional<Fault> mirrorFault;
  /// As for the mirror.
  std::optional<bool> indexExists;
  /// The reason why the index of destroyed manifests cannot be used.
  std::optional<Fault> indexFault;
  std::size_t tombstoneCount = 0;
  /// Newest first.
  std::vector<ReportedManifest> judged;
  std::vector<ReportedRefusal> refused;

  /// Whether every file of the mirror was examined. A missing mirror has no files.
  [[nodiscard]] bool isComplete() const {
    return !rootFault.has_value() && !mirrorFault.has_value();
  }
  [[nodiscard]] bool isMirrorMissing() const {
    return mirrorExists == false && !mirrorFault.has_value();
  }
  [[nodiscard]] std::size_t confirmedCount() const;
  [[nodiscard]] std::optional<Text> pathOf(Text SharedPlaces::*place) const;
};

/// Reads each file with a decoding error a second time, to find the place of the error.
[[nodiscard]] ResolutionReport reportOn(const Resolution& resolution, const Platform& platform);

/// A place that cannot be used, and the reason.
struct PlaceFault {
  /// "root", "mirror" or "index".
  std::string_view name;
  /// None without a shared Warp root.
  std::optional<Text> path;
  const Fault* fault = nullptr;
};

/// The faults of the places in `report`, to which the result refers.
[[nodiscard]] std::vector<PlaceFault> placeFaultsIn(const ResolutionReport& report);

/// The words for a missing shared Warp root.
inline constexpr std::string_view noRootWords = "there is no place for it";

/// The state of the mirror and of the index in words for people: a fault, the absence, or numbers.
[[nodiscard]] std::string mirrorWords(const ResolutionReport& report);
[[nodiscard]] std::string indexWords(const ResolutionReport& report);

/// Formats the file as a JSON object with the verdict "invalid".
[[nodiscard]] std::string toJSON(const ReportedRefusal& refused);

/// The name of the verdict, for example "confirmed".
[[nodiscard]] std::string_view name(ManifestVerdict verdict);

/// The meaning of the verdict, in words for people.
[[nodiscard]] std::string_view explanationOf(ManifestVerdict verdict);

}  // namespace inspect

}  // namespace velmora

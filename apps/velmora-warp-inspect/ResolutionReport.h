// A look at the warped folders, ready to be told: its faults in words, its files with their paths.
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
  /// The shared Warp root; the others lie in it.
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
  /// The folder that the manifest names, standardised.
  Text folder = {};
  ManifestVerdict verdict = ManifestVerdict::confirmed;
  /// The error that reading the marker raised, if that is why.
  std::optional<Fault> fault = {};
};

/// A file of the mirror that is no valid manifest.
struct ReportedRefusal {
  std::string file;
  Fault fault;
};

struct ResolutionReport {
  /// None without a shared Warp root, and when no manifest was looked at.
  std::optional<SharedPlaces> places;
  /// Why there is no shared Warp root; nothing else was looked at.
  std::optional<Fault> rootFault;
  /// The mirror is there but cannot be listed.
  std::optional<Fault> mirrorFault;
  bool isMirrorMissing = false;
  /// The index of destroyed manifests cannot be used.
  std::optional<Fault> indexFault;
  std::size_t tombstoneCount = 0;
  /// Newest first.
  std::vector<ReportedManifest> judged;
  std::vector<ReportedRefusal> refused;

  /// Whether every file of the mirror was looked at; none is there when the mirror is missing.
  [[nodiscard]] bool isComplete() const {
    return !rootFault.has_value() && !mirrorFault.has_value();
  }
  [[nodiscard]] std::size_t confirmedCount() const;
  [[nodiscard]] std::optional<Text> pathOf(Text SharedPlaces::*place) const;
};

/// Reads the files with a fault once more, for the place of the fault.
[[nodiscard]] ResolutionReport reportOn(const Resolution& resolution, const Platform& platform);

/// As a JSON object, with the verdict "invalid".
[[nodiscard]] std::string toJSON(const ReportedRefusal& refused);

/// "confirmed" and so on.
[[nodiscard]] std::string_view name(ManifestVerdict verdict);

/// The verdict in words for people.
[[nodiscard]] std::string_view explanationOf(ManifestVerdict verdict);

}  // namespace inspect

}  // namespace velmora

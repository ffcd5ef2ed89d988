// The state of everything that the actions need, and the faults that prevent or limit their work.
#pragma once

#include "ResolutionReport.h"
#include "localization/VelmoraLanguage.h"
#include "text/Text.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace velmora {

struct Platform;

namespace inspect {

/// The reason for the place of the shared Warp root.
enum class RootSource {
  /// $VELMORA_GROUP_CONTAINER names the group container.
  environment,
  /// The application has created the group container.
  groupContainer,
  /// There is no group container.
  fallback,
};

struct HandoffState {
  /// None if it cannot be determined; `fault` then has the reason.
  std::optional<bool> exists = false;
  /// Whether request files can be written there. A missing directory counts as writable if it can
  /// be created.
  bool isWritable = false;
  /// None when the directory cannot be listed.
  std::optional<std::size_t> waitingRequests;
  /// The reason why the directory cannot be looked at or listed.
  std::optional<Fault> fault = {};
};

struct Diagnosis {
  RootSource rootSource = RootSource::fallback;
  /// The reason why the group container cannot be looked at. The actions use the
  /// fallback then.
  std::optional<Fault> containerFault;
  ResolutionReport resolution;
  HandoffState handoff;
  VelmoraLanguage chosenLanguage = VelmoraLanguage::system;
  std::vector<Text> preferredLanguages;
  VelmoraLanguage language = VelmoraLanguage::english;
  bool isBusReachable = false;
  std::optional<Text> application;

  /// The faults that prevent the actions from working: "noRoot", "mirrorUnreadable",
  /// "handoffNotWritable".
  [[nodiscard]] std::vector<std::string> obstacles() const;
  /// The faults with which the actions still work: "containerUnreadable", "indexUnusable",
  /// "invalidManifests", "busUnreachable", "applicationNotFound".
  [[nodiscard]] std::vector<std::string> notes() const;
};

/// Queries of the system that the interfaces of the platform do not offer.
struct SystemProbes {
  /// Whether an environment variable names the group container (LinuxSharedLocations.h).
  std::function<bool()> isContainerSetByEnvironment;
  /// The path at which the application creates the group container; none without a data home.
  std::function<std::optional<Text>()> containerInDataHome;
  std::function<bool()> isBusReachable;
  /// See the function of this name below.
  std::function<bool(const Text& directory)> canHoldNewFiles;
};

/// Examines everything. Changes nothing and starts nothing.
[[nodiscard]] Diagnosis diagnose(const Platform& platform, const SystemProbes& probes);

/// Whether the user can create files in the directory at the absolute path `path`. An existing
/// directory must be writable. A missing one must be below a writable directory, so that it can be
/// created. Creates no file for the check.
[[nodiscard]] bool canHoldNewFiles(std::string_view path);

}  // namespace inspect

}  // namespace velmora

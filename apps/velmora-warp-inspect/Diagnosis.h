// Whether the actions can do their work here, and what they would find.
#pragma once

#include "ResolutionReport.h"
#include "Terminal.h"
#include "localization/VelmoraLanguage.h"
#include "text/Text.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace velmora {

struct Platform;

namespace inspect {

/// Why the shared Warp root is where it is.
enum class RootSource {
  /// $VELMORA_GROUP_CONTAINER says so.
  environment,
  /// The application has made the group container.
  groupContainer,
  /// There is no group container.
  fallback,
};

/// "VELMORA_GROUP_CONTAINER" and so on.
[[nodiscard]] std::string name(RootSource source);

struct HandoffState {
  bool exists = false;
  /// Whether requests could be left there; the directory is made where it is missing.
  bool isWritable = false;
  /// None when the directory cannot be listed.
  std::optional<std::size_t> waitingRequests;
};

struct Diagnosis {
  RootSource rootSource = RootSource::fallback;
  ResolutionReport resolution;
  bool indexExists = false;
  HandoffState handoff;
  VelmoraLanguage chosenLanguage = VelmoraLanguage::system;
  std::vector<Text> preferredLanguages;
  VelmoraLanguage language = VelmoraLanguage::english;
  bool isBusReachable = false;
  std::optional<Text> application;

  /// What keeps the actions from their work: "noRoot", "mirrorUnreadable", "handoffNotWritable".
  [[nodiscard]] std::vector<std::string> obstacles() const;
  /// What they get along with: "indexUnusable", "invalidManifests", "busUnreachable",
  /// "applicationNotFound".
  [[nodiscard]] std::vector<std::string> notes() const;
};

/// What is asked of the system beside the platform.
struct SystemProbes {
  /// Whether the environment says where the group container is (LinuxSharedLocations.h).
  std::function<bool()> isContainerSetByEnvironment;
  std::function<bool()> isBusReachable;
  /// canHoldNewFiles (DirectoryAccess.h).
  std::function<bool(const Text& directory)> canHoldNewFiles;
};

/// Looks at everything, and changes and starts nothing.
[[nodiscard]] Diagnosis diagnose(const Platform& platform, const SystemProbes& probes);

/// As a JSON object.
[[nodiscard]] std::string toJSON(const Diagnosis& diagnosis);

/// In lines for people.
[[nodiscard]] std::string toText(const Diagnosis& diagnosis, Style style);

}  // namespace inspect

}  // namespace velmora

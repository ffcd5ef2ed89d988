// The state of everything that the actions need, and the faults that keep them from their work.
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

/// Why the shared Warp root is where it is.
enum class RootSource {
  /// $VELMORA_GROUP_CONTAINER says so.
  environment,
  /// The application has made the group container.
  groupContainer,
  /// There is no group container.
  fallback,
};

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

  /// The faults that keep the actions from their work: "noRoot", "mirrorUnreadable",
  /// "handoffNotWritable".
  [[nodiscard]] std::vector<std::string> obstacles() const;
  /// The faults that the actions get along with: "indexUnusable", "invalidManifests",
  /// "busUnreachable", "applicationNotFound".
  [[nodiscard]] std::vector<std::string> notes() const;
};

/// Questions to the system that the platform's interfaces do not have.
struct SystemProbes {
  /// Whether the environment says where the group container is (LinuxSharedLocations.h).
  std::function<bool()> isContainerSetByEnvironment;
  std::function<bool()> isBusReachable;
  /// canHoldNewFiles.
  std::function<bool(const Text& directory)> canHoldNewFiles;
};

/// Looks at everything, and changes and starts nothing.
[[nodiscard]] Diagnosis diagnose(const Platform& platform, const SystemProbes& probes);

/// Whether the user could make files in the directory at `path`, which is absolute: it is one and
/// may be written to; or nothing is there, and it could be made below the nearest directory above.
/// Makes no file to find out.
[[nodiscard]] bool canHoldNewFiles(std::string_view path);

}  // namespace inspect

}  // namespace velmora

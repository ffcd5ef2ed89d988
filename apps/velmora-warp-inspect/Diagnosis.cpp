#include "Diagnosis.h"

#include "Presence.h"
#include "handoff/ApplicationLaunch.h"
#include "platform/FileReader.h"
#include "platform/Platform.h"
#include "platform/PlatformError.h"
#include "platform/PreferredLanguages.h"
#include "platform/SharedDefaults.h"
#include "platform/Workspace.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <exception>
#include <utility>

namespace velmora::inspect {

namespace {

constexpr std::string_view requestExtension = ".json";

RootSource rootSourceOf(const SharedPlaces& places, const SystemProbes& probes) {
  if (places.rootParent == SharedWarpRootParent::applicationSupport) {
    return RootSource::fallback;
  }
  return probes.isContainerSetByEnvironment() ? RootSource::environment
                                              : RootSource::groupContainer;
}

std::size_t waitingRequestsIn(const Text& directory, const FileReader& files) {
  const std::vector<std::string> names = files.entryNames(directory, unlimitedNameCount);
  return static_cast<std::size_t>(std::ranges::count_if(
      names, [](const std::string& name) { return name.ends_with(requestExtension); }));
}

HandoffState handoffStateOf(const Text& directory, const FileReader& files,
                            const SystemProbes& probes) {
  Presence presence = presenceOf(directory, files);
  HandoffState state = {.exists = presence.exists,
                        .isWritable = probes.canHoldNewFiles(directory),
                        .waitingRequests = {},
                        .fault = std::move(presence.fault)};
  try {
    if (state.exists.has_value()) {
      state.waitingRequests = *state.exists ? waitingRequestsIn(directory, files) : 0;
    }
  } catch (const PlatformError&) {
    state.fault = faultOf(std::current_exception());
  }
  return state;
}

bool isMissing(const std::string& path) {
  // A symbolic link without a target is not missing: no directory can be created in its place.
  struct stat status {};
  return ::lstat(path.c_str(), &status) != 0 && errno == ENOENT;
}

bool isWritableDirectory(const std::string& path) {
  struct stat status {};
  return ::stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode) &&
         ::faccessat(AT_FDCWD, path.c_str(), W_OK | X_OK, AT_EACCESS) == 0;
}

}  // namespace

std::vector<std::string> Diagnosis::obstacles() const {
  std::vector<std::string> names;
  if (!resolution.places.has_value()) {
    names.emplace_back("noRoot");
    return names;
  }
  if (resolution.mirrorFault.has_value()) {
    names.emplace_back("mirrorUnreadable");
  }
  if (!handoff.isWritable) {
    names.emplace_back("handoffNotWritable");
  }
  return names;
}

std::vector<std::string> Diagnosis::notes() const {
  std::vector<std::string> names;
  if (containerFault.has_value()) {
    names.emplace_back("containerUnreadable");
  }
  if (resolution.indexFault.has_value()) {
    names.emplace_back("indexUnusable");
  }
  if (!resolution.refused.empty()) {
    names.emplace_back("invalidManifests");
  }
  if (!isBusReachable) {
    names.emplace_back("busUnreachable");
  }
  if (!application.has_value()) {
    names.emplace_back("applicationNotFound");
  }
  return names;
}

Diagnosis diagnose(const Platform& platform, const SystemProbes& probes) {
  Diagnosis diagnosis;
  diagnosis.resolution = reportOn(resolveWarpedFolders(platform), platform);
  if (const std::optional<SharedPlaces>& places = diagnosis.resolution.places) {
    diagnosis.rootSource = rootSourceOf(*places, probes);
    const std::optional<Text> container = probes.containerInDataHome();
    if (diagnosis.rootSource == RootSource::fallback && container.has_value()) {
      diagnosis.containerFault = presenceOf(*container, platform.fileReader).fault;
    }
    diagnosis.handoff = handoffStateOf(places->handoff, platform.fileReader, probes);
  }
  diagnosis.chosenLanguage = selectedLanguage(platform.defaults);
  diagnosis.preferredLanguages = platform.languages.preferredLanguages();
  diagnosis.language = resolvedLanguage(diagnosis.chosenLanguage, diagnosis.preferredLanguages);
  diagnosis.isBusReachable = probes.isBusReachable();
  diagnosis.application = platform.workspace.applicationLocation(mainApplicationIdentifier);
  return diagnosis;
}

bool canHoldNewFiles(std::string_view path) {
  std::string directory(path);
  while (directory.size() > 1 && isMissing(directory)) {
    directory.resize(std::max<std::size_t>(directory.rfind('/'), 1));
  }
  return isWritableDirectory(directory);
}

}  // namespace velmora::inspect

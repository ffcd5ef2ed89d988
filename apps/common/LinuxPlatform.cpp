#include "common/LinuxPlatform.h"

#include "platform/linux/Environment.h"

#include <chrono>
#include <filesystem>
#include <string>
#include <system_error>
#include <utility>

namespace velmora {

namespace {

/// What the user waits for the desktop's services at most, in all.
constexpr std::chrono::milliseconds sessionBusLimit{2000};

/// The localized texts beside the program, where an installation was moved or this is a build tree;
/// else the place that they were to be installed at.
std::string installedResourceDirectory() {
  std::error_code error;
  const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", error);
  if (error) {
    return VELMORA_RESOURCE_DIRECTORY;
  }
  const std::filesystem::path beside =
      program.parent_path().parent_path() / "share/velmora-finder-action";
  return std::filesystem::is_directory(beside, error) ? beside.string()
                                                      : VELMORA_RESOURCE_DIRECTORY;
}

}  // namespace

LinuxPlatform::LinuxPlatform(const char* programName, std::optional<Text> bundleIdentifier,
                             const Environment& environment)
    : paths(std::string(environment.absolutePath("HOME").value_or(""))),
      bundle(
          std::move(bundleIdentifier),
          [&environment] { return resourceDirectory(environment, installedResourceDirectory()); },
          fileReader),
      locations(environment, fileReader),
      defaults(environment, fileReader),
      languages(environment),
      sessionBus(environment, sessionBusLimit),
      notifications(sessionBus),
      workspace(sessionBus, environment, fileReader),
      logger(programName) {}

Platform LinuxPlatform::references() {
  return {.bundle = bundle,
          .fileReader = fileReader,
          .fileWriter = fileWriter,
          .paths = paths,
          .locations = locations,
          .defaults = defaults,
          .languages = languages,
          .notifications = notifications,
          .workspace = workspace,
          .mainQueue = mainQueue,
          .logger = logger,
          .clock = clock,
          .identifiers = identifiers};
}

}  // namespace velmora

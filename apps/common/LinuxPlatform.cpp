#include "common/LinuxPlatform.h"

#include "platform/linux/Environment.h"

#include <filesystem>
#include <string>
#include <system_error>
#include <utility>

namespace velmora {

namespace {

/// The directory of the localized texts relative to the program, for a build tree and for an
/// installation that was moved. If it is missing, the directory that the build was configured for.
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
      sessionBus(environment),
      notifications(sessionBus),
      workspace(sessionBus, environment, fileReader),
      logger(programName) {}

Platform LinuxPlatform::references(const FileReader& files) {
  return {.bundle = bundle,
          .fileReader = files,
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

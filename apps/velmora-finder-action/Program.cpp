#include "Program.h"

#include "CommandLine.h"
#include "CommandLineContext.h"
#include "NoWarpedFolders.h"
#include "SelectedItems.h"
#include "extension/SelectionGathering.h"
#include "extension/SelectionScreening.h"
#include "extension/VelmoraFinderActionExtension.h"
#include "localization/Messages.h"
#include "platform/linux/DesktopNotification.h"
#include "platform/linux/Environment.h"
#include "platform/linux/GLibMainQueue.h"
#include "platform/linux/LinuxExtensionBundle.h"
#include "platform/linux/LinuxNotificationCenter.h"
#include "platform/linux/LinuxPreferredLanguages.h"
#include "platform/linux/LinuxSharedDefaults.h"
#include "platform/linux/LinuxSharedLocations.h"
#include "platform/linux/LinuxWorkspace.h"
#include "platform/linux/SessionBus.h"
#include "platform/linux/SyslogLogger.h"
#include "platform/posix/PosixFileReader.h"
#include "platform/posix/PosixFileWriter.h"
#include "platform/posix/PosixPathStandardizer.h"
#include "platform/posix/RandomIdentifierSource.h"
#include "platform/posix/SystemClock.h"

#include <unistd.h>

#include <chrono>
#include <exception>
#include <filesystem>
#include <iostream>
#include <memory>
#include <optional>
#include <string>
#include <system_error>

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

/// The platform of a Linux desktop. Nothing here connects to anything before it is used.
struct LinuxPlatform {
  LinuxPlatform(const CommandLine& commandLine, const Environment& environment)
      : paths(std::string(environment.absolutePath("HOME").value_or(""))),
        bundle(commandLine.bundleIdentifier,
               resourceDirectory(environment, installedResourceDirectory()), fileReader),
        locations(environment, fileReader),
        defaults(environment, fileReader),
        languages(environment),
        sessionBus(environment, sessionBusLimit),
        notifications(sessionBus),
        workspace(sessionBus, environment, fileReader) {}

  Platform references() {
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

  PosixFileReader fileReader;
  PosixFileWriter fileWriter;
  PosixPathStandardizer paths;
  RandomIdentifierSource identifiers;
  SystemClock clock;
  LinuxExtensionBundle bundle;
  LinuxSharedLocations locations;
  LinuxSharedDefaults defaults;
  LinuxPreferredLanguages languages;
  SessionBus sessionBus;
  LinuxNotificationCenter notifications;
  LinuxWorkspace workspace;
  GLibMainQueue mainQueue;
  SyslogLogger logger{"velmora-finder-action"};
};

void tellUser(const RequestError& error, const CommandLine& commandLine, SessionBus& sessionBus) {
  if (error.localizedDescription.empty()) {
    // Memory ran out before a message could be found; the log has a line.
    return;
  }
  std::cerr << error.localizedDescription << std::endl;
  if (commandLine.notifiesDesktop && ::isatty(STDERR_FILENO) == 0) {
    notifyDesktop(sessionBus, error.localizedDescription);
  }
}

ExitStatus exitStatusOf(const Outcome& outcome) {
  if (!outcome.error.has_value()) {
    return ExitStatus::completed;
  }
  return outcome.error->code == unsuitableSelectionErrorCode ? ExitStatus::selectionCancelled
                                                             : ExitStatus::handoffCancelled;
}

}  // namespace

ExitStatus checkSelection(const CommandLine& commandLine, const Environment& environment) try {
  LinuxPlatform platform(commandLine, environment);
  const NoWarpedFolders warpedFolders;
  bool suits = false;
  loadFileURLs(providersFromOperands(commandLine.operands, platform.paths), platform.mainQueue,
               [&](const GatheredFileURLs& selection) {
                 platform.mainQueue.quit();
                 suits = selection.has_value() &&
                         !screenSelection(*selection, platform.references(), warpedFolders).empty();
               });
  platform.mainQueue.run();
  return suits ? ExitStatus::completed : ExitStatus::selectionCancelled;
} catch (const std::exception&) {
  // Nobody reads a message of a check; what cannot be told does not apply.
  return ExitStatus::selectionCancelled;
}

ExitStatus performAction(const CommandLine& commandLine, const Environment& environment) {
  LinuxPlatform platform(commandLine, environment);
  const NoWarpedFolders warpedFolders;
  const auto context = std::make_shared<CommandLineContext>(
      commandLine.operands, platform.paths, [&platform] { platform.mainQueue.quit(); });
  const VelmoraFinderActionExtension extension(platform.references(), warpedFolders);
  extension.beginRequestWithExtensionContext(context);
  platform.mainQueue.run();
  const Outcome& outcome = context->outcome().value();
  if (outcome.error.has_value()) {
    tellUser(*outcome.error, commandLine, platform.sessionBus);
  }
  platform.workspace.finishPendingActivation();
  return exitStatusOf(outcome);
}

}  // namespace velmora

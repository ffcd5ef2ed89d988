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
#include <iostream>
#include <memory>
#include <optional>

namespace velmora {

namespace {

/// What the user waits for the desktop's services at most, in all.
constexpr std::chrono::milliseconds sessionBusLimit{2000};

/// The platform of a Linux desktop. Nothing here connects to anything before it is used.
struct LinuxPlatform {
  LinuxPlatform(const CommandLine& commandLine, const Environment& environment)
      : paths(std::string(environment.absolutePath("HOME").value_or(""))),
        bundle(commandLine.bundleIdentifier,
               resourceDirectory(environment, VELMORA_RESOURCE_DIRECTORY), fileReader),
        locations(environment, fileReader),
        defaults(environment, fileReader),
        languages(environment),
        sessionBus(environment, sessionBusLimit),
        notifications(sessionBus),
        workspace(sessionBus, environment) {}

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

ExitStatus checkSelection(const CommandLine& commandLine, const Environment& environment) {
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
}

ExitStatus performAction(const CommandLine& commandLine, const Environment& environment) {
  LinuxPlatform platform(commandLine, environment);
  const NoWarpedFolders warpedFolders;
  const auto context = std::make_shared<CommandLineContext>(
      providersFromOperands(commandLine.operands, platform.paths),
      [&platform] { platform.mainQueue.quit(); });
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

#include "Program.h"

#include "CommandLine.h"
#include "CommandLineContext.h"
#include "common/LinuxPlatform.h"
#include "common/Output.h"
#include "common/SelectedItems.h"
#include "extension/RequestFlow.h"
#include "extension/VelmoraFinderActionExtension.h"
#include "localization/Messages.h"
#include "platform/PlatformError.h"
#include "platform/linux/DesktopNotification.h"
#include "platform/linux/Environment.h"
#include "platform/linux/GLibLoading.h"

#include <unistd.h>

#include <exception>
#include <memory>
#include <string>
#include <vector>

namespace velmora {

namespace {

void tellUser(const RequestError& error, const CommandLine& commandLine, SessionBus& sessionBus) {
  if (error.localizedDescription.empty()) {
    // Memory ran out before the message was found. The system log has a line.
    return;
  }
  try {
    Output(STDERR_FILENO).write(error.localizedDescription + "\n");
  } catch (const OutputError&) {
    // The exit status still reports the failure.
  }
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

bool suits(const std::vector<std::string>& operands, const Platform& platform) {
  return !acceptedPaths(screenOperands(operands, platform).screening).empty();
}

void serve(const std::shared_ptr<CommandLineContext>& context, const CommandLine& commandLine,
           const Platform& platform) {
  try {
    // Loaded before the request is written: without GLib, the application gets no notification.
    loadGLib();
  } catch (const PlatformError& error) {
    if (suits(commandLine.operands, platform)) {
      cancelFailedHandoff(error.what(), *context, platform);
      return;
    }
    // The request is cancelled because of its selection.
  }
  VelmoraFinderActionExtension(platform).beginRequestWithExtensionContext(context);
}

}  // namespace

ExitStatus checkSelection(const CommandLine& commandLine, const Environment& environment) try {
  LinuxPlatform platform(programName, commandLine.bundleIdentifier, environment);
  return suits(commandLine.operands, platform.references()) ? ExitStatus::completed
                                                            : ExitStatus::selectionCancelled;
} catch (const std::exception&) {
  // A check prints no message. If the answer cannot be determined, the action does not apply.
  return ExitStatus::selectionCancelled;
}

ExitStatus performAction(const CommandLine& commandLine, const Environment& environment) {
  LinuxPlatform platform(programName, commandLine.bundleIdentifier, environment);
  const auto context = std::make_shared<CommandLineContext>(
      commandLine.operands, platform.paths, [&platform] { platform.mainQueue.quit(); });
  serve(context, commandLine, platform.references());
  platform.mainQueue.run();
  const Outcome& outcome = context->outcome().value();
  if (outcome.error.has_value()) {
    tellUser(*outcome.error, commandLine, platform.sessionBus);
  }
  platform.workspace.finishPendingActivation();
  return exitStatusOf(outcome);
}

}  // namespace velmora

#include "Program.h"

#include "CommandLine.h"
#include "CommandLineContext.h"
#include "common/LinuxPlatform.h"
#include "common/Main.h"
#include "common/SelectedItems.h"
#include "extension/RequestFlow.h"
#include "extension/VelmoraFinderActionExtension.h"
#include "localization/Messages.h"
#include "platform/PlatformError.h"
#include "platform/linux/DesktopNotification.h"
#include "platform/linux/Environment.h"
#include "platform/linux/GLibLoading.h"
#include "platform/linux/LimitedWriting.h"

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
  // The desktop comes first, because nobody may read standard error.
  if (commandLine.notifiesDesktop && ::isatty(STDERR_FILENO) == 0) {
    notifyDesktop(sessionBus, error.localizedDescription);
  }
  writeWithin(messageLimit, STDERR_FILENO, error.localizedDescription + "\n");
}

std::vector<std::string> operandsOf(const CommandLine& commandLine) {
  return commandLine.readsStandardInput ? operandsOnStandardInput() : commandLine.operands;
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

void serve(const std::shared_ptr<CommandLineContext>& context,
           const std::vector<std::string>& operands, const Platform& platform) {
  try {
    // Loaded before the request is written: without GLib, the application gets no notification.
    loadGLib();
  } catch (const PlatformError& error) {
    if (suits(operands, platform)) {
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
  return suits(operandsOf(commandLine), platform.references()) ? ExitStatus::completed
                                                               : ExitStatus::selectionCancelled;
} catch (const std::exception&) {
  // A check prints no message. If the answer cannot be determined, the action does not apply.
  return ExitStatus::selectionCancelled;
}

ExitStatus performAction(const CommandLine& commandLine, const Environment& environment) {
  LinuxPlatform platform(programName, commandLine.bundleIdentifier, environment);
  const std::vector<std::string> operands = operandsOf(commandLine);
  const auto context = std::make_shared<CommandLineContext>(
      operands, platform.paths, [&platform] { platform.mainQueue.quit(); });
  serve(context, operands, platform.references());
  platform.mainQueue.run();
  const Outcome& outcome = context->outcome().value();
  if (outcome.error.has_value()) {
    tellUser(*outcome.error, commandLine, platform.sessionBus);
  }
  platform.workspace.finishPendingActivation();
  return exitStatusOf(outcome);
}

}  // namespace velmora

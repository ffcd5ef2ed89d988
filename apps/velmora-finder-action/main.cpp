// velmora-finder-action: one request of a file manager's menu, then exit.

#include "CommandLine.h"
#include "Program.h"
#include "common/SelectedItems.h"
#include "common/StandardStreams.h"
#include "platform/PlatformError.h"
#include "platform/linux/Environment.h"

#include <csignal>
#include <exception>
#include <iostream>
#include <string>
#include <variant>
#include <vector>

namespace {

using velmora::ExitStatus;

ExitStatus refuse(const std::string& message) {
  std::cerr << "velmora-finder-action: " << message << std::endl;
  return ExitStatus::usageError;
}

ExitStatus run(velmora::CommandLine commandLine, const velmora::Environment& environment) {
  if (commandLine.readsStandardInput) {
    try {
      commandLine.operands = velmora::splitAtNUL(velmora::readStandardInput());
    } catch (const velmora::PlatformError& error) {
      // A part of a selection must not be taken for all of it.
      return refuse(std::string("cannot read standard input: ") + error.what());
    }
  }
  return commandLine.isCheck ? checkSelection(commandLine, environment)
                             : performAction(commandLine, environment);
}

struct Answer {
  const velmora::Environment& environment;

  ExitStatus operator()(const velmora::CommandLine& commandLine) const {
    return run(commandLine, environment);
  }
  ExitStatus operator()(const velmora::RequestedText& requested) const {
    std::cout << requested.text << std::flush;
    return ExitStatus::completed;
  }
  ExitStatus operator()(const velmora::UsageError& error) const { return refuse(error.message); }
};

}  // namespace

int main(int argc, char** argv) {
  velmora::openMissingStandardStreams();
  // A reader of our messages that has gone must not take the request with it.
  std::signal(SIGPIPE, SIG_IGN);
  // A limit on the size of files fails the write (EFBIG), and is told like any other failure.
  std::signal(SIGXFSZ, SIG_IGN);
  try {
    const velmora::Environment environment = velmora::captureEnvironment();
    velmora::detachSessionBusFromLibraries();
    const std::vector<std::string> arguments(argv + (argc > 0 ? 1 : 0), argv + argc);
    return static_cast<int>(std::visit(Answer{environment}, velmora::parseCommandLine(arguments)));
  } catch (const std::exception& error) {
    std::cerr << "velmora-finder-action: " << error.what() << std::endl;
    return static_cast<int>(ExitStatus::handoffCancelled);
  }
}

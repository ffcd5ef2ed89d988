// velmora-warp-inspect: tells people what the actions see.

#include "CommandLine.h"
#include "Output.h"
#include "Program.h"
#include "common/SelectedItems.h"
#include "common/StandardStreams.h"
#include "platform/PlatformError.h"
#include "platform/linux/Environment.h"

#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <exception>
#include <string>
#include <variant>
#include <vector>

namespace {

using velmora::inspect::CommandLine;
using velmora::inspect::complain;
using velmora::inspect::ExitStatus;
using velmora::inspect::OutputError;

ExitStatus run(CommandLine commandLine, const velmora::Environment& environment) {
  if (commandLine.readsStandardInput) {
    try {
      commandLine.operands = velmora::splitAtNUL(velmora::readStandardInput());
    } catch (const velmora::PlatformError& error) {
      // An answer on a part must not be taken for one on all.
      complain(std::string("cannot read standard input: ") + error.what());
      return ExitStatus::usageError;
    }
  }
  return velmora::inspect::answer(commandLine, environment);
}

struct Answer {
  const velmora::Environment& environment;

  ExitStatus operator()(const CommandLine& commandLine) const {
    return run(commandLine, environment);
  }
  ExitStatus operator()(const velmora::RequestedText& requested) const {
    velmora::inspect::Output(STDOUT_FILENO).write(requested.text);
    return ExitStatus::yes;
  }
  ExitStatus operator()(const velmora::UsageError& error) const {
    complain(error.message);
    return ExitStatus::usageError;
  }
};

}  // namespace

int main(int argc, char** argv) {
  velmora::openMissingStandardStreams();
  // A reader that has gone ends the program in good order, by the error of the write.
  std::signal(SIGPIPE, SIG_IGN);
  // Likewise a limit on the size of the file that the answer goes to.
  std::signal(SIGXFSZ, SIG_IGN);
  try {
    const velmora::Environment environment = velmora::captureEnvironment();
    velmora::detachSessionBusFromLibraries();
    const std::vector<std::string> arguments(argv + (argc > 0 ? 1 : 0), argv + argc);
    return static_cast<int>(
        std::visit(Answer{environment}, velmora::inspect::parseCommandLine(arguments)));
  } catch (const OutputError& error) {
    // Who has stopped reading has seen enough.
    if (error.code() != EPIPE) {
      complain(std::string("cannot write the answer: ") + error.what());
    }
  } catch (const std::exception& error) {
    complain(error.what());
  }
  return static_cast<int>(ExitStatus::incomplete);
}

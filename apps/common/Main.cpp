#include "common/Main.h"

#include "common/CommandArguments.h"
#include "common/SelectedItems.h"
#include "common/StandardStreams.h"
#include "platform/PlatformError.h"
#include "platform/linux/Environment.h"

#include <unistd.h>

#include <csignal>
#include <exception>

namespace velmora {

int runMain(
    int argc, char** argv, const ProgramIdentity& program,
    const std::function<int(const std::vector<std::string>& arguments, const Environment&)>& run) {
  openMissingStandardStreams();
  // A reader of our messages that has gone must not take the request with it.
  std::signal(SIGPIPE, SIG_IGN);
  // A limit on the size of files fails the write (EFBIG), and is told like any other failure.
  std::signal(SIGXFSZ, SIG_IGN);
  try {
    const Environment environment = captureEnvironment();
    detachSessionBusFromLibraries();
    // A process may be started without any argument, not even its name.
    const std::vector<std::string> arguments(argv + (argc > 0 ? 1 : 0), argv + argc);
    return run(arguments, environment);
  } catch (const UsageError& error) {
    complain(program.name, error.what());
    return usageErrorStatus;
  } catch (const std::exception& error) {
    complain(program.name, error.what());
    return program.failureStatus;
  }
}

void complain(std::string_view programName, std::string_view message) noexcept {
  try {
    Output(STDERR_FILENO).write(std::string(programName).append(": ").append(message).append("\n"));
  } catch (const std::exception&) {
    // What cannot be shown there is no loss: the exit status says what matters.
  }
}

std::vector<std::string> operandsOnStandardInput() {
  try {
    return splitAtNUL(readStandardInput());
  } catch (const PlatformError& error) {
    throw UsageError(std::string("cannot read standard input: ") + error.what());
  }
}

}  // namespace velmora

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
  // If the reader of the messages has gone, the request must still be served.
  std::signal(SIGPIPE, SIG_IGN);
  // A write beyond the limit on file sizes then fails (EFBIG) instead of ending the process.
  std::signal(SIGXFSZ, SIG_IGN);
  try {
    const Environment environment = captureEnvironment();
    // A process may be started without arguments, even without its own name.
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
    // The exit status still reports the failure.
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

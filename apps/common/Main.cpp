#include "common/Main.h"

#include "common/CommandArguments.h"
#include "common/DisplayText.h"
#include "common/SelectedItems.h"
#include "common/StandardStreams.h"
#include "platform/PlatformError.h"
#include "platform/linux/Environment.h"
#include "platform/linux/LimitedWriting.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstddef>
#include <exception>
#include <new>

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
  } catch (const OutputError& error) {
    // A reader that closed the pipe early needs no message.
    if (error.code() != EPIPE) {
      complain(program.name, std::string("cannot write the answer: ") + error.what());
    }
    return program.failureStatus;
  } catch (const std::bad_alloc&) {
    complain(program.name, "Cannot allocate memory");
    return program.failureStatus;
  } catch (const std::exception& error) {
    complain(program.name, displayText(error.what()));
    return program.failureStatus;
  }
}

void complain(std::string_view programName, std::string_view message) noexcept {
  try {
    writeWithin(messageLimit, STDERR_FILENO,
                std::string(programName).append(": ").append(message).append("\n"));
  } catch (const std::exception&) {
    // There is no memory for the line. The exit status still reports the failure.
  }
}

std::vector<std::string> operandsOnStandardInput() {
  std::string bytes;
  try {
    bytes = readStandardInput(maxOperandListLength);
  } catch (const PlatformError& error) {
    throw UsageError(error.code() == EFBIG
                         ? "standard input is longer than 16 MiB"
                         : std::string("cannot read standard input: ") + error.what());
  }
  if (std::ranges::count(bytes, '\0') > maxListedOperandCount) {
    throw UsageError("standard input names more than 100000 items");
  }
  return splitAtNUL(bytes);
}

}  // namespace velmora

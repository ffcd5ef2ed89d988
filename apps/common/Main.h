// The parts of `main` that both programs share.
#pragma once

#include "common/Output.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace velmora {

class Environment;

/// The exit status for a wrong command line: EX_USAGE of sysexits.h.
inline constexpr int usageErrorStatus = 64;

struct ProgramIdentity {
  const char* name;
  /// The exit status after an unexpected exception.
  int failureStatus;
};

/// Prepares the standard streams, the signals and the environment, then calls `run` and returns its
/// exit status. If `run` throws, prints the message and returns usageErrorStatus for a UsageError,
/// or `program.failureStatus` for any other std::exception.
[[nodiscard]] int runMain(
    int argc, char** argv, const ProgramIdentity& program,
    const std::function<int(const std::vector<std::string>& arguments, const Environment&)>& run);

/// Prints one line on standard error: the program's name and the message. Never fails.
void complain(std::string_view programName, std::string_view message) noexcept;

/// Reads the operands from standard input; a NUL ends each of them. Throws UsageError if the input
/// cannot be read, because a part of a selection must not be served as the whole selection.
[[nodiscard]] std::vector<std::string> operandsOnStandardInput();

}  // namespace velmora

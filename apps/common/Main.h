// The parts of `main` that both programs share.
#pragma once

#include "common/Output.h"

#include <cstddef>
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
/// or `program.failureStatus` for any other std::exception. Prints no message of an OutputError
/// whose reader has closed the pipe.
[[nodiscard]] int runMain(
    int argc, char** argv, const ProgramIdentity& program,
    const std::function<int(const std::vector<std::string>& arguments, const Environment&)>& run);

/// Prints one line on standard error: the program's name and the message. Never fails, and waits
/// for a reader no longer than `messageLimit` (LimitedWriting.h).
void complain(std::string_view programName, std::string_view message) noexcept;

/// The longest list of operands on standard input, in bytes, and the largest number of them. Larger
/// than any selection, and small enough for a program that a menu waits for.
inline constexpr std::size_t maxOperandListLength = std::size_t{16} << 20;
inline constexpr std::ptrdiff_t maxListedOperandCount = 100'000;

/// Reads the operands from standard input; a NUL ends each of them. Waits for the end of the input.
/// Throws UsageError if the input cannot be read or exceeds a limit, because a part of a selection
/// must not be served as the whole selection.
[[nodiscard]] std::vector<std::string> operandsOnStandardInput();

}  // namespace velmora

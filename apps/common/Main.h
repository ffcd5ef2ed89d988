// What both programs do before their first line and after their last.
#pragma once

#include "common/Output.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace velmora {

class Environment;

/// EX_USAGE of sysexits.h: the exit status for a command line that is wrong.
inline constexpr int usageErrorStatus = 64;

struct ProgramIdentity {
  const char* name;
  /// The exit status when something unforeseen has ended the run.
  int failureStatus;
};

/// Serves one process: prepares the standard streams, signals and environment, has `run` answer the
/// arguments by an exit status, and tells the user of what it throws. A UsageError ends with
/// usageErrorStatus, any other std::exception with the failure's.
[[nodiscard]] int runMain(
    int argc, char** argv, const ProgramIdentity& program,
    const std::function<int(const std::vector<std::string>& arguments, const Environment&)>& run);

/// Says what is wrong on standard error, in one line. Never fails.
void complain(std::string_view programName, std::string_view message) noexcept;

/// The operands on standard input, each ended by NUL. Throws UsageError when it cannot be read,
/// because a part of a selection must not be taken for all of it.
[[nodiscard]] std::vector<std::string> operandsOnStandardInput();

}  // namespace velmora

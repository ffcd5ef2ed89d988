// The program from its command line to its exit status: assembles the platform and serves one
// request.
#pragma once

namespace velmora {

class Environment;
struct CommandLine;

inline constexpr const char* programName = "velmora-finder-action";

/// The exit status of the program.
enum class ExitStatus {
  completed = 0,
  selectionCancelled = 1,
  handoffCancelled = 2,
};

/// Returns `completed` if the action applies to an item of the selection, or else
/// `selectionCancelled`, also if the operands cannot be read. Writes and prints nothing.
[[nodiscard]] ExitStatus checkSelection(const CommandLine& commandLine,
                                        const Environment& environment);

/// Performs the action. If the request is cancelled, prints the reason on standard error, and waits
/// for a reader no longer than `messageLimit` (LimitedWriting.h). If standard error is not a
/// terminal and `commandLine` allows it, shows a desktop notification first. Throws UsageError if
/// the operands cannot be read.
[[nodiscard]] ExitStatus performAction(const CommandLine& commandLine,
                                       const Environment& environment);

}  // namespace velmora

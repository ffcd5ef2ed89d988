// The program from its command line to its exit status: puts the platform together and serves one
// request.
#pragma once

namespace velmora {

class Environment;
struct CommandLine;

inline constexpr const char* programName = "velmora-finder-action";

/// What the program's exit tells whoever started it.
enum class ExitStatus {
  completed = 0,
  selectionCancelled = 1,
  handoffCancelled = 2,
};

/// Tells whether the action applies to anything in the selection, without a trace: `completed` or
/// `selectionCancelled`.
[[nodiscard]] ExitStatus checkSelection(const CommandLine& commandLine,
                                        const Environment& environment);

/// Performs the action. A cancelled request tells the user why, on standard error and, where that
/// is no terminal, through the desktop.
[[nodiscard]] ExitStatus performAction(const CommandLine& commandLine,
                                       const Environment& environment);

}  // namespace velmora

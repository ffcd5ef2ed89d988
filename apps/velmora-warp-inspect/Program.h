// The program from its command line to its exit status: assembles the platform and answers.
#pragma once

namespace velmora {

class Environment;

namespace inspect {

struct CommandLine;

inline constexpr const char* programName = "velmora-warp-inspect";

/// The exit status of the program.
enum class ExitStatus {
  /// All files are valid, the mirror was listed, all items are accepted, or there is no obstacle.
  yes = 0,
  no = 1,
  /// The answer is missing or incomplete: EX_IOERR of sysexits.h.
  incomplete = 74,
};

/// Prints the answer on standard output. Throws OutputError if it cannot be written.
[[nodiscard]] ExitStatus answer(const CommandLine& commandLine, const Environment& environment);

}  // namespace inspect

}  // namespace velmora

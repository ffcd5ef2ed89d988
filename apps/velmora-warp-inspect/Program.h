// The program from its command line to its exit status: puts the platform together and answers.
#pragma once

namespace velmora {

class Environment;

namespace inspect {

struct CommandLine;

inline constexpr const char* programName = "velmora-warp-inspect";

/// The exit status of the program.
enum class ExitStatus {
  /// All files are valid, all items accepted, nothing is in the way.
  yes = 0,
  no = 1,
  /// The answer could not be given, or not all of it: EX_IOERR of sysexits.h.
  incomplete = 74,
};

/// Answers on standard output. Throws OutputError when nobody takes the answer.
[[nodiscard]] ExitStatus answer(const CommandLine& commandLine, const Environment& environment);

}  // namespace inspect

}  // namespace velmora

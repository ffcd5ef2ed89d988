// The command line of velmora-warp-inspect: a command, its options, and the files or items.
#pragma once

#include "CheckCommand.h"

#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace velmora::inspect {

enum class Command { check, list, explain, doctor };

/// A well-formed command line.
struct CommandLine {
  Command command = Command::check;
  /// Print JSON instead of text.
  bool isJSON = false;
  /// check: the kind of all files. Without it, their names decide.
  std::optional<FileKind> kind = {};
  /// explain: for the action Restore; otherwise for Warp.
  bool isRestore = false;
  /// The operands are on standard input.
  bool readsStandardInput = false;
  /// Unchanged and in order.
  std::vector<std::string> operands = {};

  bool operator==(const CommandLine&) const = default;
};

/// A text that the user requested instead of an answer: the help or the version.
struct RequestedText {
  std::string text;
};

/// Parses the arguments after the program's name: a command, then its options and operands. Throws
/// UsageError.
[[nodiscard]] std::variant<CommandLine, RequestedText> parseCommandLine(
    const std::vector<std::string>& arguments);

}  // namespace velmora::inspect

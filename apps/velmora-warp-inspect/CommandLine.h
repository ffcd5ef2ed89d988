// The command line: a question of the user, and the files or items that it is about.
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
  /// Answer programs rather than people.
  bool isJSON = false;
  /// check: the kind of all files, whatever their names say.
  std::optional<FileKind> kind = {};
  /// explain: by Restore; by Warp otherwise.
  bool isRestore = false;
  /// The operands are on standard input.
  bool readsStandardInput = false;
  /// As they stand, in order.
  std::vector<std::string> operands = {};

  bool operator==(const CommandLine&) const = default;
};

/// A text that the user asked for instead of an answer.
struct RequestedText {
  std::string text;
};

/// Reads the arguments that follow the program's name: a command, then its options and operands.
/// Throws UsageError.
[[nodiscard]] std::variant<CommandLine, RequestedText> parseCommandLine(
    const std::vector<std::string>& arguments);

}  // namespace velmora::inspect

// What the user of the program may ask, and what is wrong with what was asked.
#pragma once

#include "FileKind.h"
#include "common/UsageError.h"

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
  /// check: what the files are taken for, whatever their names say.
  std::optional<FileKind> kind = {};
  /// explain: by Restore; by Warp otherwise.
  bool isRestore = false;
  /// The operands are on standard input.
  bool readsStandardInput = false;
  /// As they stand, in order.
  std::vector<std::string> operands = {};

  bool operator==(const CommandLine&) const = default;
};

/// Reads the arguments that follow the program's name: a command, then its options and operands.
/// What follows "--" is an operand, whatever it looks like; operands are never interpreted here.
[[nodiscard]] std::variant<CommandLine, RequestedText, UsageError> parseCommandLine(
    const std::vector<std::string>& arguments);

}  // namespace velmora::inspect

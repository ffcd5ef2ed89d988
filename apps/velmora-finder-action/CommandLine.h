// The command line of velmora-finder-action.
#pragma once

#include "text/Text.h"

#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace velmora {

/// A well-formed command line.
struct CommandLine {
  /// The identifier that decides the action, if one is given.
  std::optional<Text> bundleIdentifier = {};
  /// Only report whether the action applies.
  bool isCheck = false;
  /// Show a desktop notification of a failure if standard error is not a terminal.
  bool notifiesDesktop = true;
  /// The items are on standard input.
  bool readsStandardInput = false;
  /// The operands, unchanged and in order: paths and URLs.
  std::vector<std::string> operands = {};

  bool operator==(const CommandLine&) const = default;
};

/// A text that the user requested instead of an action: the help or the version.
struct RequestedText {
  std::string text;
};

/// Parses the arguments after the program's name. Throws UsageError.
[[nodiscard]] std::variant<CommandLine, RequestedText> parseCommandLine(
    const std::vector<std::string>& arguments);

}  // namespace velmora

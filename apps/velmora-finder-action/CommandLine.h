// What the user of the program may say.
#pragma once

#include "text/Text.h"

#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace velmora {

/// A well-formed command line.
struct CommandLine {
  /// The identity that decides the action, or none.
  std::optional<Text> bundleIdentifier = {};
  /// Only tell whether the action applies.
  bool isCheck = false;
  /// Tell the user of a failure through the desktop, where no terminal does.
  bool notifiesDesktop = true;
  /// The items are on standard input.
  bool readsStandardInput = false;
  /// The operands as they stand: paths and file URLs, in order.
  std::vector<std::string> operands = {};

  bool operator==(const CommandLine&) const = default;
};

/// A text that the user asked for instead of an action.
struct RequestedText {
  std::string text;
};

/// Reads the arguments that follow the program's name. Throws UsageError.
[[nodiscard]] std::variant<CommandLine, RequestedText> parseCommandLine(
    const std::vector<std::string>& arguments);

}  // namespace velmora

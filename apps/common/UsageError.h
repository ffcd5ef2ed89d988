// What a command line may be instead of something to do.
#pragma once

#include <string>

namespace velmora {

/// A text that the user asked for instead of an action.
struct RequestedText {
  std::string text;
};

/// A command line that says nothing the program understands; one line, without a newline.
struct UsageError {
  std::string message;
};

/// Whether an argument before "--" is taken for an option: "-" alone is none.
[[nodiscard]] bool isOption(const std::string& argument);

/// `message` as one line: what the user gave may hold anything.
[[nodiscard]] UsageError usageErrorInOneLine(std::string message);

}  // namespace velmora

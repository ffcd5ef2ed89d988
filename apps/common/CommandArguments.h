// Tells the options of a command line from its operands, for both programs alike, by getopt_long of
// glibc.
#pragma once

#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace velmora {

/// A command line that says nothing the program understands. The message is one line: control
/// characters, which the user may have given, are question marks in it.
class UsageError : public std::runtime_error {
 public:
  explicit UsageError(std::string message);
};

enum class OptionForm {
  flag,
  /// The option has a value: after "=", or the next argument.
  value,
  /// Nothing after the option matters: --help.
  last,
};

/// An option that the program knows, without its "--".
struct KnownOption {
  const char* name = "";
  OptionForm form = OptionForm::flag;
};

struct CommandArguments {
  struct Option {
    std::string name;
    std::string value;
  };

  std::vector<Option> options;
  std::vector<std::string> operands;

  [[nodiscard]] bool has(std::string_view name) const { return valueOf(name).has_value(); }
  /// Empty for a flag; none when the option was not given.
  [[nodiscard]] std::optional<std::string> valueOf(std::string_view name) const;
};

/// Options may stand anywhere before "--". An operand is any other argument, "-" included, and
/// whatever follows "--"; it is taken as it stands. Options have no short form and no abbreviation,
/// and one with a value is given once. Throws UsageError. Main thread only: getopt_long keeps its
/// state in globals.
[[nodiscard]] CommandArguments parseArguments(const std::vector<std::string>& arguments,
                                              std::span<const KnownOption> known);

/// The options of every program that takes its operands from standard input, too.
inline constexpr KnownOption operandsFileOption = {.name = "files0-from",
                                                   .form = OptionForm::value};

/// Whether the operands are on standard input. Throws UsageError for another file, for operands
/// beside it, and, with `messageWithoutOperands`, when there are no operands at all.
[[nodiscard]] bool readsOperandsFromStandardInput(const CommandArguments& arguments,
                                                  const std::string& messageWithoutOperands);

}  // namespace velmora

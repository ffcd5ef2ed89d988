// Separates the options of a command line from its operands, with getopt_long of glibc. Both
// programs use it.
#pragma once

#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace velmora {

/// The command line is wrong. The message is escaped (displayText), because it may quote the user's
/// arguments.
class UsageError : public std::runtime_error {
 public:
  explicit UsageError(std::string_view message);
};

enum class OptionForm {
  flag,
  /// The option has a value, after "=" or in the next argument.
  value,
  /// The rest of the command line does not matter, as with --help.
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
  /// Empty for a flag; none if the option was not given.
  [[nodiscard]] std::optional<std::string> valueOf(std::string_view name) const;
};

/// Options may come anywhere before "--". Every other argument is an operand, including "-" and all
/// arguments after "--". Operands are not changed. "-h" is "--help"; other options have no short
/// form, and none has an abbreviation. An option with a value may be given only once. Throws
/// UsageError. Main thread only, because getopt_long keeps its state in global variables.
[[nodiscard]] CommandArguments parseArguments(const std::vector<std::string>& arguments,
                                              std::span<const KnownOption> known);

/// The words after an unknown name in a UsageError: the nearest name with `prefix` before it, if
/// there is one.
[[nodiscard]] std::string hintAt(std::string_view word, std::string_view prefix,
                                 std::span<const std::string_view> names);

/// The option of each program that can also read its operands from standard input.
inline constexpr KnownOption operandsFileOption = {.name = "files0-from",
                                                   .form = OptionForm::value};

/// Whether the operands are on standard input. Throws UsageError for another file, and for a
/// command line that also has operands. If there is neither the option nor an operand, throws
/// UsageError with `messageWithoutOperands`.
[[nodiscard]] bool readsOperandsFromStandardInput(const CommandArguments& arguments,
                                                  const std::string& messageWithoutOperands);

}  // namespace velmora

#include "common/CommandArguments.h"

#include "common/DisplayText.h"
#include "common/NearestName.h"

#include <getopt.h>

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <utility>

namespace velmora {

namespace {

/// getopt_long returns these for an operand and for a missing value.
constexpr int operandCode = 1;
constexpr int missingValueCode = ':';
/// It returns the letter of a short option.
constexpr int shortHelpCode = 'h';
/// The code of an option is this number plus the option's index in the list.
constexpr int firstOptionCode = 0x100;

/// "-" alone is an operand.
bool looksLikeOption(std::string_view argument) {
  return argument.size() > 1 && argument.front() == '-';
}

std::vector<::option> longOptions(std::span<const KnownOption> known) {
  std::vector<::option> result;
  int code = firstOptionCode;
  for (const KnownOption& option : known) {
    const int form = option.form == OptionForm::value ? required_argument : no_argument;
    result.push_back({.name = option.name, .has_arg = form, .flag = nullptr, .val = code++});
  }
  result.push_back({});
  return result;
}

class ArgumentParser {
 public:
  ArgumentParser(std::vector<std::string> arguments, std::span<const KnownOption> known)
      : known_(known), longOptions_(longOptions(known)), storage_(std::move(arguments)) {
    // getopt_long skips the program's name.
    storage_.insert(storage_.begin(), "");
    for (std::string& argument : storage_) {
      pointers_.push_back(argument.data());
    }
    pointers_.push_back(nullptr);
    // With 0, glibc resets its state.
    optind = 0;
  }

  CommandArguments parse() {
    for (;;) {
      position_ = std::max(optind, 1);
      // "-" returns the operands in their order, even if POSIXLY_CORRECT is set. ":" distinguishes
      // a missing value from an unknown option, and prevents getopt_long from printing.
      const int code = ::getopt_long(static_cast<int>(storage_.size()), pointers_.data(), "-:h",
                                     longOptions_.data(), nullptr);
      if (code == -1) {
        parsed_.operands.insert(parsed_.operands.end(), storage_.begin() + optind, storage_.end());
        return std::move(parsed_);
      }
      if (code == operandCode) {
        parsed_.operands.emplace_back(optarg);
      } else if (!takeOption(code)) {
        return std::move(parsed_);
      }
    }
  }

 private:
  /// The current argument.
  [[nodiscard]] const std::string& argument() const {
    return storage_[static_cast<std::size_t>(position_)];
  }

  /// The name if the current argument is a long option or "-h"; otherwise empty.
  [[nodiscard]] std::string name() const {
    if (argument() == "-h") {
      return "help";
    }
    return argument().starts_with("--") ? argument().substr(2, argument().find('=') - 2) : "";
  }

  [[nodiscard]] UsageError unknownOption() const {
    std::vector<std::string_view> names;
    std::ranges::transform(known_, std::back_inserter(names), &KnownOption::name);
    const std::size_t dashes = argument().find_first_not_of('-');
    const std::string word = argument().substr(std::min(dashes, argument().size()));
    return UsageError("unknown option: " + argument() +
                      hintAt(word.substr(0, word.find('=')), "--", names));
  }

  /// Returns false if the rest of the command line does not matter.
  bool takeOption(int code) {
    const auto option = std::ranges::find(known_, name(), &KnownOption::name);
    // getopt_long also accepts abbreviations.
    if (option == known_.end()) {
      throw unknownOption();
    }
    if (code == missingValueCode) {
      throw UsageError("--" + name() + " without a value");
    }
    if (code < firstOptionCode && code != shortHelpCode) {
      throw UsageError("--" + name() + " takes no value");
    }
    if (option->form == OptionForm::value) {
      checkValue();
      parsed_.options.push_back({.name = name(), .value = optarg});
      return true;
    }
    parsed_.options.push_back({.name = name(), .value = ""});
    return option->form != OptionForm::last;
  }

  /// Refuses an option in the place of the value, which an empty variable in a script can cause,
  /// and a second value.
  void checkValue() const {
    const bool isJoined = argument().find('=') != std::string::npos;
    if (!isJoined && looksLikeOption(optarg)) {
      throw UsageError("--" + name() + " without a value");
    }
    if (parsed_.has(name())) {
      throw UsageError("--" + name() + " is given twice");
    }
  }

  std::span<const KnownOption> known_;
  std::vector<::option> longOptions_;
  std::vector<std::string> storage_;
  std::vector<char*> pointers_;
  int position_ = 0;
  CommandArguments parsed_;
};

}  // namespace

UsageError::UsageError(std::string_view message) : std::runtime_error(displayText(message)) {}

std::optional<std::string> CommandArguments::valueOf(std::string_view name) const {
  const auto option = std::ranges::find(options, name, &Option::name);
  return option != options.end() ? std::optional(option->value) : std::nullopt;
}

CommandArguments parseArguments(const std::vector<std::string>& arguments,
                                std::span<const KnownOption> known) {
  return ArgumentParser(arguments, known).parse();
}

std::string hintAt(std::string_view word, std::string_view prefix,
                   std::span<const std::string_view> names) {
  const std::optional<std::string_view> nearest = nearestName(word, names);
  return nearest.has_value()
             ? std::string("; did you mean ").append(prefix).append(*nearest).append("?")
             : "";
}

bool readsOperandsFromStandardInput(const CommandArguments& arguments,
                                    const std::string& messageWithoutOperands) {
  const std::optional<std::string> file = arguments.valueOf(operandsFileOption.name);
  if (file.has_value() && *file != "-") {
    throw UsageError("--files0-from reads standard input only: --files0-from=-");
  }
  if (file.has_value() && !arguments.operands.empty()) {
    throw UsageError("--files0-from=- and operands exclude each other");
  }
  if (!file.has_value() && arguments.operands.empty()) {
    throw UsageError(messageWithoutOperands);
  }
  return file.has_value();
}

}  // namespace velmora

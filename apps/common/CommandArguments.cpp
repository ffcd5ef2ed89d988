#include "common/CommandArguments.h"

#include <getopt.h>

#include <algorithm>
#include <cstddef>
#include <utility>

namespace velmora {

namespace {

/// getopt_long returns these for an operand and for a missing value.
constexpr int operandCode = 1;
constexpr int missingValueCode = ':';
/// The code of an option is this number plus the option's index in the list.
constexpr int firstOptionCode = 0x100;

std::string inOneLine(std::string message) {
  std::ranges::replace_if(
      message,
      [](char character) {
        return static_cast<unsigned char>(character) < ' ' || character == '\x7F';
      },
      '?');
  return message;
}

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
      const int code = ::getopt_long(static_cast<int>(storage_.size()), pointers_.data(),
                                     "-:", longOptions_.data(), nullptr);
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

  /// The name if the current argument is a long option; otherwise empty.
  [[nodiscard]] std::string name() const {
    return argument().starts_with("--") ? argument().substr(2, argument().find('=') - 2) : "";
  }

  /// Returns false if the rest of the command line does not matter.
  bool takeOption(int code) {
    const auto option = std::ranges::find(known_, name(), &KnownOption::name);
    // getopt_long also accepts abbreviations.
    if (option == known_.end()) {
      throw UsageError("unknown option: " + argument());
    }
    if (code == missingValueCode) {
      throw UsageError("--" + name() + " without a value");
    }
    if (code < firstOptionCode) {
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

UsageError::UsageError(std::string message) : std::runtime_error(inOneLine(std::move(message))) {}

std::optional<std::string> CommandArguments::valueOf(std::string_view name) const {
  const auto option = std::ranges::find(options, name, &Option::name);
  return option != options.end() ? std::optional(option->value) : std::nullopt;
}

CommandArguments parseArguments(const std::vector<std::string>& arguments,
                                std::span<const KnownOption> known) {
  return ArgumentParser(arguments, known).parse();
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

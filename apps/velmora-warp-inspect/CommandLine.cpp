#include "CommandLine.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>
#include <memory>
#include <span>
#include <string_view>
#include <utility>

namespace velmora::inspect {

namespace {

constexpr const char* programName = "velmora-warp-inspect";

struct CommandHelp {
  Command command;
  const char* name;
  const char* description;
  const char* usage;
  const char* footer;
};

constexpr std::array commandHelps = {
    CommandHelp{.command = Command::check,
                .name = "check",
                .description =
                    "Tells whether files are valid manifests, indexes of destroyed manifests, or\n"
                    "markers, and what is wrong with those that are not.",
                .usage = "Usage: velmora-warp-inspect check [OPTIONS] [--] FILE...\n"
                         "       velmora-warp-inspect check [OPTIONS] --files0-from=-\n",
                .footer = "Exit status:\n"
                          "  0   all files are valid\n"
                          "  1   some are not\n"
                          "  64  the command line is wrong\n"
                          "  74  the answer is not complete"},
    CommandHelp{.command = Command::list,
                .name = "list",
                .description =
                    "Lists the manifests of the mirror, newest first, and tells why the folder of\n"
                    "each counts as warped or does not; then the files that are no manifests.",
                .usage = "Usage: velmora-warp-inspect list [OPTIONS]\n",
                .footer = "Exit status:\n"
                          "  0   the mirror was listed, or does not exist\n"
                          "  1   it cannot be listed\n"
                          "  64  the command line is wrong\n"
                          "  74  the answer is not complete"},
    CommandHelp{
        .command = Command::explain,
        .name = "explain",
        .description = "Tells for each item whether the action accepts it, and why.",
        .usage =
            "Usage: velmora-warp-inspect explain (--warp|--restore) [OPTIONS] [--] PATH...\n"
            "       velmora-warp-inspect explain (--warp|--restore) [OPTIONS] --files0-from=-\n",
        .footer =
            "PATH is absolute or relative, or a file: URL. A relative path that looks like a URL\n"
            "is written with ./ before it.\n"
            "\n"
            "Exit status:\n"
            "  0   all items are accepted\n"
            "  1   some are refused\n"
            "  64  the command line is wrong\n"
            "  74  the answer is not complete"},
    CommandHelp{.command = Command::doctor,
                .name = "doctor",
                .description =
                    "Tells where the actions look and what they find there. Changes nothing, and\n"
                    "starts nothing.",
                .usage = "Usage: velmora-warp-inspect doctor [OPTIONS]\n",
                .footer = "Exit status:\n"
                          "  0   nothing stands in the way of an action\n"
                          "  1   something does\n"
                          "  64  the command line is wrong\n"
                          "  74  the answer is not complete"},
};

constexpr CommandHelp programHelp = {
    .command = Command::check,
    .name = programName,
    .description =
        "Tells what the Warp and Restore actions of Velmora see, and why they do what they\n"
        "do. Changes nothing.",
    .usage = "Usage: velmora-warp-inspect COMMAND [OPTIONS] [--] [OPERAND...]\n",
    .footer =
        "Commands:\n"
        "  check    are these files valid manifests, indexes, or markers?\n"
        "  list     which folders are warped, and why?\n"
        "  explain  does an action accept these items, and why?\n"
        "  doctor   can the actions work here?\n"
        "\n"
        "velmora-warp-inspect COMMAND --help tells more."};

class HelpFormatter final : public CLI::Formatter {
 public:
  explicit HelpFormatter(const char* usage) : usage_(usage) {}

  std::string make_usage(const CLI::App*, std::string) const override { return usage_; }

 private:
  const char* usage_;
};

/// The options as they stand.
struct RawOptions {
  bool isJSON = false;
  bool isWarp = false;
  bool isRestore = false;
  std::string kind;
  std::string itemsFile;
};

void describe(CLI::App& app, const CommandHelp& help) {
  app.formatter(std::make_shared<HelpFormatter>(help.usage));
  app.footer(help.footer);
  app.set_help_flag("--help", "Show this text and exit");
  app.allow_extras();
}

bool takesOperands(Command command) {
  return command == Command::check || command == Command::explain;
}

void declareOptions(CLI::App& app, Command command, RawOptions& options) {
  app.add_flag("--json", options.isJSON, "Answer by one JSON object a line")
      ->disable_flag_override();
  if (command == Command::check) {
    app.add_option("--kind", options.kind,
                   "What the files are taken for: manifest, index or\n"
                   "marker; without it, what their names say")
        ->type_name("KIND");
  }
  if (command == Command::explain) {
    app.add_flag("--warp", options.isWarp, "Explain by the Warp action")->disable_flag_override();
    app.add_flag("--restore", options.isRestore, "Explain by the Restore action")
        ->disable_flag_override();
  }
  if (takesOperands(command)) {
    app.add_option("--files0-from", options.itemsFile,
                   "Read the operands from standard input, separated by NUL")
        ->type_name("-");
  }
}

/// The arguments after the command, told apart by hand: the parser would look into operands, and
/// take the next argument for an empty value.
struct Arguments {
  /// Options, each with its value behind "=" where it has one.
  std::vector<std::string> options;
  std::vector<std::string> operands;
};

bool takesValue(std::string_view option) { return option == "--kind" || option == "--files0-from"; }

std::variant<Arguments, UsageError> tellApart(std::span<const std::string> arguments) {
  Arguments result;
  for (std::size_t index = 0; index < arguments.size(); ++index) {
    const std::string& argument = arguments[index];
    if (argument == "--") {
      std::ranges::copy(arguments.subspan(index + 1), std::back_inserter(result.operands));
      return result;
    }
    if (!isOption(argument)) {
      result.operands.push_back(argument);
      continue;
    }
    const std::string name = argument.substr(0, argument.find('='));
    if (!takesValue(name)) {
      result.options.push_back(argument);
      continue;
    }
    const bool isJoined = name.size() < argument.size();
    const bool hasNext = index + 1 < arguments.size() && !isOption(arguments[index + 1]);
    std::string value;
    if (isJoined) {
      value = argument.substr(name.size() + 1);
    } else if (hasNext) {
      value = arguments[++index];
    }
    if (value.empty()) {
      return UsageError{name + " without a value"};
    }
    result.options.push_back(std::string(name).append("=").append(value));
  }
  return result;
}

std::optional<UsageError> faultOf(const CommandLine& line, const CLI::App& app,
                                  const RawOptions& options, const CommandHelp& help) {
  if (const std::vector<std::string> unknown = app.remaining(); !unknown.empty()) {
    return UsageError{"unknown option: " + unknown.front()};
  }
  if (!takesOperands(line.command)) {
    return line.operands.empty()
               ? std::nullopt
               : std::optional(UsageError{std::string(help.name) +
                                          " takes no operand: " + line.operands.front()});
  }
  if (line.command == Command::check && !options.kind.empty() && !line.kind.has_value()) {
    return UsageError{"--kind is manifest, index or marker, not " + options.kind};
  }
  if (line.command == Command::explain && options.isWarp == options.isRestore) {
    return UsageError{"explain takes one of --warp and --restore"};
  }
  if (line.readsStandardInput && options.itemsFile != "-") {
    return UsageError{"--files0-from reads standard input only: --files0-from=-"};
  }
  if (line.readsStandardInput && !line.operands.empty()) {
    return UsageError{"--files0-from=- and operands exclude each other"};
  }
  if (!line.readsStandardInput && line.operands.empty()) {
    return UsageError{std::string(line.command == Command::check ? "no file" : "no item") +
                      " given; see velmora-warp-inspect " + help.name + " --help"};
  }
  return std::nullopt;
}

using Parsed = std::variant<CommandLine, RequestedText, UsageError>;

Parsed parseCommand(const CommandHelp& help, std::span<const std::string> rest) {
  std::variant<Arguments, UsageError> told = tellApart(rest);
  if (const auto* const fault = std::get_if<UsageError>(&told)) {
    return *fault;
  }
  auto& arguments = std::get<Arguments>(told);
  CLI::App app(help.description);
  RawOptions options;
  describe(app, help);
  declareOptions(app, help.command, options);
  try {
    // The parser takes the last argument first.
    std::ranges::reverse(arguments.options);
    app.parse(std::move(arguments.options));
  } catch (const CLI::CallForHelp&) {
    return RequestedText{app.help()};
  } catch (const CLI::ParseError& error) {
    return UsageError{error.what()};
  }
  CommandLine line = {
      .command = help.command,
      .isJSON = options.isJSON,
      .kind = fileKindNamed(options.kind),
      .isRestore = options.isRestore,
      .readsStandardInput = !options.itemsFile.empty(),
      .operands = std::move(arguments.operands),
  };
  if (std::optional<UsageError> fault = faultOf(line, app, options, help)) {
    return *std::move(fault);
  }
  return line;
}

/// What the program says without a command.
Parsed parseProgramOptions(std::vector<std::string> options) {
  CLI::App app(programHelp.description);
  describe(app, programHelp);
  app.set_version_flag("--version", "velmora-warp-inspect " VELMORA_VERSION,
                       "Show the version and exit");
  const std::string first = options.front();
  try {
    std::ranges::reverse(options);
    app.parse(std::move(options));
  } catch (const CLI::CallForHelp&) {
    return RequestedText{app.help()};
  } catch (const CLI::CallForVersion&) {
    return RequestedText{app.version() + "\n"};
  } catch (const CLI::ParseError& error) {
    return UsageError{error.what()};
  }
  return UsageError{"unknown option: " + first};
}

Parsed parse(const std::vector<std::string>& arguments) {
  if (arguments.empty() || arguments.front() == "--") {
    return UsageError{"no command given; see velmora-warp-inspect --help"};
  }
  if (isOption(arguments.front())) {
    return parseProgramOptions({arguments.front()});
  }
  const auto* const help = std::ranges::find_if(commandHelps, [&](const CommandHelp& candidate) {
    return arguments.front() == candidate.name;
  });
  if (help == commandHelps.end()) {
    return UsageError{"unknown command: " + arguments.front()};
  }
  return parseCommand(*help, std::span(arguments).subspan(1));
}

}  // namespace

Parsed parseCommandLine(const std::vector<std::string>& arguments) {
  Parsed parsed = parse(arguments);
  if (auto* const fault = std::get_if<UsageError>(&parsed)) {
    return usageErrorInOneLine(std::move(fault->message));
  }
  return parsed;
}

}  // namespace velmora::inspect

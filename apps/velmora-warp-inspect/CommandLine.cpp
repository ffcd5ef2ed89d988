#include "CommandLine.h"

#include "common/CommandArguments.h"

#include <algorithm>
#include <span>
#include <string_view>
#include <utility>

namespace velmora::inspect {

namespace {

constexpr const char* programHelp =
    R"(Usage: velmora-warp-inspect COMMAND [OPTIONS] [--] [OPERAND...]

Tells what the Warp and Restore actions of Velmora see, and why they do what they do.
Changes nothing.

Commands:
  check    are these files valid manifests, indexes, or markers?
  list     which folders are warped, and why?
  explain  does an action accept these items, and why?
  doctor   can the actions work here?

Options:
  --help     Show this text and exit
  --version  Show the version and exit

velmora-warp-inspect COMMAND --help tells more.
)";

constexpr const char* checkHelp = R"(Usage: velmora-warp-inspect check [OPTIONS] [--] FILE...
       velmora-warp-inspect check [OPTIONS] --files0-from=-

Tells whether files are valid manifests, indexes of destroyed manifests, or markers, and
what is wrong with those that are not.

Options:
  --json           Answer by one JSON object a line
  --kind KIND      What the files are taken for: manifest, index or marker; without it,
                   what their names say
  --files0-from=-  Read the operands from standard input, separated by NUL
  --help           Show this text and exit

Exit status:
  0   all files are valid
  1   some are not
  64  the command line is wrong
  74  the answer is not complete
)";

constexpr const char* listHelp = R"(Usage: velmora-warp-inspect list [OPTIONS]

Lists the manifests of the mirror, newest first, and tells why the folder of each counts as
warped or does not; then the files that are no manifests.

Options:
  --json  Answer by one JSON object a line
  --help  Show this text and exit

Exit status:
  0   the mirror was listed, or does not exist
  1   it cannot be listed
  64  the command line is wrong
  74  the answer is not complete
)";

constexpr const char* explainHelp =
    R"(Usage: velmora-warp-inspect explain (--warp|--restore) [OPTIONS] [--] PATH...
       velmora-warp-inspect explain (--warp|--restore) [OPTIONS] --files0-from=-

Tells for each item whether the action accepts it, and why: which manifest makes a folder a
warped one, and why a folder with a marker does not count as warped.

Options:
  --warp           Explain by the Warp action
  --restore        Explain by the Restore action
  --json           Answer by one JSON object a line
  --files0-from=-  Read the operands from standard input, separated by NUL
  --help           Show this text and exit

PATH is absolute or relative, or a file: URL. A relative path that looks like a URL is
written with ./ before it.

Exit status:
  0   all items are accepted
  1   some are refused
  64  the command line is wrong
  74  the answer is not complete
)";

constexpr const char* doctorHelp = R"(Usage: velmora-warp-inspect doctor [OPTIONS]

Tells where the actions look and what they find there. Changes nothing, and starts nothing.

Options:
  --json  Answer by one JSON object a line
  --help  Show this text and exit

Exit status:
  0   nothing stands in the way of an action
  1   something does
  64  the command line is wrong
  74  the answer is not complete
)";

constexpr KnownOption jsonOption = {.name = "json"};
constexpr KnownOption helpOption = {.name = "help", .form = OptionForm::last};

constexpr KnownOption programOptions[] = {helpOption,
                                          {.name = "version", .form = OptionForm::last}};
constexpr KnownOption plainOptions[] = {jsonOption, helpOption};
constexpr KnownOption checkOptions[] = {
    jsonOption, helpOption, operandsFileOption, {.name = "kind", .form = OptionForm::value}};
constexpr KnownOption explainOptions[] = {
    jsonOption, helpOption, operandsFileOption, {.name = "warp"}, {.name = "restore"}};

struct CommandSyntax {
  Command command;
  std::string_view name;
  std::span<const KnownOption> options;
  const char* help;
};

constexpr CommandSyntax commands[] = {
    {Command::check, "check", checkOptions, checkHelp},
    {Command::list, "list", plainOptions, listHelp},
    {Command::explain, "explain", explainOptions, explainHelp},
    {Command::doctor, "doctor", plainOptions, doctorHelp},
};

std::optional<FileKind> kindIn(const CommandArguments& arguments) {
  const std::optional<std::string> name = arguments.valueOf("kind");
  if (!name.has_value()) {
    return std::nullopt;
  }
  const std::optional<FileKind> kind = fileKindNamed(*name);
  if (!kind.has_value()) {
    throw UsageError("--kind is manifest, index or marker, not " + *name);
  }
  return kind;
}

bool isRestoreIn(const CommandArguments& arguments) {
  if (arguments.has("warp") == arguments.has("restore")) {
    throw UsageError("explain takes one of --warp and --restore");
  }
  return arguments.has("restore");
}

/// Whether the operands are on standard input.
bool checkOperands(const CommandArguments& arguments, const CommandSyntax& syntax) {
  const std::string name(syntax.name);
  const std::string askForHelp = " given; see velmora-warp-inspect " + name + " --help";
  switch (syntax.command) {
    case Command::check:
      return readsOperandsFromStandardInput(arguments, "no file" + askForHelp);
    case Command::explain:
      return readsOperandsFromStandardInput(arguments, "no item" + askForHelp);
    case Command::list:
    case Command::doctor:
      break;
  }
  if (!arguments.operands.empty()) {
    throw UsageError(name + " takes no operand: " + arguments.operands.front());
  }
  return false;
}

std::variant<CommandLine, RequestedText> parseCommand(const CommandSyntax& syntax,
                                                      const std::vector<std::string>& rest) {
  CommandArguments arguments = parseArguments(rest, syntax.options);
  if (arguments.has("help")) {
    return RequestedText{syntax.help};
  }
  CommandLine line = {.command = syntax.command, .isJSON = arguments.has("json")};
  line.kind = kindIn(arguments);
  line.isRestore = syntax.command == Command::explain && isRestoreIn(arguments);
  line.readsStandardInput = checkOperands(arguments, syntax);
  line.operands = std::move(arguments.operands);
  return line;
}

}  // namespace

std::variant<CommandLine, RequestedText> parseCommandLine(
    const std::vector<std::string>& arguments) {
  if (arguments.empty() || arguments.front() == "--") {
    throw UsageError("no command given; see velmora-warp-inspect --help");
  }
  const std::string& first = arguments.front();
  if (first.size() > 1 && first.front() == '-') {
    const CommandArguments asked = parseArguments({first}, programOptions);
    return RequestedText{asked.has("help") ? programHelp
                                           : "velmora-warp-inspect " VELMORA_VERSION "\n"};
  }
  const auto* const syntax = std::ranges::find(commands, first, &CommandSyntax::name);
  if (syntax == std::ranges::end(commands)) {
    throw UsageError("unknown command: " + first);
  }
  return parseCommand(*syntax, {arguments.begin() + 1, arguments.end()});
}

}  // namespace velmora::inspect

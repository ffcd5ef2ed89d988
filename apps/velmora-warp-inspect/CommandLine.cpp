#include "CommandLine.h"

#include "common/CommandArguments.h"

#include <algorithm>
#include <iterator>
#include <span>
#include <string_view>
#include <utility>

namespace velmora::inspect {

namespace {

constexpr const char* programHelp =
    R"(Usage: velmora-warp-inspect COMMAND [OPTIONS] [--] [OPERAND...]

Shows what the Warp and Restore actions of Velmora see, and why they accept or refuse
items. Changes nothing.

Commands:
  check    are these files valid manifests, indexes, or markers?
  list     which folders are warped, and why?
  explain  does an action accept these items, and why?
  doctor   can the actions work here?

Options:
  -h, --help  Show this text and exit
  --version   Show the version and exit

velmora-warp-inspect COMMAND --help describes a command.
)";

constexpr const char* checkHelp = R"(Usage: velmora-warp-inspect check [OPTIONS] [--] FILE...
       velmora-warp-inspect check [OPTIONS] --files0-from=-

Reports whether files are valid manifests, indexes of destroyed manifests, or markers,
and the first fault of each invalid file. FILE may be a pipe, or - for standard input.

Options:
  --json           Print one JSON object per line
  --kind KIND      Treat all files as KIND: manifest, index or marker; by default, the
                   name of each file decides
  --files0-from=-  Read the operands from standard input, separated by NUL
  -h, --help       Show this text and exit

Exit status:
  0   all files are valid
  1   some files are not valid
  64  the command line is wrong, or standard input cannot be read
  74  the answer is not complete
)";

constexpr const char* listHelp = R"(Usage: velmora-warp-inspect list [OPTIONS]

Lists the manifests of the mirror, newest first, and the reason why the folder of each
counts as warped or not. Then lists the files that are not valid manifests.

Options:
  --json      Print one JSON object per line
  -h, --help  Show this text and exit

Exit status:
  0   the mirror was listed, or does not exist
  1   the mirror cannot be listed
  64  the command line is wrong
  74  the answer is not complete
)";

constexpr const char* explainHelp =
    R"(Usage: velmora-warp-inspect explain (--warp|--restore) [OPTIONS] [--] PATH...
       velmora-warp-inspect explain (--warp|--restore) [OPTIONS] --files0-from=-

Reports for each item whether the action accepts it, and why. Names the manifest that makes
a folder a warped one, and the reason why a folder with a marker does not count as warped.

Options:
  --warp           Explain the action Warp
  --restore        Explain the action Restore
  --json           Print one JSON object per line
  --files0-from=-  Read the operands from standard input, separated by NUL
  -h, --help       Show this text and exit

PATH is an absolute or relative path, or a file: URL. Write ./ before a relative path that
looks like a URL.

Exit status:
  0   all items are accepted
  1   some items are refused
  64  the command line is wrong, or standard input cannot be read
  74  the answer is not complete
)";

constexpr const char* doctorHelp = R"(Usage: velmora-warp-inspect doctor [OPTIONS]

Shows the places that the actions use, and what is there. Changes nothing and starts
nothing.

Options:
  --json      Print one JSON object per line
  -h, --help  Show this text and exit

Exit status:
  0   nothing prevents an action
  1   an obstacle prevents an action
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
    throw UsageError("--kind must be manifest, index or marker, not " + *name);
  }
  return kind;
}

bool isRestoreIn(const CommandArguments& arguments) {
  if (arguments.has("warp") == arguments.has("restore")) {
    throw UsageError("explain needs either --warp or --restore");
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
    std::vector<std::string_view> names;
    std::ranges::transform(commands, std::back_inserter(names), &CommandSyntax::name);
    throw UsageError("unknown command: " + first + hintAt(first, "", names));
  }
  return parseCommand(*syntax, {arguments.begin() + 1, arguments.end()});
}

}  // namespace velmora::inspect

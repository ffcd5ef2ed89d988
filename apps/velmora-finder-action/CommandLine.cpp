#include "CommandLine.h"

#include "common/CommandArguments.h"
#include "extension/ActionKind.h"

#include <utility>

namespace velmora {

namespace {

constexpr const char* help = R"(Usage: velmora-finder-action [OPTIONS] [--] PATH...
       velmora-finder-action [OPTIONS] --files0-from=-

Asks the Velmora application to warp the folders at PATH, or to restore warped folders:
writes a request for the application, and opens it. Leaves out items that do not suit the
action.

Options:
  --restore               Perform Restore
  --bundle-identifier ID  Choose the action by an identifier: Restore for
                          io.tolvane.Velmora.FinderRestoreAction, Warp for any other
  --check                 Only report by the exit status whether the action applies
  --no-notify             Show no desktop notification of a failure
  --files0-from=-         Read the items from standard input, separated by NUL
  -h, --help              Show this text and exit
  --version               Show the version and exit

PATH is an absolute or relative path, or a file: URL. Write ./ before a relative path that
looks like a URL.

Exit status:
  0   the request was written; with --check: an item suits the action
  1   no item suits the action
  2   the handoff failed; the system log has the reason
  64  the command line is wrong, or standard input cannot be read
)";

constexpr KnownOption knownOptions[] = {
    {.name = "restore"},
    {.name = "bundle-identifier", .form = OptionForm::value},
    {.name = "check"},
    {.name = "no-notify"},
    operandsFileOption,
    {.name = "help", .form = OptionForm::last},
    {.name = "version", .form = OptionForm::last},
};

std::optional<Text> identifierOf(const CommandArguments& arguments) {
  const std::optional<std::string> given = arguments.valueOf("bundle-identifier");
  if (!arguments.has("restore")) {
    return given.has_value() ? std::optional<Text>(*given) : std::nullopt;
  }
  if (given.has_value()) {
    throw UsageError("--restore and --bundle-identifier exclude each other");
  }
  return Text(restoreActionIdentifier);
}

}  // namespace

std::variant<CommandLine, RequestedText> parseCommandLine(
    const std::vector<std::string>& arguments) {
  CommandArguments parsed = parseArguments(arguments, knownOptions);
  if (parsed.has("help")) {
    return RequestedText{help};
  }
  if (parsed.has("version")) {
    return RequestedText{"velmora-finder-action " VELMORA_VERSION "\n"};
  }
  CommandLine line = {.bundleIdentifier = identifierOf(parsed),
                      .isCheck = parsed.has("check"),
                      .notifiesDesktop = !parsed.has("no-notify"),
                      .readsStandardInput = readsOperandsFromStandardInput(
                          parsed, "no item given; see velmora-finder-action --help")};
  line.operands = std::move(parsed.operands);
  return line;
}

}  // namespace velmora

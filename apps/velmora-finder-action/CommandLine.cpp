#include "CommandLine.h"

#include "extension/ActionKind.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <iterator>
#include <memory>
#include <span>
#include <utility>

namespace velmora {

namespace {

constexpr const char* description =
    "Warps the folders at PATH to Velmora, or restores warped ones: hands them to the Velmora\n"
    "application and opens it. Items that do not suit the action are left out.";

constexpr const char* usage =
    "Usage: velmora-finder-action [OPTIONS] [--] PATH...\n"
    "       velmora-finder-action [OPTIONS] --files0-from=-\n";

constexpr const char* footer =
    "PATH is absolute or relative, or a file: URL. A relative path that looks like a URL is\n"
    "written with ./ before it.\n"
    "\n"
    "Exit status:\n"
    "  0   handed to the application; with --check: something suits the action\n"
    "  1   nothing in the selection suits the action\n"
    "  2   the handoff failed; the system log says why\n"
    "  64  the command line is wrong";

struct RawOptions {
  std::string bundleIdentifier;
  /// Whether there is one, be it empty.
  bool hasIdentifier = false;
  bool isRestore = false;
  bool isCheck = false;
  bool isWithoutNotification = false;
  std::string itemsFile;
};

class HelpFormatter final : public CLI::Formatter {
 public:
  std::string make_usage(const CLI::App*, std::string) const override { return usage; }
};

void declareOptions(CLI::App& app, RawOptions& options) {
  app.formatter(std::make_shared<HelpFormatter>());
  app.footer(footer);
  app.set_help_flag("--help", "Show this text and exit");
  app.set_version_flag("--version", "velmora-finder-action " VELMORA_VERSION,
                       "Show the version and exit");
  app.add_option("--bundle-identifier", options.bundleIdentifier,
                 "The identity that decides the action:\n"
                 "io.tolvane.Velmora.FinderRestoreAction\n"
                 "is Restore, any other or none is Warp")
      ->type_name("ID");
  app.add_flag("--restore", options.isRestore, "Perform Restore")->disable_flag_override();
  app.add_flag("--check", options.isCheck,
               "Only tell by the exit status whether the action applies")
      ->disable_flag_override();
  app.add_flag("--no-notify", options.isWithoutNotification,
               "Show no desktop notification of a failure")
      ->disable_flag_override();
  app.add_option("--files0-from", options.itemsFile,
                 "Read the items from standard input, separated by NUL")
      ->type_name("-");
  // Operands are not an option of the parser's: it would take "[a,b]" apart.
  app.allow_extras();
}

std::optional<Text> identifierOf(const RawOptions& options) {
  if (options.isRestore) {
    return Text(restoreActionIdentifier);
  }
  return options.hasIdentifier ? std::optional<Text>(options.bundleIdentifier) : std::nullopt;
}

std::optional<UsageError> faultOf(const CommandLine& line, const CLI::App& app,
                                  const RawOptions& options,
                                  const std::vector<std::string>& extras) {
  if (const auto unknown = std::ranges::find_if(extras, isOption); unknown != extras.end()) {
    return UsageError{"unknown option: " + *unknown};
  }
  if (options.isRestore && options.hasIdentifier) {
    return UsageError{"--restore and --bundle-identifier exclude each other"};
  }
  if (app.count("--files0-from") > 0 && options.itemsFile != "-") {
    return UsageError{"--files0-from reads standard input only: --files0-from=-"};
  }
  if (line.readsStandardInput && !line.operands.empty()) {
    return UsageError{"--files0-from=- and operands exclude each other"};
  }
  if (!line.readsStandardInput && line.operands.empty()) {
    return UsageError{"no item given; see velmora-finder-action --help"};
  }
  return std::nullopt;
}

/// The parser would take the next argument for the value of an option that has an empty one.
/// Whether there was such an identifier.
bool takeEmptyIdentifier(std::vector<std::string>& arguments) {
  return std::erase(arguments, "--bundle-identifier=") > 0;
}

/// Whether an option stands where the identifier should: an empty variable in a script leaves that,
/// and the parser would take the option for the identifier.
bool lacksIdentifier(const std::vector<std::string>& arguments) {
  const auto option = std::ranges::find(arguments, "--bundle-identifier");
  return option != arguments.end() && std::next(option) != arguments.end() &&
         isOption(*std::next(option));
}

}  // namespace

std::variant<CommandLine, RequestedText, UsageError> parseCommandLine(
    const std::vector<std::string>& arguments) {
  const auto separator = std::ranges::find(arguments, "--");
  CLI::App app(description);
  RawOptions options;
  declareOptions(app, options);
  std::vector<std::string> parsed(arguments.begin(), separator);
  const bool hasEmptyIdentifier = takeEmptyIdentifier(parsed);
  if (lacksIdentifier(parsed)) {
    return UsageError{"--bundle-identifier without an identifier"};
  }
  try {
    // The parser takes the last argument first.
    std::ranges::reverse(parsed);
    app.parse(std::move(parsed));
  } catch (const CLI::CallForHelp&) {
    return RequestedText{app.help()};
  } catch (const CLI::CallForVersion&) {
    return RequestedText{app.version() + "\n"};
  } catch (const CLI::ParseError& error) {
    return usageErrorInOneLine(error.what());
  }
  options.hasIdentifier = hasEmptyIdentifier || app.count("--bundle-identifier") > 0;
  const std::vector<std::string> extras = app.remaining();
  CommandLine line = {
      .bundleIdentifier = identifierOf(options),
      .isCheck = options.isCheck,
      .notifiesDesktop = !options.isWithoutNotification,
      .readsStandardInput = app.count("--files0-from") > 0,
      .operands = extras,
  };
  if (separator != arguments.end()) {
    line.operands.insert(line.operands.end(), std::next(separator), arguments.end());
  }
  if (std::optional<UsageError> fault = faultOf(line, app, options, extras)) {
    return usageErrorInOneLine(std::move(fault->message));
  }
  return line;
}

}  // namespace velmora

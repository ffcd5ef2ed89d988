#include "Program.h"

#include "CheckCommand.h"
#include "CommandLine.h"
#include "DoctorCommand.h"
#include "ExplainCommand.h"
#include "ListCommand.h"
#include "Terminal.h"
#include "WatchedFileReader.h"
#include "common/DisplayText.h"
#include "common/LinuxPlatform.h"
#include "common/Main.h"
#include "extension/ActionKind.h"
#include "platform/ApplicationGroup.h"
#include "platform/linux/Environment.h"
#include "platform/linux/LimitedWriting.h"

#include <unistd.h>

#include <chrono>
#include <functional>
#include <optional>
#include <string_view>

namespace velmora::inspect {

namespace {

void showOnStandardError(std::string_view bytes) {
  writeWithin(messageLimit, STDERR_FILENO, bytes);
}

class Program {
 public:
  Program(const CommandLine& line, const Environment& environment)
      : line_(line),
        platform_(programName,
                  line.isRestore ? std::optional<Text>(restoreActionIdentifier) : std::nullopt,
                  environment),
        style_(styleOf(environment)),
        progress_(barOf(environment), std::chrono::steady_clock::now) {}

  ExitStatus check() {
    FileChecker checker(files_);
    bool areAllValid = true;
    progress_.begin(line_.operands.size());
    for (const std::string& file : line_.operands) {
      // A list may have been made from a directory's content, in which a pipe may have no writer.
      const CheckedFile checked = line_.readsStandardInput
                                      ? checker.check(file, line_.kind)
                                      : checker.checkFileOrStream(file, line_.kind);
      areAllValid &= checked.isValid();
      tell(checked);
      progress_.advance();
    }
    return statusOf(areAllValid);
  }

  ExitStatus list() {
    const Platform platform = platform_.references(files_);
    const ResolutionReport report = reportOn(
        resolveWarpedFolders(platform,
                             [this](std::size_t readCount, std::size_t fileCount) {
                               readCount == 0 ? progress_.begin(fileCount) : progress_.advance();
                             }),
        platform);
    progress_.hide();
    output_.write(line_.isJSON ? toJSONLines(report) : toText(report, style_));
    return statusOf(report.isComplete());
  }

  ExitStatus explain() {
    const Explanation explanation = explainItems(line_.operands, platform_.references());
    bool areAllAccepted = true;
    for (const ExplainedItem& item : explanation.items) {
      areAllAccepted &= item.isAccepted();
      tell(item);
    }
    warnOf(explanation.resolution);
    return statusOf(areAllAccepted);
  }

  ExitStatus doctor() {
    const Diagnosis diagnosis = diagnose(
        platform_.references(),
        {.isContainerSetByEnvironment =
             [this] { return platform_.locations.groupContainerOfEnvironment().has_value(); },
         .containerInDataHome =
             [this] {
               return platform_.locations.groupContainerInDataHome(applicationGroupIdentifier);
             },
         .isBusReachable = [this] { return isBusReachable(); },
         .canHoldNewFiles = canHoldNewFiles});
    tell(diagnosis);
    return statusOf(diagnosis.obstacles().empty());
  }

 private:
  static Style styleOf(const Environment& environment) {
    const bool isColoured = ::isatty(STDOUT_FILENO) != 0 && wantsColour(environment);
    return isColoured ? Style::coloured : Style::plain;
  }

  static std::function<void(std::string_view)> barOf(const Environment& environment) {
    const bool hasTerminal = ::isatty(STDERR_FILENO) != 0 && canErase(environment);
    return hasTerminal ? std::function<void(std::string_view)>(showOnStandardError) : nullptr;
  }

  static ExitStatus statusOf(bool isPositive) {
    return isPositive ? ExitStatus::yes : ExitStatus::no;
  }

  template <class Told>
  void tell(const Told& told) {
    progress_.hide();
    output_.write(line_.isJSON ? toJSON(told) + "\n" : toText(told, style_));
  }

  /// Warns if the data that the verdicts depend on is incomplete.
  static void warnOf(const ResolutionReport& resolution) {
    for (const PlaceFault& unusable : placeFaultsIn(resolution)) {
      std::string line(unusable.name);
      unusable.path.has_value() ? line.append(" ").append(displayText(*unusable.path))
                                : line.append(": ").append(noRootWords);
      complain(programName, line.append(": ").append(toText(*unusable.fault)));
    }
  }

  bool isBusReachable() {
    // The bus itself owns this name, so the query starts no service.
    return platform_.sessionBus.nameHasOwner("org.freedesktop.DBus");
  }

  const CommandLine& line_;
  LinuxPlatform platform_;
  const Output output_{STDOUT_FILENO};
  const Style style_;
  Progress progress_;
  const WatchedFileReader files_{platform_.fileReader,
                                 [this](double part) { progress_.advanceWithinFile(part); }};
};

}  // namespace

ExitStatus answer(const CommandLine& commandLine, const Environment& environment) {
  Program program(commandLine, environment);
  switch (commandLine.command) {
    case Command::check:
      return program.check();
    case Command::list:
      return program.list();
    case Command::explain:
      return program.explain();
    case Command::doctor:
      break;
  }
  return program.doctor();
}

}  // namespace velmora::inspect

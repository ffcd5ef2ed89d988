// velmora-finder-action: serves one request from a file manager's menu, then exits.

#include "common/Main.h"

#include "CommandLine.h"
#include "Program.h"

#include <unistd.h>

#include <string>
#include <variant>
#include <vector>

namespace {

using velmora::ExitStatus;

struct Answer {
  const velmora::Environment& environment;

  ExitStatus operator()(const velmora::CommandLine& commandLine) const {
    return commandLine.isCheck ? checkSelection(commandLine, environment)
                               : performAction(commandLine, environment);
  }
  ExitStatus operator()(const velmora::RequestedText& requested) const {
    velmora::Output(STDOUT_FILENO).write(requested.text);
    return ExitStatus::completed;
  }
};

}  // namespace

int main(int argc, char** argv) {
  return velmora::runMain(
      argc, argv,
      {.name = velmora::programName,
       .failureStatus = static_cast<int>(ExitStatus::handoffCancelled)},
      [](const std::vector<std::string>& arguments, const velmora::Environment& environment) {
        return static_cast<int>(
            std::visit(Answer{environment}, velmora::parseCommandLine(arguments)));
      });
}

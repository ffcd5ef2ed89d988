// velmora-warp-inspect: shows what the actions see, and why they accept or refuse items.

#include "common/Main.h"

#include "CommandLine.h"
#include "Program.h"

#include <unistd.h>

#include <string>
#include <variant>
#include <vector>

namespace {

using velmora::inspect::CommandLine;
using velmora::inspect::ExitStatus;

struct Answer {
  const velmora::Environment& environment;

  ExitStatus operator()(CommandLine commandLine) const {
    if (commandLine.readsStandardInput) {
      commandLine.operands = velmora::operandsOnStandardInput();
    }
    return velmora::inspect::answer(commandLine, environment);
  }
  ExitStatus operator()(const velmora::inspect::RequestedText& requested) const {
    velmora::Output(STDOUT_FILENO).write(requested.text);
    return ExitStatus::yes;
  }
};

}  // namespace

int main(int argc, char** argv) {
  return velmora::runMain(
      argc, argv,
      {.name = velmora::inspect::programName,
       .failureStatus = static_cast<int>(ExitStatus::incomplete)},
      [](const std::vector<std::string>& arguments, const velmora::Environment& environment) {
        return static_cast<int>(
            std::visit(Answer{environment}, velmora::inspect::parseCommandLine(arguments)));
      });
}

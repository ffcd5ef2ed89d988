// The main function of tests with GNUstep.

#include "tests/gnustep/ProcessEnvironment.h"
#include "tests/gnustep/SharedObjects.h"
#include "tests/gnustep/Strings.h"

#include <gtest/gtest.h>

#import <Foundation/Foundation.h>
#include <unistd.h>

#include <string>
#include <string_view>
#include <vector>

// The project cannot fix leaks and lock orders of GNUstep and its runtime. The sanitizers call
// these functions by their names.
// NOLINTBEGIN(bugprone-reserved-identifier,readability-identifier-naming)
extern "C" const char* __lsan_default_suppressions();
extern "C" const char* __tsan_default_suppressions();

const char* __lsan_default_suppressions() {
  return "leak:libgnustep-base.so\n"
         "leak:libgnustep-gui.so\n"
         "leak:libobjc.so\n";
}

const char* __tsan_default_suppressions() {
  return "deadlock:libgnustep-base.so\n"
         "deadlock:libobjc.so\n";
}
// NOLINTEND(bugprone-reserved-identifier,readability-identifier-naming)

namespace {

NSLog_printf_handler* originalHandler = nullptr;

/// A message has the form "DATE TIME PROCESS[ID:THREAD] TEXT
/// ".
void recordLogMessage(NSString* message) {
  std::string line = velmora::utf8(message);
  line.erase(0, line.find("] ", line.find("[" + std::to_string(::getpid()) + ":")) + 2);
  line.pop_back();
  velmora::recordLoggedLine(line);
  originalHandler(message);
}

/// The environment without PATH. With PATH, GNUstep would find its notification daemon and start
/// one that outlives the test.
std::vector<char*> environmentForFoundation() {
  std::vector<char*> variables;
  for (char** variable = environ; *variable != nullptr; ++variable) {
    if (!std::string_view(*variable).starts_with("PATH=")) {
      variables.push_back(*variable);
    }
  }
  variables.push_back(nullptr);
  return variables;
}

class Forgetting final : public testing::EmptyTestEventListener {
  void OnTestStart(const testing::TestInfo&) override { velmora::resetSharedObjects(); }
};

}  // namespace

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  const velmora::ProcessEnvironment environment;
  // Foundation would otherwise keep the environment from the start of the process.
  GSInitializeProcess(argc, argv, environmentForFoundation().data());
  @autoreleasepool {
    originalHandler = _NSLog_printf_handler;
    _NSLog_printf_handler = recordLogMessage;
    testing::UnitTest::GetInstance()->listeners().Append(new Forgetting);
    return RUN_ALL_TESTS();
  }
}

#include "platform/macos/MacLogger.h"
#include "tests/contracts/LoggerContract.h"
#include "tests/gnustep/SharedObjects.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace velmora {
namespace {

class MacLoggerAdapter {
 public:
  Logger& logger() { return logger_; }
  static std::vector<std::string> lines() { return loggedLines(); }

 private:
  MacLogger logger_;
};

INSTANTIATE_TYPED_TEST_SUITE_P(Mac, LoggerContract, MacLoggerAdapter);

TEST(MacLoggerTest, showsBytesThatAreNotUTF8OneByOne) {
  MacLogger().log("\xe9t\xe9 50%");
  EXPECT_EQ(loggedLines(), std::vector<std::string>{"\u00e9t\u00e9 50%"});
}

}  // namespace
}  // namespace velmora

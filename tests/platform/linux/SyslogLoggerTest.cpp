#include "platform/linux/SyslogLogger.h"
#include "tests/contracts/LoggerContract.h"

#include <gtest/gtest.h>

#include <unistd.h>

#include <string>
#include <string_view>
#include <vector>

namespace velmora {
namespace {

/// Reads the copies on standard error.
class SyslogAdapter {
 public:
  SyslogAdapter() { testing::internal::CaptureStderr(); }

  Logger& logger() { return logger_; }

  static std::vector<std::string> lines() {
    const std::string prefix = "the-program[" + std::to_string(getpid()) + "]: ";
    const std::string copies = testing::internal::GetCapturedStderr();
    std::vector<std::string> lines;
    for (std::string_view rest = copies; !rest.empty();) {
      const std::string_view line = rest.substr(0, rest.find('\n'));
      rest.remove_prefix(line.size() + 1);
      EXPECT_TRUE(line.starts_with(prefix)) << line;
      lines.emplace_back(line.substr(prefix.size()));
    }
    return lines;
  }

 private:
  SyslogLogger logger_{"the-program"};
};

INSTANTIATE_TYPED_TEST_SUITE_P(Syslog, LoggerContract, SyslogAdapter);

}  // namespace
}  // namespace velmora

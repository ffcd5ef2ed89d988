#include "platform/linux/SyslogLogger.h"
#include "platform/posix/FileDescriptor.h"
#include "tests/contracts/LoggerContract.h"
#include "tests/support/HostileFiles.h"
#include "tests/support/ScratchDirectory.h"

#include <gtest/gtest.h>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <regex>
#include <string>
#include <string_view>
#include <vector>

namespace velmora {
namespace {

std::string processPrefix() { return "the-program[" + std::to_string(::getpid()) + "]: "; }

/// The socket of a system log that receives nothing until asked to.
class SystemLog {
 public:
  SystemLog() { require(::bind(socket_.get(), &address(), sizeof(sockaddr_un)) == 0, path()); }

  std::string path() const { return directory_.path("log"); }

  /// Sends datagrams until the queue is full.
  void fill() const {
    const FileDescriptor sender = unboundSocket();
    require(::connect(sender.get(), &address(), sizeof(sockaddr_un)) == 0, path());
    while (::send(sender.get(), "x", 1, 0) == 1) {
    }
  }

  /// The datagrams in the queue.
  std::vector<std::string> received() const {
    std::vector<std::string> datagrams;
    std::string room(10'000, '\0');
    for (ssize_t length = 0; (length = ::recv(socket_.get(), room.data(), room.size(), 0)) >= 0;) {
      datagrams.push_back(room.substr(0, static_cast<std::size_t>(length)));
    }
    return datagrams;
  }

 private:
  static FileDescriptor unboundSocket() {
    return FileDescriptor::adopt(::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
  }

  static sockaddr_un addressOf(const std::string& path) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    path.copy(address.sun_path, sizeof address.sun_path - 1);
    return address;
  }

  const sockaddr& address() const { return reinterpret_cast<const sockaddr&>(address_); }

  ScratchDirectory directory_;
  sockaddr_un address_ = addressOf(path());
  FileDescriptor socket_ = unboundSocket();
};

/// Reads the system log.
class SystemLogAdapter {
 public:
  SystemLogAdapter() { testing::internal::CaptureStderr(); }

  Logger& logger() { return logger_; }

  std::vector<std::string> lines() const {
    testing::internal::GetCapturedStderr();
    // Priority and time, as the C library writes them.
    const std::regex head(R"(<11>[JFMASOND][a-z]{2} [ 123]\d \d\d:\d\d:\d\d )");
    std::vector<std::string> lines;
    for (const std::string& datagram : log_.received()) {
      std::smatch match;
      EXPECT_TRUE(std::regex_search(datagram, match, head, std::regex_constants::match_continuous))
          << datagram;
      const std::string text = datagram.substr(static_cast<std::size_t>(match.length()));
      EXPECT_TRUE(text.starts_with(processPrefix())) << datagram;
      lines.push_back(text.substr(processPrefix().size()));
    }
    return lines;
  }

 private:
  SystemLog log_;
  SyslogLogger logger_{"the-program", log_.path()};
};

/// Reads the copies on standard error. There is no system log.
class CopyAdapter {
 public:
  CopyAdapter() { testing::internal::CaptureStderr(); }

  Logger& logger() { return logger_; }

  static std::vector<std::string> lines() {
    const std::string copies = testing::internal::GetCapturedStderr();
    std::vector<std::string> lines;
    for (std::string_view rest = copies; !rest.empty();) {
      const std::string_view line = rest.substr(0, rest.find('\n'));
      rest.remove_prefix(line.size() + 1);
      EXPECT_TRUE(line.starts_with(processPrefix())) << line;
      lines.emplace_back(line.substr(processPrefix().size()));
    }
    return lines;
  }

 private:
  SyslogLogger logger_{"the-program", "/nowhere/log"};
};

INSTANTIATE_TYPED_TEST_SUITE_P(Syslog, LoggerContract, SystemLogAdapter);
INSTANTIATE_TYPED_TEST_SUITE_P(SyslogCopies, LoggerContract, CopyAdapter);

TEST(SyslogLoggers, dropLinesThatAStuckLogDoesNotReceive) {
  const SystemLog log;
  log.fill();
  testing::internal::CaptureStderr();
  SyslogLogger("the-program", log.path()).log("line");
  EXPECT_EQ(testing::internal::GetCapturedStderr(), processPrefix() + "line\n");
  for (const std::string& datagram : log.received()) {
    EXPECT_EQ(datagram, "x");
  }
}

TEST(SyslogLoggers, acceptAPathThatNoSocketCanHave) {
  testing::internal::CaptureStderr();
  SyslogLogger("the-program", "/" + std::string(200, 'x')).log("line");
  EXPECT_EQ(testing::internal::GetCapturedStderr(), processPrefix() + "line\n");
}

}  // namespace
}  // namespace velmora

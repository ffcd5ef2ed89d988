#include "platform/linux/LimitedWriting.h"
#include "platform/posix/FileDescriptor.h"
#include "tests/support/OrdinaryUser.h"
#include "tests/support/ScratchDirectory.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <pty.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <fstream>
#include <iterator>
#include <string>
#include <thread>

namespace velmora {
namespace {

using namespace std::chrono_literals;

/// The reader's and the writer's end of a pipe, a terminal, or a pair of sockets.
struct Channel {
  FileDescriptor reader = FileDescriptor::adopt(-1);
  FileDescriptor writer = FileDescriptor::adopt(-1);
};

const struct {
  const char* name;
  Channel (*open)();
} kinds[] = {
    {"pipe",
     [] {
       std::array<int, 2> ends{};
       EXPECT_EQ(::pipe2(ends.data(), O_CLOEXEC), 0);
       return Channel{FileDescriptor::adopt(ends[0]), FileDescriptor::adopt(ends[1])};
     }},
    {"terminal",
     [] {
       std::array<int, 2> ends{};
       EXPECT_EQ(::openpty(&ends[0], &ends[1], nullptr, nullptr, nullptr), 0);
       return Channel{FileDescriptor::adopt(ends[0]), FileDescriptor::adopt(ends[1])};
     }},
    {"socket",
     [] {
       std::array<int, 2> ends{};
       EXPECT_EQ(::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()), 0);
       return Channel{FileDescriptor::adopt(ends[0]), FileDescriptor::adopt(ends[1])};
     }},
};

/// Writes until the reader would have to read first. Returns the flags of the writer's end.
int fill(const Channel& channel) {
  const int flags = ::fcntl(channel.writer.get(), F_GETFL);
  ::fcntl(channel.writer.get(), F_SETFL, flags | O_NONBLOCK);
  while (::write(channel.writer.get(), "x", 1) == 1) {
  }
  ::fcntl(channel.writer.get(), F_SETFL, flags);
  return flags;
}

TEST(LimitedWriting, endsWithoutAReaderAndKeepsTheFlags) {
  for (const auto& kind : kinds) {
    SCOPED_TRACE(kind.name);
    const Channel channel = kind.open();
    writeWithin(1ms, channel.writer.get(), std::string(1'000'000, 'a'));
    const int flags = fill(channel);
    writeWithin(1ms, channel.writer.get(), "a");
    EXPECT_EQ(::fcntl(channel.writer.get(), F_GETFL), flags);
  }
}

TEST(LimitedWriting, endsWithoutAReaderIfTheFileCannotBeOpenedOnceMore) {
  for (const auto& kind : kinds) {
    SCOPED_TRACE(kind.name);
    const Channel channel = kind.open();
    fill(channel);
    EXPECT_EQ(resultForOrdinaryUser([&] {
                writeWithin(1ms, channel.writer.get(), "a");
                return 0;
              }),
              0);
  }
}

TEST(LimitedWriting, deliversEverythingToASlowReader) {
  const std::string sent(300'000, 'a');
  for (const auto& kind : kinds) {
    SCOPED_TRACE(kind.name);
    Channel channel = kind.open();
    std::string received;
    std::thread reader([&] {
      std::array<char, 1000> piece{};
      ssize_t count = 0;
      while (received.size() < sent.size() &&
             (count = ::read(channel.reader.get(), piece.data(), piece.size())) > 0) {
        received.append(piece.data(), static_cast<std::size_t>(count));
      }
    });
    writeWithin(1h, channel.writer.get(), sent);
    reader.join();
    EXPECT_TRUE(received == sent) << received.size();
  }
}

TEST(LimitedWriting, appendsToAFile) {
  const ScratchDirectory scratch;
  const std::string path = scratch.write("log", "");
  const FileDescriptor file = FileDescriptor::adopt(::open(path.c_str(), O_WRONLY | O_CLOEXEC));
  for (const char* line : {"a\n", "b\n"}) {
    writeWithin(1h, file.get(), line);
  }
  std::ifstream content(path);
  EXPECT_EQ(std::string(std::istreambuf_iterator<char>(content), {}), "a\nb\n");
}

TEST(LimitedWriting, givesUpAtAnError) {
  const auto handlerBefore = std::signal(SIGPIPE, SIG_IGN);
  for (const auto& kind : kinds) {
    SCOPED_TRACE(kind.name);
    Channel channel = kind.open();
    channel.reader = FileDescriptor::adopt(-1);
    writeWithin(1h, channel.writer.get(), "a");
  }
  const FileDescriptor readOnly = FileDescriptor::adopt(::open("/dev/null", O_RDONLY | O_CLOEXEC));
  writeWithin(1h, readOnly.get(), "a");
  const FileDescriptor full = FileDescriptor::adopt(::open("/dev/full", O_WRONLY | O_CLOEXEC));
  writeWithin(1h, full.get(), "a");
  writeWithin(1h, -1, "a");
  std::signal(SIGPIPE, handlerBefore);
}

}  // namespace
}  // namespace velmora

#include "common/Output.h"
#include "platform/posix/FileDescriptor.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <string>
#include <thread>

namespace velmora {
namespace {

int codeOfWriteTo(int descriptor) {
  try {
    Output(descriptor).write("x");
  } catch (const OutputError& error) {
    return error.code();
  }
  return 0;
}

TEST(Outputs, writeAllToASlowReader) {
  for (const int flags : {0, O_NONBLOCK}) {
    SCOPED_TRACE(flags);
    std::array<int, 2> ends{};
    ASSERT_EQ(::pipe(ends.data()), 0);
    ASSERT_EQ(::fcntl(ends[1], F_SETFL, flags), 0);
    const int capacity = ::fcntl(ends[0], F_GETPIPE_SZ);
    const std::string sent(1'000'000, 'a');
    std::string received;
    std::thread reader([&] {
      // Begins when the pipe is full.
      for (int length = 0; length < capacity;) {
        ASSERT_EQ(::ioctl(ends[0], FIONREAD, &length), 0);
      }
      std::array<char, 4096> piece{};
      for (ssize_t count = 0; (count = ::read(ends[0], piece.data(), piece.size())) > 0;) {
        received.append(piece.data(), static_cast<std::size_t>(count));
      }
    });
    EXPECT_NO_THROW(Output(ends[1]).write(sent));
    ::close(ends[1]);
    reader.join();
    ::close(ends[0]);
    EXPECT_EQ(received, sent);
  }
}

TEST(Outputs, reportAReaderThatHasGone) {
  const auto handlerBefore = std::signal(SIGPIPE, SIG_IGN);
  std::array<int, 2> ends{};
  ASSERT_EQ(::pipe(ends.data()), 0);
  ::close(ends[0]);
  EXPECT_EQ(codeOfWriteTo(ends[1]), EPIPE);
  ::close(ends[1]);
  std::signal(SIGPIPE, handlerBefore);
}

TEST(Outputs, reportAFullDevice) {
  const FileDescriptor full = FileDescriptor::adopt(::open("/dev/full", O_WRONLY));
  EXPECT_EQ(codeOfWriteTo(full.get()), ENOSPC);
}

}  // namespace
}  // namespace velmora

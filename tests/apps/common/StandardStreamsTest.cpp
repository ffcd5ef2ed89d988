#include "common/StandardStreams.h"
#include "platform/PlatformError.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <map>
#include <string>
#include <thread>
#include <vector>

namespace velmora {
namespace {

/// 0 for a closed descriptor.
ino_t inodeOf(int descriptor) {
  struct stat status {};
  return ::fstat(descriptor, &status) == 0 ? status.st_ino : 0;
}

bool isUsable(int stream) {
  char byte = '\0';
  return stream == STDIN_FILENO ? ::read(stream, &byte, 1) >= 0 : ::write(stream, "", 0) >= 0;
}

/// Closes the descriptors and opens the missing streams, so the caller must be a process of its
/// own. Returns whether they are then an unusable /dev/null, the other standard streams are
/// unchanged, and no further descriptor is open.
bool opensOnly(const std::vector<int>& closed) {
  const int unused = ::open("/dev/null", O_RDONLY);
  const ino_t null = inodeOf(unused);
  ::close(unused);
  std::map<int, ino_t> expected = {{0, inodeOf(0)}, {1, inodeOf(1)}, {2, inodeOf(2)}};
  for (const int descriptor : closed) {
    ::close(descriptor);
    expected[descriptor] = null;
  }
  openMissingStandardStreams();
  return std::ranges::all_of(
             expected, [](const auto& stream) { return inodeOf(stream.first) == stream.second; }) &&
         std::ranges::none_of(closed, isUsable) && ::fcntl(unused, F_GETFD) < 0;
}

TEST(MissingStandardStreams, areOpenedAndNoOthers) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  for (const std::vector<int>& closed :
       std::vector<std::vector<int>>{{}, {0}, {1}, {0, 2}, {0, 1, 2}}) {
    SCOPED_TRACE(testing::PrintToString(closed));
    EXPECT_EXIT(::_exit(opensOnly(closed) ? 0 : 1), testing::ExitedWithCode(0), "");
  }
}

/// Makes `descriptor` standard input, and closes it. Returns all that was read from it, or the
/// message of the error.
std::string readFrom(int descriptor, std::size_t maxLength = 100'000) {
  const int original = ::dup(STDIN_FILENO);
  ::dup2(descriptor, STDIN_FILENO);
  ::close(descriptor);
  std::string result;
  try {
    result = readStandardInput(maxLength);
  } catch (const PlatformError& error) {
    result = error.what();
  }
  ::dup2(original, STDIN_FILENO);
  ::close(original);
  return result;
}

TEST(ReadingStandardInput, readsToTheEndOfAPipe) {
  std::array<int, 2> ends{};
  ASSERT_EQ(::pipe(ends.data()), 0);
  std::string sent(100'000, 'a');
  sent[3] = '\0';
  std::thread writer([&] {
    for (std::size_t position = 0; position < sent.size(); position += 1000) {
      EXPECT_EQ(::write(ends[1], sent.data() + position, 1000), 1000);
    }
    ::close(ends[1]);
  });
  EXPECT_EQ(readFrom(ends[0]), sent);
  writer.join();
}

TEST(ReadingStandardInput, raisesTheErrorOfReading) {
  EXPECT_EQ(readFrom(::open("/", O_RDONLY)), "Is a directory");
  EXPECT_EQ(readFrom(::open("/dev/null", O_WRONLY)), "Bad file descriptor");
}

TEST(ReadingStandardInput, endsAtItsMaximumLength) {
  EXPECT_EQ(readFrom(::open("/dev/zero", O_RDONLY)), "File too large");
}

TEST(ReadingStandardInput, waitsForTheWriterOfANonBlockingPipe) {
  std::array<int, 2> ends{};
  ASSERT_EQ(::pipe2(ends.data(), O_NONBLOCK), 0);
  const int reader = ::dup(ends[0]);
  ASSERT_EQ(::write(ends[1], "a", 1), 1);
  std::thread writer([&] {
    // Writes the second byte after the first one was read.
    for (int length = 1; length > 0;) {
      ASSERT_EQ(::ioctl(reader, FIONREAD, &length), 0);
    }
    EXPECT_EQ(::write(ends[1], "b", 1), 1);
    ::close(ends[1]);
  });
  EXPECT_EQ(readFrom(ends[0]), "ab");
  writer.join();
  ::close(reader);
}

}  // namespace
}  // namespace velmora

#include "common/StandardStreams.h"
#include "platform/PlatformError.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <string>
#include <thread>
#include <vector>

namespace velmora {
namespace {

/// In a process of its own: whether each of the first three descriptors is /dev/null where it was
/// closed before, and as it was otherwise, and no further one is left open.
bool opensExactly(const std::vector<int>& closed) {
  struct stat null {};
  ::stat("/dev/null", &null);
  const int unused = ::open("/", O_RDONLY);
  ::close(unused);
  std::array<struct stat, 3> before{};
  for (int descriptor = 0; descriptor < 3; ++descriptor) {
    ::fstat(descriptor, &before.at(static_cast<std::size_t>(descriptor)));
  }
  for (const int descriptor : closed) {
    ::close(descriptor);
    before.at(static_cast<std::size_t>(descriptor)) = null;
  }
  openMissingStandardStreams();
  for (int descriptor = 0; descriptor < 3; ++descriptor) {
    struct stat after {};
    if (::fstat(descriptor, &after) != 0 ||
        after.st_ino != before.at(static_cast<std::size_t>(descriptor)).st_ino) {
      return false;
    }
  }
  return ::fcntl(unused, F_GETFD) < 0;
}

class MissingStandardStreams : public testing::TestWithParam<std::vector<int>> {};

TEST_P(MissingStandardStreams, areOpenedAndNoOthers) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_EXIT(::_exit(opensExactly(GetParam()) ? 0 : 1), testing::ExitedWithCode(0), "");
}

INSTANTIATE_TEST_SUITE_P(Streams, MissingStandardStreams,
                         testing::Values(std::vector<int>{}, std::vector<int>{0},
                                         std::vector<int>{1}, std::vector<int>{0, 2},
                                         std::vector<int>{0, 1, 2}));

/// Puts `descriptor` in the place of standard input for as long as it lives, and closes it.
class StandardInput {
 public:
  explicit StandardInput(int descriptor) : original_(::dup(STDIN_FILENO)) {
    ::dup2(descriptor, STDIN_FILENO);
    ::close(descriptor);
  }
  StandardInput(const StandardInput&) = delete;
  StandardInput& operator=(const StandardInput&) = delete;
  ~StandardInput() {
    ::dup2(original_, STDIN_FILENO);
    ::close(original_);
  }

 private:
  int original_;
};

TEST(ReadingStandardInput, takesAllOfItInWhateverPieces) {
  std::array<int, 2> ends{};
  ASSERT_EQ(::pipe(ends.data()), 0);
  const StandardInput input(ends[0]);
  std::string sent(100'000, 'a');
  sent[3] = '\0';
  std::thread writer([&] {
    for (std::size_t position = 0; position < sent.size(); position += 1000) {
      EXPECT_EQ(::write(ends[1], sent.data() + position, 1000), 1000);
    }
    ::close(ends[1]);
  });
  EXPECT_EQ(readStandardInput(), sent);
  writer.join();
}

TEST(ReadingStandardInput, failsAsReadingDoes) {
  const int directory = ::open("/", O_RDONLY);
  ASSERT_GE(directory, 0);
  const StandardInput input(directory);
  try {
    static_cast<void>(readStandardInput());
    FAIL();
  } catch (const PlatformError& error) {
    EXPECT_EQ(error.code(), EISDIR);
  }
}

}  // namespace
}  // namespace velmora

#include "platform/posix/PosixFileReader.h"
#include "platform/posix/PosixFileWriter.h"
#include "tests/support/ErrorCode.h"
#include "tests/support/HostileFiles.h"
#include "tests/support/ScratchDirectory.h"
#include "tests/support/Threads.h"

#include <gtest/gtest.h>

#include <sys/resource.h>
#include <sys/stat.h>

#include <atomic>
#include <cerrno>
#include <csignal>
#include <string>
#include <vector>

namespace velmora {
namespace {

using std::string_literals::operator""s;

class WritingPosixFiles : public testing::Test {
 protected:
  mode_t modeOf(const std::string& name) const {
    struct stat status {};
    EXPECT_EQ(::stat(directory.path(name).c_str(), &status), 0);
    return status.st_mode & 0777;
  }

  std::string contentOf(const std::string& name) const {
    return PosixFileReader().read(directory.path(name), 1000);
  }

  ScratchDirectory directory;
  PosixFileWriter writer;
};

TEST_F(WritingPosixFiles, leavesOnlyTheFileAlsoAfterAReplacement) {
  writer.writeAtomically(directory.path("file"), "before");
  EXPECT_EQ(directory.names(), std::vector<std::string>{"file"});
  // An unnamed file cannot get a name that exists, so the writer uses the partial file here.
  writer.writeAtomically(directory.path("file"), "after");
  EXPECT_EQ(contentOf("file"), "after");
  EXPECT_EQ(directory.names(), std::vector<std::string>{"file"});
}

TEST_F(WritingPosixFiles, leavesTheModesToTheUmask) {
  const mode_t umaskBefore = ::umask(027);
  writer.createDirectories(directory.path("a/b"));
  writer.writeAtomically(directory.path("file"), "");
  ::umask(umaskBefore);
  EXPECT_EQ(modeOf("a"), 0750U);
  EXPECT_EQ(modeOf("a/b"), 0750U);
  EXPECT_EQ(modeOf("file"), 0640U);
}

TEST_F(WritingPosixFiles, leavesNothingOfAFileOverTheSizeLimit) {
  // The limit ends the write half-way, as a full disk does.
  const auto handlerBefore = std::signal(SIGXFSZ, SIG_IGN);
  rlimit before{};
  ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &before), 0);
  const rlimit small = {.rlim_cur = 1000, .rlim_max = before.rlim_max};
  ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &small), 0);
  const int code =
      errorCodeOf([&] { writer.writeAtomically(directory.path("file"), std::string(5000, 'x')); });
  ::setrlimit(RLIMIT_FSIZE, &before);
  std::signal(SIGXFSZ, handlerBefore);
  EXPECT_EQ(code, EFBIG);
  EXPECT_TRUE(directory.names().empty());
}

TEST_F(WritingPosixFiles, changesNothingWhenItFails) {
  directory.write("directory/file", "");
  directory.write("file", "before");
  directory.write(".file.partial", "somebody else's");
  link("missing", directory.path("dangling"));
  const std::vector<std::string> names = directory.names();
  const auto makingError = [&](const std::string& name) {
    return errorCodeOf([&] { writer.createDirectories(directory.path(name)); });
  };
  EXPECT_EQ(makingError("file/a/b"), ENOTDIR);
  EXPECT_EQ(makingError("dangling"), EEXIST);
  EXPECT_EQ(makingError("a\0b"s), ENOENT);
  const auto writingError = [&](const std::string& name) {
    return errorCodeOf([&] { writer.writeAtomically(directory.path(name), "bytes"); });
  };
  // The partial file cannot replace a directory.
  EXPECT_EQ(writingError("directory"), EISDIR);
  EXPECT_EQ(writingError("file"), EEXIST);
  EXPECT_EQ(writingError("a\0b"s), ENOENT);
  EXPECT_EQ(directory.names(), names);
  EXPECT_EQ(contentOf("file"), "before");
  EXPECT_EQ(contentOf(".file.partial"), "somebody else's");
}

TEST_F(WritingPosixFiles, createsDirectoriesThroughALink) {
  writer.createDirectories(directory.path("real"));
  link("real", directory.path("link"));
  writer.createDirectories(directory.path("link/a"));
  EXPECT_EQ(directory.names("real"), std::vector<std::string>{"a"});
}

TEST_F(WritingPosixFiles, createsOneDirectoryFromManyThreads) {
  std::vector<JoiningThread> threads;
  std::atomic<int> failureCount = 0;
  for (int thread = 0; thread < 8; ++thread) {
    threads.emplace_back([&] {
      failureCount += errorCodeOf([&] { writer.createDirectories(directory.path("a/b/c/d")); });
    });
  }
  threads.clear();
  EXPECT_EQ(failureCount, 0);
  EXPECT_EQ(directory.names("a/b/c"), std::vector<std::string>{"d"});
}

}  // namespace
}  // namespace velmora

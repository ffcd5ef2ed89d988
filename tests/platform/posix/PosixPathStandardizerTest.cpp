#include "platform/posix/PosixPathStandardizer.h"
#include "tests/contracts/PathStandardizerContract.h"
#include "tests/support/ScratchDirectory.h"

#include <gtest/gtest.h>

#include <pwd.h>
#include <unistd.h>

#include <filesystem>
#include <string>

namespace velmora {
namespace {

class PosixPathsAdapter {
 public:
  const PathStandardizer& paths() { return paths_; }

 private:
  PosixPathStandardizer paths_;
};

INSTANTIATE_TYPED_TEST_SUITE_P(Posix, PathStandardizerContract, PosixPathsAdapter);

TEST(StandardizedPath, beginsWithTheGivenHome) {
  const PosixPathStandardizer paths("/home/me/");
  EXPECT_EQ(paths.standardizedPath("~"), Text("/home/me"));
  EXPECT_EQ(paths.standardizedPath("~/x/../y"), Text("/home/me/y"));
}

TEST(StandardizedPathOfAUser, asksThePasswordDatabase) {
  const passwd* record = ::getpwnam("root");
  ASSERT_NE(record, nullptr);
  EXPECT_EQ(PosixPathStandardizer("/home/me/").standardizedPath("~root/x"),
            Text(std::string(record->pw_dir) + "/x"));
}

TEST(StandardizedPathWithoutHome, asksThePasswordDatabase) {
  const passwd* record = ::getpwuid(::getuid());
  ASSERT_NE(record, nullptr);
  for (const char* home : {"relative", ""}) {
    EXPECT_EQ(PosixPathStandardizer(home).standardizedPath("~"), Text(record->pw_dir));
  }
}

TEST(FileURLPath, treatsATildeAsAName) {
  EXPECT_EQ(PosixPathStandardizer().standardizedFileURLPath("~"),
            Text(std::filesystem::current_path().string() + "/~"));
}

TEST(FileURLPath, isEmptyForARelativePathWithoutAWorkingDirectory) {
  const std::filesystem::path before = std::filesystem::current_path();
  {
    const ScratchDirectory gone;
    std::filesystem::current_path(gone.path());
  }
  const Text relative = PosixPathStandardizer().standardizedFileURLPath("a");
  const Text absolute = PosixPathStandardizer().standardizedFileURLPath("/a");
  std::filesystem::current_path(before);
  EXPECT_TRUE(relative.empty());
  EXPECT_EQ(absolute, Text("/a"));
}

}  // namespace
}  // namespace velmora

#include "platform/posix/PosixPathStandardizer.h"
#include "tests/support/RowName.h"
#include "tests/support/ScratchDirectory.h"
#include "tests/contracts/PathStandardizerContract.h"

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

struct PathCase {
  const char* name;
  const char* path;
  const char* standardized;
};

class StandardizedPath : public testing::TestWithParam<PathCase> {};

TEST_P(StandardizedPath, expandsTheTildeAndCleansUp) {
  EXPECT_EQ(PosixPathStandardizer("/home/me/").standardizedPath(GetParam().path).utf8(),
            GetParam().standardized);
}

INSTANTIATE_TEST_SUITE_P(
    Paths, StandardizedPath,
    testing::Values(PathCase{"absolute", "/a//b/../c/.", "/a/c"},
                    PathCase{"tilde", "~", "/home/me"},
                    PathCase{"belowTilde", "~/x/../y", "/home/me/y"},
                    PathCase{"unknownUser", "~no such user/x", "~no such user/x"},
                    PathCase{"tildeInside", "/~/x", "/~/x"}, PathCase{"relative", "a/./b", "a/b"},
                    PathCase{"empty", "", ""}),
    RowName());

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

class WorkingDirectory : public testing::Test {
 protected:
  WorkingDirectory() : before_(std::filesystem::current_path()) {
    std::filesystem::current_path(directory.path());
  }
  ~WorkingDirectory() override { std::filesystem::current_path(before_); }

  Text fileURLPath(const char* path) {
    return PosixPathStandardizer().standardizedFileURLPath(path);
  }

  ScratchDirectory directory;

 private:
  std::filesystem::path before_;
};

TEST_F(WorkingDirectory, isTheBaseOfRelativePaths) {
  // As the system names it: there may be a link on the way to the scratch directory.
  const std::string base = std::filesystem::current_path().string();
  EXPECT_EQ(fileURLPath(""), Text(base));
  EXPECT_EQ(fileURLPath("."), Text(base));
  EXPECT_EQ(fileURLPath("a/../b/"), Text(base + "/b"));
  EXPECT_EQ(fileURLPath("~"), Text(base + "/~"));
}

TEST_F(WorkingDirectory, doesNotTouchAbsolutePaths) {
  EXPECT_EQ(fileURLPath("/a//b/"), Text("/a/b"));
}

TEST_F(WorkingDirectory, leavesNoPathWhenItIsGone) {
  std::filesystem::create_directory(directory.path("gone"));
  std::filesystem::current_path(directory.path("gone"));
  std::filesystem::remove(directory.path("gone"));
  EXPECT_TRUE(fileURLPath("a").empty());
  EXPECT_EQ(fileURLPath("/a"), Text("/a"));
}

}  // namespace
}  // namespace velmora

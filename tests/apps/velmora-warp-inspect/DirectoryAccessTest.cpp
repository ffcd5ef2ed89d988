#include "DirectoryAccess.h"
#include "tests/support/ScratchDirectory.h"

#include <gtest/gtest.h>

#include <unistd.h>

#include <filesystem>

namespace velmora::inspect {
namespace {

TEST(DirectoriesForNewFiles, mayExistOrNotYet) {
  const ScratchDirectory scratch;
  EXPECT_TRUE(canHoldNewFiles(scratch.path()));
  EXPECT_TRUE(canHoldNewFiles(scratch.path("a")));
  EXPECT_TRUE(canHoldNewFiles(scratch.path("a/b/c")));
  EXPECT_EQ(scratch.names(), std::vector<std::string>());
}

TEST(DirectoriesForNewFiles, areNoFilesAndLieBelowNone) {
  const ScratchDirectory scratch;
  scratch.write("file", "");
  EXPECT_FALSE(canHoldNewFiles(scratch.path("file")));
  EXPECT_FALSE(canHoldNewFiles(scratch.path("file/a")));
}

TEST(DirectoriesForNewFiles, mayBeReachedByLinksThatLeadSomewhere) {
  const ScratchDirectory scratch;
  std::filesystem::create_directory(scratch.path("directory"));
  std::filesystem::create_symlink("directory", scratch.path("link"));
  std::filesystem::create_symlink("missing", scratch.path("broken"));
  EXPECT_TRUE(canHoldNewFiles(scratch.path("link")));
  EXPECT_TRUE(canHoldNewFiles(scratch.path("link/a")));
  EXPECT_FALSE(canHoldNewFiles(scratch.path("broken")));
  EXPECT_FALSE(canHoldNewFiles(scratch.path("broken/a")));
}

/// For a user whom permissions hold back, in a process of its own.
int answerOfNobody(const std::string& directory) {
  constexpr uid_t nobody = 65534;
  if (::geteuid() == 0 && ::setuid(nobody) != 0) {
    return 2;
  }
  return canHoldNewFiles(directory) ? 1 : 0;
}

TEST(DirectoriesForNewFiles, areTheUsersToWriteTo) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  const ScratchDirectory scratch;
  std::filesystem::permissions(scratch.path(), std::filesystem::perms(0755));
  std::filesystem::create_directory(scratch.path("locked"));
  std::filesystem::permissions(scratch.path("locked"), std::filesystem::perms(0555));
  std::filesystem::create_directory(scratch.path("open"));
  std::filesystem::permissions(scratch.path("open"), std::filesystem::perms(0777));
  EXPECT_EXIT(::_exit(answerOfNobody(scratch.path("locked"))), testing::ExitedWithCode(0), "");
  EXPECT_EXIT(::_exit(answerOfNobody(scratch.path("locked/a"))), testing::ExitedWithCode(0), "");
  EXPECT_EXIT(::_exit(answerOfNobody(scratch.path("open"))), testing::ExitedWithCode(1), "");
  EXPECT_EXIT(::_exit(answerOfNobody(scratch.path("open/a"))), testing::ExitedWithCode(1), "");
}

}  // namespace
}  // namespace velmora::inspect

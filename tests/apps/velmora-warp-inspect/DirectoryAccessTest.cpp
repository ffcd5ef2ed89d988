#include "DirectoryAccess.h"
#include "tests/support/ScratchDirectory.h"

#include <gtest/gtest.h>

#include <unistd.h>

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

namespace velmora::inspect {
namespace {

TEST(DirectoriesForNewFiles, mayExistOrNotYetBehindNoFile) {
  const ScratchDirectory scratch;
  scratch.write("file", "");
  std::filesystem::create_directory(scratch.path("directory"));
  std::filesystem::create_symlink("directory", scratch.path("link"));
  std::filesystem::create_symlink("missing", scratch.path("broken"));
  const std::vector<std::string> names = scratch.names();
  for (const char* path : {"", "directory", "a", "a/b/c", "link", "link/a"}) {
    EXPECT_TRUE(canHoldNewFiles(scratch.path(path))) << path;
  }
  for (const char* path : {"file", "file/a", "broken", "broken/a"}) {
    EXPECT_FALSE(canHoldNewFiles(scratch.path(path))) << path;
  }
  EXPECT_EQ(scratch.names(), names);
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
  for (const auto& [name, mode] : {std::pair("locked", 0555), std::pair("open", 0777)}) {
    std::filesystem::create_directory(scratch.path(name));
    std::filesystem::permissions(scratch.path(name), std::filesystem::perms(mode));
  }
  const std::pair<const char*, int> rows[] = {
      {"locked", 0}, {"locked/a", 0}, {"open", 1}, {"open/a", 1}};
  for (const auto& [path, answer] : rows) {
    SCOPED_TRACE(path);
    EXPECT_EXIT(::_exit(answerOfNobody(scratch.path(path))), testing::ExitedWithCode(answer), "");
  }
}

}  // namespace
}  // namespace velmora::inspect

#include "DirectoryAccess.h"
#include "tests/support/OrdinaryUser.h"
#include "tests/support/ScratchDirectory.h"

#include <gtest/gtest.h>

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

TEST(DirectoriesForNewFiles, areTheUsersToWriteTo) {
  const ScratchDirectory scratch;
  std::filesystem::permissions(scratch.path(), std::filesystem::perms(0755));
  for (const auto& [name, mode] : {std::pair("locked", 0555), std::pair("open", 0777)}) {
    std::filesystem::create_directory(scratch.path(name));
    std::filesystem::permissions(scratch.path(name), std::filesystem::perms(mode));
  }
  const std::pair<const char*, bool> rows[] = {
      {"locked", false}, {"locked/a", false}, {"open", true}, {"open/a", true}};
  for (const auto& [name, answer] : rows) {
    const std::string path = scratch.path(name);
    EXPECT_EQ(resultForOrdinaryUser([&] { return canHoldNewFiles(path) ? 1 : 0; }), answer) << path;
  }
}

}  // namespace
}  // namespace velmora::inspect

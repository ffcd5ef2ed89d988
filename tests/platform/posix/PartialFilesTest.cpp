#include "platform/posix/PartialFiles.h"
#include "platform/posix/PosixFileWriter.h"
#include "tests/support/HostileFiles.h"
#include "tests/support/ScratchDirectory.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <ctime>
#include <filesystem>
#include <string>
#include <vector>

namespace velmora {
namespace {

const char* const abandonedName = ".3F2504E0-4F89-41D3-9A0C-0305E82C3301.json.partial";
constexpr std::time_t hour = 60 * 60;

class PartialFilesTest : public testing::Test {
 protected:
  /// Sets the time of a file, or of a link itself.
  void makeOld(const std::string& name, std::time_t age = 25 * hour) const {
    const timespec time = {.tv_sec = std::time(nullptr) - age, .tv_nsec = 0};
    const timespec times[] = {time, time};
    require(::utimensat(AT_FDCWD, directory.path(name).c_str(), times, AT_SYMLINK_NOFOLLOW) == 0,
            name);
  }

  void makeOldFile(const std::string& name) const {
    directory.write(name, "");
    makeOld(name);
  }

  ScratchDirectory directory;
};

TEST_F(PartialFilesTest, areRemovedByALaterRequestAfterADay) {
  makeOldFile(abandonedName);
  PosixFileWriter().writeAtomically(directory.path("file"), "");
  EXPECT_EQ(directory.names(), std::vector<std::string>{"file"});
  // The name is that of a real partial file.
  EXPECT_EQ(partialFileName("3F2504E0-4F89-41D3-9A0C-0305E82C3301.json"), abandonedName);
}

TEST_F(PartialFilesTest, areKeptForADay) {
  for (const std::time_t age : {std::time_t{0}, 23 * hour, -48 * hour}) {
    directory.write(abandonedName, "");
    makeOld(abandonedName, age);
    removeAbandonedPartialFiles(directory.path());
    EXPECT_EQ(directory.names(), std::vector<std::string>{abandonedName}) << age;
  }
}

TEST_F(PartialFilesTest, areKeptUnderOtherNames) {
  const std::vector<std::string> others = {
      "3F2504E0-4F89-41D3-9A0C-0305E82C3301.json",
      "3F2504E0-4F89-41D3-9A0C-0305E82C3301.json.partial",
      ".3F2504E0-4F89-41D3-9A0C-0305E82C3301.json",
      ".3F2504E0-4F89-41D3-9A0C-0305E82C3301.json.partial~",
      ".3f2504e0-4f89-41d3-9a0c-0305e82c3301.json.partial",
      ".3F2504E0-4F89-41D3-9A0C-0305E82C330.json.partial",
      ".3F2504E0-4F89-41D3-9A0C-0305E82C33011.json.partial",
      ".3F2504E0-4F89-41D3-9A0C-0305E82C330G.json.partial",
      ".3F2504E04F89-41D3-9A0C-0305E82C33010.json.partial",
      ".3F2504E0-4F89-41D3-9A0C-0305E82C3301.JSON.partial",
      ".file.json.partial",
      "file",
  };
  for (const std::string& name : others) {
    makeOldFile(name);
  }
  removeAbandonedPartialFiles(directory.path());
  for (const std::string& name : others) {
    EXPECT_TRUE(std::filesystem::exists(directory.path(name))) << name;
  }
}

TEST_F(PartialFilesTest, areNeverAnotherKindOfFile) {
  const std::string path = directory.path(abandonedName);
  makeOldFile("target");
  link("target", path);
  makeOld(abandonedName);
  removeAbandonedPartialFiles(directory.path());
  EXPECT_TRUE(std::filesystem::is_symlink(path));
  std::filesystem::remove(path);
  require(::mkfifo(path.c_str(), 0600) == 0, path);
  makeOld(abandonedName);
  removeAbandonedPartialFiles(directory.path());
  EXPECT_TRUE(std::filesystem::exists(path));
  std::filesystem::remove(path);
  std::filesystem::create_directory(path);
  makeOld(abandonedName);
  removeAbandonedPartialFiles(directory.path());
  EXPECT_TRUE(std::filesystem::exists(path));
  EXPECT_TRUE(std::filesystem::exists(directory.path("target")));
}

TEST_F(PartialFilesTest, areLookedForOnlyInTheFirstEntriesOfADirectory) {
  constexpr std::size_t count = 1200;
  std::string name = abandonedName;
  for (std::size_t number = 0; number < count; ++number) {
    const std::string digits = std::to_string(1000 + number);
    std::ranges::copy(digits, name.begin() + 1);
    makeOldFile(name);
  }
  removeAbandonedPartialFiles(directory.path());
  const std::size_t left = directory.names().size();
  EXPECT_GE(left, 200U);
  EXPECT_LT(left, 300U);
}

TEST_F(PartialFilesTest, areNotLookedForWhereThereIsNoDirectory) {
  require(::mkfifo(directory.path("pipe").c_str(), 0600) == 0, "mkfifo");
  for (const char* name : {"pipe", "missing"}) {
    removeAbandonedPartialFiles(directory.path(name));
  }
}

}  // namespace
}  // namespace velmora

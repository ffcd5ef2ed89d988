#include "WatchedFileReader.h"
#include "platform/posix/PosixFileReader.h"
#include "tests/support/ScratchDirectory.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace velmora::inspect {
namespace {

class WatchedFileReaderTest : public testing::Test {
 protected:
  const ScratchDirectory scratch;
  PosixFileReader files;
  std::vector<double> parts;
  const WatchedFileReader watched{files, [this](double part) { parts.push_back(part); }};
};

TEST_F(WatchedFileReaderTest, reportsThePartOfTheFileThatWasRead) {
  const std::string path = scratch.write("file", "12345678");
  const std::unique_ptr<FileContent> content = watched.open(path, 100);
  std::string room(4, '\0');
  for (const std::size_t size : {2U, 4U, 2U, 2U}) {
    static_cast<void>(content->read(room.data(), size));
  }
  EXPECT_EQ(parts, (std::vector<double>{0.25, 0.75, 1, 1}));
}

TEST_F(WatchedFileReaderTest, readsAFileOfAnotherLengthThanExpected) {
  const std::string empty = scratch.write("empty", "");
  const std::string path = scratch.write("file", "12");
  std::string room(4, '\0');
  EXPECT_EQ(watched.open(empty, 100)->read(room.data(), 4), 0U);
  const std::unique_ptr<FileContent> content = watched.open(path, 100);
  std::filesystem::resize_file(path, 4);
  EXPECT_EQ(content->read(room.data(), 4), 4U);
  EXPECT_EQ(parts, (std::vector<double>{0, 1}));
}

TEST_F(WatchedFileReaderTest, answersOtherwiseLikeTheReaderBehind) {
  const std::string path = scratch.write("file", "1");
  EXPECT_TRUE(watched.exists(path));
  EXPECT_FALSE(watched.isDirectory(path));
  EXPECT_EQ(watched.read(path, 100), "1");
  EXPECT_EQ(watched.entryNames(scratch.path(), 1), std::vector<std::string>{"file"});
  EXPECT_TRUE(parts.empty());
}

}  // namespace
}  // namespace velmora::inspect

// The file writer, with a failure at each of its allocations in turn.

#include "platform/posix/PosixFileWriter.h"
#include "tests/support/FailingAllocations.h"
#include "tests/support/ScratchDirectory.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>

namespace velmora {
namespace {

std::size_t fileCountIn(const std::string& directory) {
  std::size_t count = 0;
  for (const auto& entry : std::filesystem::directory_iterator(directory)) {
    count += entry.is_regular_file() ? 1 : 0;
  }
  return count;
}

TEST(FailedAllocations, leaveNoHalfWrittenFile) {
  // The names are long, so that each directory above the file needs an allocation of its own.
  const std::string below = "/a directory with a long name/another directory with a long name";
  const std::string bytes = "written";
  const long count = failEachAllocation(
      [] { return std::make_unique<ScratchDirectory>(); },
      [&](const std::unique_ptr<ScratchDirectory>& scratch) {
        PosixFileWriter writer;
        const std::string directory = scratch->path() + below + below;
        writer.createDirectories(directory);
        writer.writeAtomically(directory + "/file.json", bytes);
      },
      [&](const std::unique_ptr<ScratchDirectory>& scratch, const Attempt& attempt) {
        EXPECT_EQ(attempt.hasThrown, attempt.hasFailed);
        const std::string directory = scratch->path() + below + below;
        const bool isThere = std::filesystem::exists(directory);
        EXPECT_TRUE(isThere || attempt.hasFailed);
        EXPECT_EQ(isThere ? fileCountIn(directory) : 0, attempt.hasFailed ? 0 : 1);
        PosixFileWriter writer;
        writer.createDirectories(directory);
        writer.writeAtomically(directory + "/file.json", bytes);
        EXPECT_EQ(std::filesystem::file_size(directory + "/file.json"), bytes.size());
      });
  EXPECT_GT(count, 8);
}

}  // namespace
}  // namespace velmora

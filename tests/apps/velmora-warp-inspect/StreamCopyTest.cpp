#include "StreamCopy.h"
#include "platform/PlatformError.h"
#include "platform/posix/PosixFileReader.h"
#include "tests/support/ErrorCode.h"
#include "tests/support/HostileFiles.h"
#include "tests/support/ScratchDirectory.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <fstream>
#include <string>
#include <thread>

namespace velmora::inspect {
namespace {

TEST(StreamCopies, areFilesWithEverythingThatThePipeDelivers) {
  const ScratchDirectory scratch;
  const std::string path = scratch.path("pipe");
  require(::mkfifo(path.c_str(), 0600) == 0, path);
  const std::string sent = std::string(1'000'000, 'a') + "end";
  std::thread writer([&] { std::ofstream(path) << sent; });
  const std::optional<StreamCopy> copy = copyOfStream(path, sent.size());
  writer.join();
  ASSERT_TRUE(copy.has_value());
  const PosixFileReader files;
  EXPECT_TRUE(files.read(copy->path(), sent.size()) == sent);
  EXPECT_TRUE(files.read(copy->path(), sent.size()) == sent);
}

TEST(StreamCopies, refuseLongerStreams) {
  const FileDescriptor zeros = FileDescriptor::adopt(::open("/dev/zero", O_RDONLY | O_CLOEXEC));
  for (const std::size_t maxLength : {0U, 1U, 1'000'000U}) {
    EXPECT_EQ(errorCodeOf([&] { static_cast<void>(StreamCopy(zeros.get(), maxLength)); }), EFBIG);
  }
}

TEST(StreamCopies, areMadeOfStreamsOnly) {
  const ScratchDirectory scratch;
  for (const std::string& path :
       {scratch.write("file", ""), scratch.path(), scratch.path("missing"),
        std::string("/dev/zero"), std::string()}) {
    EXPECT_FALSE(copyOfStream(path, 1).has_value()) << path;
  }
}

}  // namespace
}  // namespace velmora::inspect

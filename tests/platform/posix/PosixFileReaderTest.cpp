#include "platform/PlatformError.h"
#include "platform/posix/FileDescriptor.h"
#include "platform/posix/PosixFileReader.h"
#include "tests/ScratchDirectory.h"

#include <gtest/gtest.h>

#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace velmora {
namespace {

using std::string_literals::operator""s;

class ReadingPosixFiles : public testing::Test {
 protected:
  int errorCodeOfReading(const std::string& path) {
    try {
      static_cast<void>(reader.read(path));
    } catch (const PlatformError& error) {
      EXPECT_EQ(error.what(), std::string(std::strerror(error.code())));
      return error.code();
    }
    return 0;
  }

  ScratchDirectory directory;
  PosixFileReader reader;
};

TEST_F(ReadingPosixFiles, readsMoreThanOnePiece) {
  const std::string bytes(100'000, 'x');
  directory.write("file", bytes);
  EXPECT_EQ(reader.read(directory.path("file")), bytes);
}

TEST_F(ReadingPosixFiles, readsThroughALink) {
  directory.write("file", "content");
  ASSERT_EQ(::symlink("file", directory.path("link").c_str()), 0);
  EXPECT_EQ(reader.read(directory.path("link")), "content");
}

TEST_F(ReadingPosixFiles, followsLinksToDirectories) {
  ASSERT_EQ(::symlink(".", directory.path("link").c_str()), 0);
  EXPECT_TRUE(reader.isDirectory(directory.path("link")));
}

TEST_F(ReadingPosixFiles, takesADanglingLinkForNothing) {
  ASSERT_EQ(::symlink("missing", directory.path("link").c_str()), 0);
  EXPECT_FALSE(reader.exists(directory.path("link")));
  EXPECT_FALSE(reader.isDirectory(directory.path("link")));
}

TEST_F(ReadingPosixFiles, takesALoopingLinkForNothing) {
  ASSERT_EQ(::symlink("loop", directory.path("loop").c_str()), 0);
  EXPECT_FALSE(reader.exists(directory.path("loop")));
  EXPECT_EQ(errorCodeOfReading(directory.path("loop")), ELOOP);
}

TEST_F(ReadingPosixFiles, doesNotWaitForTheWriterOfAFIFO) {
  ASSERT_EQ(::mkfifo(directory.path("fifo").c_str(), 0600), 0);
  EXPECT_TRUE(reader.exists(directory.path("fifo")));
  EXPECT_EQ(errorCodeOfReading(directory.path("fifo")), EINVAL);
}

TEST_F(ReadingPosixFiles, refusesADevice) { EXPECT_EQ(errorCodeOfReading("/dev/zero"), EINVAL); }

TEST_F(ReadingPosixFiles, refusesASocket) {
  const FileDescriptor socket = FileDescriptor::adopt(::socket(AF_UNIX, SOCK_STREAM, 0));
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  std::strncpy(address.sun_path, directory.path("socket").c_str(), sizeof address.sun_path - 1);
  ASSERT_EQ(::bind(socket.get(), reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
  EXPECT_EQ(errorCodeOfReading(directory.path("socket")), ENXIO);
}

TEST_F(ReadingPosixFiles, doesNotCutAPathAtNUL) {
  directory.write("file", "content");
  const std::string path = directory.path("file") + "\0.json"s;
  EXPECT_FALSE(reader.exists(path));
  EXPECT_FALSE(reader.isDirectory(directory.path() + "\0x"s));
  EXPECT_EQ(errorCodeOfReading(path), ENOENT);
}

TEST_F(ReadingPosixFiles, refusesANameThatIsTooLong) {
  const std::string path = directory.path(std::string(5000, 'x'));
  EXPECT_FALSE(reader.exists(path));
  EXPECT_EQ(errorCodeOfReading(path), ENAMETOOLONG);
}

}  // namespace
}  // namespace velmora

#include "platform/posix/FileDescriptor.h"
#include "platform/posix/PosixRecordLocks.h"
#include "tests/support/LockProbe.h"
#include "tests/support/ScratchDirectory.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <unistd.h>

#include <string>

namespace velmora {
namespace {

class PosixRecordLocksTest : public testing::Test {
 protected:
  static bool isOpen(int descriptor) { return ::fcntl(descriptor, F_GETFD) >= 0; }

  int open() const { return ::open(path.c_str(), O_RDWR | O_CLOEXEC); }

  ScratchDirectory directory;
  std::string path = directory.write("lock", "some bytes");
  LockProbe otherProcess{path};
  PosixRecordLocks locks;
};

TEST_F(PosixRecordLocksTest, unlocksTheWholeFileFromAnyPositionAndKeepsItOpen) {
  const FileDescriptor file = FileDescriptor::adopt(open());
  ASSERT_TRUE(setRecordLock(file.get(), F_WRLCK));
  EXPECT_FALSE(otherProcess.canLock());
  ASSERT_EQ(::lseek(file.get(), 5, SEEK_SET), 5);
  ASSERT_EQ(::ftruncate(file.get(), 1'000'000), 0);
  locks.unlockWholeFile(file.get());
  EXPECT_TRUE(otherProcess.canLock());
  EXPECT_TRUE(isOpen(file.get()));
}

TEST_F(PosixRecordLocksTest, closesAFileWithItsLockAndIgnoresAClosedFile) {
  const int descriptor = open();
  ASSERT_TRUE(setRecordLock(descriptor, F_WRLCK));
  EXPECT_FALSE(otherProcess.canLock());
  locks.close(descriptor);
  EXPECT_TRUE(otherProcess.canLock());
  EXPECT_FALSE(isOpen(descriptor));
  locks.unlockWholeFile(descriptor);
  locks.close(descriptor);
  EXPECT_FALSE(isOpen(descriptor));
  EXPECT_TRUE(otherProcess.canLock());
}

}  // namespace
}  // namespace velmora

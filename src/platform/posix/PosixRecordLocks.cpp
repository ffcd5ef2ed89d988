#include "platform/posix/PosixRecordLocks.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>

namespace velmora {

void PosixRecordLocks::unlockWholeFile(int fileDescriptor) noexcept {
  struct flock wholeFile {};
  wholeFile.l_type = F_UNLCK;
  wholeFile.l_whence = SEEK_SET;
  wholeFile.l_start = 0;
  // To the end, wherever that is.
  wholeFile.l_len = 0;
  wholeFile.l_pid = 0;
  // A lock that this leaves is dropped when the file is closed.
  static_cast<void>(::fcntl(fileDescriptor, F_SETLK, &wholeFile));
}

void PosixRecordLocks::close(int fileDescriptor) noexcept {
  // Not tried again after a signal: the number may be another thread's file by then.
  static_cast<void>(::close(fileDescriptor));
}

}  // namespace velmora

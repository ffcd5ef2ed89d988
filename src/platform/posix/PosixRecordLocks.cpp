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
  // 0 means up to the end of the file, wherever that is.
  wholeFile.l_len = 0;
  wholeFile.l_pid = 0;
  // If this fails, closing the file releases the lock.
  static_cast<void>(::fcntl(fileDescriptor, F_SETLK, &wholeFile));
}

void PosixRecordLocks::close(int fileDescriptor) noexcept {
  // Not repeated after a signal: the descriptor may be another thread's file by then.
  static_cast<void>(::close(fileDescriptor));
}

}  // namespace velmora

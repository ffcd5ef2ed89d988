#include "warpshared/writing/VelmoraWarpSharedMutationLock.h"

#include "platform/CountingSemaphore.h"
#include "platform/RecordLocks.h"

#include <utility>

namespace velmora {

VelmoraWarpSharedMutationLock::VelmoraWarpSharedMutationLock(
    RecordLocks& recordLocks, std::int32_t fileDescriptor,
    std::shared_ptr<CountingSemaphore> processSemaphoreToRelease) noexcept
    : recordLocks_(recordLocks),
      fileDescriptor_(fileDescriptor),
      processSemaphoreToRelease_(std::move(processSemaphoreToRelease)) {}

VelmoraWarpSharedMutationLock::~VelmoraWarpSharedMutationLock() {
  if (fileDescriptor_ < 0) {
    return;
  }
  recordLocks_.unlockWholeFile(fileDescriptor_);
  recordLocks_.close(fileDescriptor_);
  fileDescriptor_ = -1;
  // Last: a thread that waits for the semaphore goes on only when the file lock is gone.
  const std::shared_ptr<CountingSemaphore> semaphore =
      std::exchange(processSemaphoreToRelease_, nullptr);
  if (semaphore) {
    semaphore->signal();
  }
}

}  // namespace velmora

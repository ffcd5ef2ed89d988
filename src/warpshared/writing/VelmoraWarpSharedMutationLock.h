// The lock of the shared Warp state, for programs that change it. No program here takes it.
#pragma once

#include <cstdint>
#include <memory>

namespace velmora {

class CountingSemaphore;
class RecordLocks;

/// The token that a writer holds while it changes manifests, markers or the index of destroyed
/// manifests. The destructor releases the lock; there is no other way to unlock. Users share a
/// token through std::shared_ptr, and may drop it on any thread. A token is used once. Reading
/// takes no lock.
///
/// The file lock excludes other processes. The semaphore excludes other threads of this process,
/// because the file lock does not.
class VelmoraWarpSharedMutationLock {
 public:
  /// A token for a lock that the caller has acquired; a negative `fileDescriptor` means none. The
  /// release is correct only if the caller has ensured that
  ///
  /// * `fileDescriptor` is an open descriptor of the lock file, opened for this token alone and
  ///   shared with no other holder: closing it drops all of this process's locks on that file;
  /// * this process has a record lock on the whole of that file through it (start 0, length 0);
  /// * one unit of `processSemaphoreToRelease`, unless that is null, has been taken for this token,
  ///   so that its one signal at the end balances it. All who acquire the lock in a process share
  ///   that semaphore.
  ///
  /// If acquiring fails, the caller releases what it took and makes no token. `recordLocks`
  /// outlives the token.
  VelmoraWarpSharedMutationLock(
      RecordLocks& recordLocks, std::int32_t fileDescriptor,
      std::shared_ptr<CountingSemaphore> processSemaphoreToRelease) noexcept;

  VelmoraWarpSharedMutationLock(const VelmoraWarpSharedMutationLock&) = delete;
  VelmoraWarpSharedMutationLock& operator=(const VelmoraWarpSharedMutationLock&) = delete;

  /// Releases the lock; never fails. A token without a descriptor does not signal its semaphore
  /// either: both are released or none.
  ~VelmoraWarpSharedMutationLock();

 private:
  RecordLocks& recordLocks_;
  std::int32_t fileDescriptor_;
  std::shared_ptr<CountingSemaphore> processSemaphoreToRelease_;
};

}  // namespace velmora

// The right to change the shared Warp state, which several processes may want to at a time.
#pragma once

#include <cstdint>
#include <memory>

namespace velmora {

class CountingSemaphore;
class RecordLocks;

/// The token that a writer holds while it changes manifests, markers or the index of destroyed
/// manifests. Its lifetime is the lock's: users share it through std::shared_ptr, and the lock is
/// given back when the last of them drops it, on whichever thread that happens. There is no other
/// way to unlock, and a token is not used a second time. Reading the state takes no lock.
///
/// The file lock excludes other processes. It does not keep threads of one process apart, which is
/// what the semaphore is for.
class VelmoraWarpSharedMutationLock {
 public:
  /// A token for what the caller has acquired; a negative `fileDescriptor` stands for nothing. For
  /// the release to be right, whoever hands out a token with a descriptor has made sure that
  ///
  /// * `fileDescriptor` is an open descriptor of the lock file, opened for this token alone and
  ///   shared with no other holder: closing it drops all of this process's locks on that file;
  /// * this process has a record lock on the whole of that file through it (start 0, length 0);
  /// * one unit of `processSemaphoreToRelease`, unless that is null, has been taken for this token,
  ///   so that the one signal at the end balances it. To keep the threads of a process apart, all
  ///   who acquire there share that semaphore.
  ///
  /// When something fails on the way, the acquirer gives back what it took and makes no token.
  /// `recordLocks` outlives the token.
  VelmoraWarpSharedMutationLock(
      RecordLocks& recordLocks, std::int32_t fileDescriptor,
      std::shared_ptr<CountingSemaphore> processSemaphoreToRelease) noexcept;

  VelmoraWarpSharedMutationLock(const VelmoraWarpSharedMutationLock&) = delete;
  VelmoraWarpSharedMutationLock& operator=(const VelmoraWarpSharedMutationLock&) = delete;

  /// Gives back what the token holds; never fails. A token without a descriptor does not signal its
  /// semaphore either: the two are given back together or not at all.
  ~VelmoraWarpSharedMutationLock();

 private:
  RecordLocks& recordLocks_;
  std::int32_t fileDescriptor_;
  std::shared_ptr<CountingSemaphore> processSemaphoreToRelease_;
};

}  // namespace velmora

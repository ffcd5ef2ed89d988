#include "platform/CountingSemaphore.h"
#include "platform/RecordLocks.h"
#include "platform/posix/PosixRecordLocks.h"
#include "platform/posix/ThreadSemaphore.h"
#include "tests/support/LockProbe.h"
#include "tests/support/ScratchDirectory.h"
#include "warpshared/writing/VelmoraWarpSharedMutationLock.h"

#include <gtest/gtest.h>

#include <fcntl.h>

#include <cstdint>
#include <functional>
#include <limits>
#include <memory>
#include <string>
#include <thread>
#include <type_traits>
#include <utility>
#include <vector>

namespace velmora::internal {
namespace {

using Lock = VelmoraWarpSharedMutationLock;

static_assert(!std::is_copy_constructible_v<Lock> && !std::is_copy_assignable_v<Lock>);
static_assert(!std::is_move_constructible_v<Lock> && !std::is_move_assignable_v<Lock>);

/// The calls in order, and the thread of each.
struct Record {
  void add(std::string event) {
    events.push_back(std::move(event));
    threads.push_back(std::this_thread::get_id());
  }

  std::vector<std::string> events;
  std::vector<std::thread::id> threads;
};

class RecordingLocks final : public RecordLocks {
 public:
  explicit RecordingLocks(Record& record) : record_(record) {}

  void unlockWholeFile(int fileDescriptor) noexcept override {
    record_.add("unlock " + std::to_string(fileDescriptor));
  }
  void close(int fileDescriptor) noexcept override {
    record_.add("close " + std::to_string(fileDescriptor));
  }

 private:
  Record& record_;
};

class RecordingSemaphore final : public CountingSemaphore {
 public:
  explicit RecordingSemaphore(Record& record) : record_(record) {}
  RecordingSemaphore(const RecordingSemaphore&) = delete;
  RecordingSemaphore& operator=(const RecordingSemaphore&) = delete;
  ~RecordingSemaphore() override { record_.add("drop semaphore"); }

  void signal() noexcept override { record_.add("signal"); }
  void wait() override { record_.add("wait"); }

 private:
  Record& record_;
};

class ReleasingMutationLock : public testing::Test {
 protected:
  std::shared_ptr<RecordingSemaphore> makeSemaphore() {
    return std::make_shared<RecordingSemaphore>(record);
  }

  Record record;
  RecordingLocks locks{record};
};

using Events = std::vector<std::string>;

TEST_F(ReleasingMutationLock, unlocksThenClosesThenSignalsThenReleasesTheSemaphore) {
  struct {
    std::int32_t descriptor;
    Events eventsWithoutASemaphore;
    Events events;
  } const rows[] = {
      {7, {"unlock 7", "close 7"}, {"unlock 7", "close 7", "signal", "drop semaphore"}},
      {0, {"unlock 0", "close 0"}, {"unlock 0", "close 0", "signal", "drop semaphore"}},
      {-1, {}, {"drop semaphore"}},
      {-2, {}, {"drop semaphore"}},
      {std::numeric_limits<std::int32_t>::min(), {}, {"drop semaphore"}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.descriptor);
    record = {};
    { const Lock lock(locks, row.descriptor, nullptr); }
    EXPECT_EQ(record.events, row.eventsWithoutASemaphore);
    record = {};
    {
      const Lock lock(locks, row.descriptor, makeSemaphore());
      EXPECT_EQ(record.events, Events());
    }
    EXPECT_EQ(record.events, row.events);
  }
}

TEST_F(ReleasingMutationLock, keepsASemaphoreOfOtherOwnersAlive) {
  const auto semaphore = makeSemaphore();
  { const Lock lock(locks, 7, semaphore); }
  EXPECT_EQ(record.events, (Events{"unlock 7", "close 7", "signal"}));
  EXPECT_EQ(semaphore.use_count(), 1);
}

TEST_F(ReleasingMutationLock, happensOnceOnTheThreadOfTheLastOwner) {
  auto share = std::make_shared<const Lock>(locks, 7, makeSemaphore());
  auto lastShare = share;
  std::thread([other = share]() mutable { other.reset(); }).join();
  share.reset();
  EXPECT_TRUE(record.events.empty());
  std::thread::id lastThread;
  std::thread([&lastThread, held = std::move(lastShare)]() mutable {
    lastThread = std::this_thread::get_id();
    held.reset();
  }).join();
  EXPECT_EQ(record.events, (Events{"unlock 7", "close 7", "signal", "drop semaphore"}));
  EXPECT_EQ(record.threads, std::vector<std::thread::id>(4, lastThread));
}

/// Calls a function of the test when it is signalled.
class CallingSemaphore final : public CountingSemaphore {
 public:
  explicit CallingSemaphore(std::function<void()> onSignal) : onSignal_(std::move(onSignal)) {}

  void signal() noexcept override { onSignal_(); }
  void wait() override {}

 private:
  std::function<void()> onSignal_;
};

class MutationLockOnAFile : public testing::Test {
 protected:
  /// Opens a new descriptor and locks the whole file, as an acquirer does.
  int openAndLock() const {
    const int descriptor = ::open(path.c_str(), O_RDWR | O_CLOEXEC);
    EXPECT_TRUE(setRecordLock(descriptor, F_WRLCK));
    return descriptor;
  }

  ScratchDirectory directory;
  std::string path = directory.write("lock", "");
  LockProbe otherProcess{path};
  PosixRecordLocks locks;
};

TEST_F(MutationLockOnAFile, isReleasedForOtherProcessesAtTheSignal) {
  std::vector<bool> couldLockAtTheSignal;
  const auto semaphore = std::make_shared<CallingSemaphore>(
      [&] { couldLockAtTheSignal.push_back(otherProcess.canLock()); });
  auto lock = std::make_shared<const Lock>(locks, openAndLock(), semaphore);
  auto share = lock;
  EXPECT_FALSE(otherProcess.canLock());
  lock.reset();
  EXPECT_FALSE(otherProcess.canLock());
  EXPECT_TRUE(couldLockAtTheSignal.empty());
  share.reset();
  EXPECT_EQ(couldLockAtTheSignal, std::vector<bool>{true});
}

TEST_F(MutationLockOnAFile, leavesItsDescriptorClosed) {
  const int descriptor = openAndLock();
  { const Lock lock(locks, descriptor, nullptr); }
  EXPECT_EQ(::fcntl(descriptor, F_GETFD), -1);
  EXPECT_TRUE(otherProcess.canLock());
}

TEST_F(MutationLockOnAFile, admitsOneThreadOfAProcessAtATime) {
  const auto semaphore = std::make_shared<ThreadSemaphore>(1);
  // Not atomic, because the lock must protect it.
  int insideCount = 0;
  int roundCount = 0;
  std::vector<std::thread> threads;
  for (int thread = 0; thread < 4; ++thread) {
    threads.emplace_back([&] {
      for (int round = 0; round < 100; ++round) {
        semaphore->wait();
        const Lock lock(locks, openAndLock(), semaphore);
        ++insideCount;
        EXPECT_EQ(insideCount, 1);
        ++roundCount;
        --insideCount;
      }
    });
  }
  for (std::thread& thread : threads) {
    thread.join();
  }
  EXPECT_EQ(roundCount, 400);
  EXPECT_TRUE(otherProcess.canLock());
}

}  // namespace
}  // namespace velmora::internal

#include "platform/posix/ThreadSemaphore.h"
#include "tests/support/Threads.h"

#include <gtest/gtest.h>

#include <atomic>
#include <vector>

namespace velmora {
namespace {

TEST(ThreadSemaphoreTest, doesNotBlockWhileItHasUnits) {
  // With one unit fewer, this test would not end.
  ThreadSemaphore semaphore(2);
  semaphore.wait();
  semaphore.wait();
  semaphore.signal();
  semaphore.wait();
}

TEST(ThreadSemaphoreTest, wakesAWaitingThreadByASignal) {
  ThreadSemaphore semaphore(0);
  std::atomic<bool> isSignalled = false;
  bool wasSignalledBefore = false;
  {
    const JoiningThread waiting([&] {
      semaphore.wait();
      wasSignalledBefore = isSignalled;
    });
    isSignalled = true;
    semaphore.signal();
  }
  EXPECT_TRUE(wasSignalledBefore);
}

TEST(ThreadSemaphoreTest, admitsNoMoreThreadsThanItHasUnits) {
  constexpr int units = 2;
  ThreadSemaphore semaphore(units);
  std::atomic<int> inside = 0;
  std::atomic<int> mostInside = 0;
  std::vector<JoiningThread> threads;
  for (int thread = 0; thread < 4; ++thread) {
    threads.emplace_back([&] {
      for (int round = 0; round < 1000; ++round) {
        semaphore.wait();
        const int now = ++inside;
        for (int most = mostInside; now > most && !mostInside.compare_exchange_weak(most, now);) {
        }
        --inside;
        semaphore.signal();
      }
    });
  }
  threads.clear();
  EXPECT_EQ(inside, 0);
  EXPECT_GE(mostInside, 1);
  EXPECT_LE(mostInside, units);
}

}  // namespace
}  // namespace velmora

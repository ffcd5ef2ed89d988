#include "platform/posix/ThreadSemaphore.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

namespace velmora {
namespace {

TEST(ThreadSemaphoreTest, letsThroughAsOftenAsItHasUnits) {
  // With a unit too few, the test would not end.
  ThreadSemaphore semaphore(2);
  semaphore.wait();
  semaphore.wait();
  semaphore.signal();
  semaphore.wait();
}

TEST(ThreadSemaphoreTest, letsAWaitingThreadThroughAfterASignal) {
  ThreadSemaphore semaphore(0);
  std::atomic<bool> isSignalled = false;
  bool wasSignalledBefore = false;
  std::thread waiting([&] {
    semaphore.wait();
    wasSignalledBefore = isSignalled;
  });
  isSignalled = true;
  semaphore.signal();
  waiting.join();
  EXPECT_TRUE(wasSignalledBefore);
}

TEST(ThreadSemaphoreTest, letsNoMoreThreadsInThanItHasUnits) {
  constexpr int units = 2;
  ThreadSemaphore semaphore(units);
  std::atomic<int> inside = 0;
  std::atomic<int> mostInside = 0;
  std::vector<std::thread> threads;
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
  for (std::thread& thread : threads) {
    thread.join();
  }
  EXPECT_EQ(inside, 0);
  EXPECT_GE(mostInside, 1);
  EXPECT_LE(mostInside, units);
}

}  // namespace
}  // namespace velmora

// The contract of every MainQueue. Instantiated with an adapter for each implementation.
#pragma once

#include "platform/MainQueue.h"
#include "tests/support/Threads.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <memory>
#include <numeric>
#include <thread>
#include <utility>
#include <vector>

namespace velmora {

/// An adapter has
///   MainQueue& queue();
///   void runPending();
///       runs every task given before the call, on the calling thread; may also run tasks that
///       those add
template <class Adapter>
class MainQueueContract : public testing::Test {};

TYPED_TEST_SUITE_P(MainQueueContract);

TYPED_TEST_P(MainQueueContract, runsEachTaskOnceInOrderAfterTheCall) {
  TypeParam adapter;
  std::vector<int> runs;
  MainQueue& queue = adapter.queue();
  queue.async([&queue, &runs] {
    queue.async([&runs] { runs.push_back(4); });
    runs.push_back(1);
  });
  for (const int number : {2, 3}) {
    queue.async([&runs, number] { runs.push_back(number); });
  }
  EXPECT_TRUE(runs.empty());
  adapter.runPending();
  adapter.runPending();
  EXPECT_EQ(runs, (std::vector{1, 2, 3, 4}));
}

TYPED_TEST_P(MainQueueContract, runsTasksOfAllThreadsOnOneThreadInEachThreadsOrder) {
  constexpr std::size_t threadCount = 4;
  constexpr std::size_t tasksOfEach = 250;
  std::vector<std::vector<std::size_t>> runs(threadCount);
  std::vector<std::thread::id> runners;
  TypeParam adapter;
  MainQueue& queue = adapter.queue();
  {
    std::vector<JoiningThread> threads;
    threads.reserve(threadCount);
    for (std::vector<std::size_t>& runsOfThread : runs) {
      threads.emplace_back([&queue, &runsOfThread, &runners] {
        for (std::size_t task = 0; task < tasksOfEach; ++task) {
          queue.async([&runsOfThread, &runners, task] {
            runsOfThread.push_back(task);
            runners.push_back(std::this_thread::get_id());
          });
        }
      });
    }
  }
  adapter.runPending();

  std::vector<std::size_t> inOrder(tasksOfEach);
  std::iota(inOrder.begin(), inOrder.end(), 0U);
  EXPECT_EQ(runs, std::vector(threadCount, inOrder));
  EXPECT_EQ(runners, std::vector(threadCount * tasksOfEach, std::this_thread::get_id()));
}

TYPED_TEST_P(MainQueueContract, releasesATaskThatHasRun) {
  TypeParam adapter;
  auto captured = std::make_shared<int>();
  const std::weak_ptr<int> remains = captured;
  adapter.queue().async([kept = std::move(captured)] {});
  EXPECT_FALSE(remains.expired());
  adapter.runPending();
  EXPECT_TRUE(remains.expired());
}

REGISTER_TYPED_TEST_SUITE_P(MainQueueContract, runsEachTaskOnceInOrderAfterTheCall,
                            runsTasksOfAllThreadsOnOneThreadInEachThreadsOrder,
                            releasesATaskThatHasRun);

}  // namespace velmora

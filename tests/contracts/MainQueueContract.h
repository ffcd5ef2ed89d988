// What every MainQueue promises. Instantiated with an adapter for each implementation.
#pragma once

#include "platform/MainQueue.h"
#include "tests/support/Threads.h"

#include <gtest/gtest.h>

#include <concepts>
#include <cstddef>
#include <memory>
#include <numeric>
#include <thread>
#include <utility>
#include <vector>

namespace velmora {

template <class Adapter>
concept MainQueueAdapter = std::default_initializable<Adapter> && requires(Adapter& adapter) {
  { adapter.queue() } -> std::convertible_to<MainQueue&>;
  // Runs, on the calling thread, every task given before the call; perhaps also what those give.
  adapter.runPending();
};

template <class Adapter>
class MainQueueContract : public testing::Test {
  static_assert(MainQueueAdapter<Adapter>);

 protected:
  Adapter adapter;
};

TYPED_TEST_SUITE_P(MainQueueContract);

TYPED_TEST_P(MainQueueContract, neverRunsATaskWithinTheCall) {
  bool ran = false;
  this->adapter.queue().async([&ran] { ran = true; });
  EXPECT_FALSE(ran);
  this->adapter.runPending();
  EXPECT_TRUE(ran);
}

TYPED_TEST_P(MainQueueContract, runsEachTaskOnceInTheOrderGiven) {
  std::vector<int> runs;
  for (const int number : {1, 2, 3}) {
    this->adapter.queue().async([&runs, number] { runs.push_back(number); });
  }
  this->adapter.runPending();
  this->adapter.runPending();
  EXPECT_EQ(runs, (std::vector{1, 2, 3}));
}

TYPED_TEST_P(MainQueueContract, runsATaskGivenByATaskAfterThoseThatWait) {
  std::vector<int> runs;
  MainQueue& queue = this->adapter.queue();
  queue.async([&queue, &runs] {
    queue.async([&runs] { runs.push_back(3); });
    runs.push_back(1);
  });
  queue.async([&runs] { runs.push_back(2); });
  this->adapter.runPending();
  this->adapter.runPending();
  EXPECT_EQ(runs, (std::vector{1, 2, 3}));
}

TYPED_TEST_P(MainQueueContract, runsTasksOfAllThreadsOnOneThreadInTheOrderOfEach) {
  constexpr std::size_t threadCount = 4;
  constexpr std::size_t tasksOfEach = 250;
  std::vector<std::vector<std::size_t>> runs(threadCount);
  std::vector<std::thread::id> runners;
  MainQueue& queue = this->adapter.queue();
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
  this->adapter.runPending();

  std::vector<std::size_t> inOrder(tasksOfEach);
  std::iota(inOrder.begin(), inOrder.end(), 0U);
  EXPECT_EQ(runs, std::vector(threadCount, inOrder));
  EXPECT_EQ(runners, std::vector(threadCount * tasksOfEach, std::this_thread::get_id()));
}

TYPED_TEST_P(MainQueueContract, keepsNothingOfATaskThatHasRun) {
  auto captured = std::make_shared<int>();
  const std::weak_ptr<int> remains = captured;
  this->adapter.queue().async([kept = std::move(captured)] {});
  EXPECT_FALSE(remains.expired());
  this->adapter.runPending();
  EXPECT_TRUE(remains.expired());
}

REGISTER_TYPED_TEST_SUITE_P(MainQueueContract, neverRunsATaskWithinTheCall,
                            runsEachTaskOnceInTheOrderGiven,
                            runsATaskGivenByATaskAfterThoseThatWait,
                            runsTasksOfAllThreadsOnOneThreadInTheOrderOfEach,
                            keepsNothingOfATaskThatHasRun);

}  // namespace velmora

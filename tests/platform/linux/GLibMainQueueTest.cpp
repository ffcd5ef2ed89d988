#include "platform/linux/GLibMainQueue.h"
#include "tests/contracts/MainQueueContract.h"

#include <glib.h>
#include <gtest/gtest.h>

#include <latch>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace velmora {
namespace {

class GLibQueueAdapter {
 public:
  MainQueue& queue() { return queue_; }

  void runPending() {
    queue_.async([this] { queue_.quit(); });
    queue_.run();
  }

 private:
  GLibMainQueue queue_;
};

INSTANTIATE_TYPED_TEST_SUITE_P(GLib, MainQueueContract, GLibQueueAdapter);

TEST(GLibMainQueueTest, runsNothingAfterAnEarlierQuit) {
  GLibMainQueue queue;
  bool ran = false;
  queue.async([&ran] { ran = true; });
  queue.quit();
  queue.run();
  EXPECT_FALSE(ran);
}

TEST(GLibMainQueueTest, keepsLaterTasksForTheNextRun) {
  GLibMainQueue queue;
  std::vector<int> runs;
  queue.async([&] {
    runs.push_back(1);
    queue.quit();
  });
  queue.async([&] {
    runs.push_back(2);
    queue.quit();
  });
  queue.run();
  EXPECT_EQ(runs, std::vector{1});
  queue.run();
  EXPECT_EQ(runs, (std::vector{1, 2}));
}

/// The message of the exception that run() throws.
std::string thrownBy(GLibMainQueue& queue) {
  try {
    queue.run();
    return "nothing";
  } catch (const std::runtime_error& error) {
    return error.what();
  }
}

TEST(GLibMainQueueTest, throwsTheExceptionOfATaskAndKeepsLaterTasks) {
  GLibMainQueue queue;
  bool ran = false;
  queue.async([] { throw std::runtime_error("of the task"); });
  queue.async([&] {
    ran = true;
    queue.quit();
  });
  EXPECT_EQ(thrownBy(queue), "of the task");
  EXPECT_FALSE(ran);
  queue.run();
  EXPECT_TRUE(ran);
}

TEST(GLibMainQueueTest, wakesForATaskOfAnotherThread) {
  GLibMainQueue queue;
  std::latch running(1);
  bool ran = false;
  queue.async([&running] { running.count_down(); });
  const std::jthread other([&] {
    running.wait();
    queue.async([&] {
      ran = true;
      queue.quit();
    });
  });
  queue.run();
  EXPECT_TRUE(ran);
}

TEST(GLibMainQueueTest, wakesForAQuitOfAnotherThread) {
  GLibMainQueue queue;
  std::latch running(1);
  queue.async([&running] { running.count_down(); });
  const std::jthread other([&] {
    running.wait();
    queue.quit();
  });
  queue.run();
  EXPECT_TRUE(running.try_wait());
}

TEST(GLibMainQueueTest, runsTheEventSourcesOfLibraries) {
  GLibMainQueue queue;
  const GSourceFunc quit = [](gpointer self) {
    static_cast<GLibMainQueue*>(self)->quit();
    return G_SOURCE_REMOVE;
  };
  g_idle_add(quit, &queue);
  queue.run();
  EXPECT_FALSE(g_main_context_pending(nullptr));
}

}  // namespace
}  // namespace velmora

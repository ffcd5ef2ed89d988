#include "tests/gnustep/SharedObjects.h"

#include <gtest/gtest.h>

#include <dispatch/dispatch.h>

#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace velmora {
namespace {

using Task = std::function<void()>;

void enqueue(Task task) {
  dispatch_async_f(dispatch_get_main_queue(), new Task(std::move(task)), [](void* context) {
    const std::unique_ptr<Task> owned(static_cast<Task*>(context));
    (*owned)();
  });
}

class MainQueueTest : public testing::Test {
 protected:
  std::vector<std::string> ran;
};

TEST_F(MainQueueTest, taskRunsWhenTheQueueIsRunAndNotBefore) {
  enqueue([this] { ran.emplace_back("task"); });
  EXPECT_EQ(ran, std::vector<std::string>());
  EXPECT_EQ(runMainQueue(), 1U);
  EXPECT_EQ(ran, std::vector<std::string>({"task"}));
}

TEST_F(MainQueueTest, taskRunsOnce) {
  enqueue([this] { ran.emplace_back("task"); });
  runMainQueue();
  EXPECT_EQ(runMainQueue(), 0U);
  EXPECT_EQ(ran, std::vector<std::string>({"task"}));
}

TEST_F(MainQueueTest, tasksRunInOrderAndAddedTasksRunLast) {
  enqueue([this] {
    ran.emplace_back("first");
    enqueue([this] { ran.emplace_back("added"); });
  });
  enqueue([this] { ran.emplace_back("second"); });
  EXPECT_EQ(runMainQueue(), 3U);
  EXPECT_EQ(ran, std::vector<std::string>({"first", "second", "added"}));
}

TEST_F(MainQueueTest, tasksOfOtherThreadsRunOnTheThreadThatRunsTheQueue) {
  std::vector<std::thread::id> ranOn;
  std::vector<std::thread> threads;
  for (int count = 0; count < 4; ++count) {
    threads.emplace_back(
        [&ranOn] { enqueue([&ranOn] { ranOn.push_back(std::this_thread::get_id()); }); });
  }
  for (std::thread& thread : threads) {
    thread.join();
  }
  EXPECT_EQ(runMainQueue(), 4U);
  EXPECT_EQ(ranOn, std::vector<std::thread::id>(4, std::this_thread::get_id()));
}

TEST_F(MainQueueTest, resetDropsPendingTasks) {
  dispatch_async_f(dispatch_get_main_queue(), &ran, [](void* context) {
    static_cast<std::vector<std::string>*>(context)->emplace_back("task");
  });
  resetSharedObjects();
  EXPECT_EQ(runMainQueue(), 0U);
  EXPECT_EQ(ran, std::vector<std::string>());
}

TEST(SharedObjectsTest, resetClearsSettingsAndRecords) {
  sharedObjects().groupContainers["group"] = "/container";
  sharedObjects().applicationSupportDirectories = {"/support"};
  sharedObjects().applications["application"] = "/Application.app";
  sharedObjects().openedApplications = {OpenedApplication{.url = "file:///Application.app"}};
  sharedObjects().begunRequests = 1;
  recordLoggedLine("line");
  resetSharedObjects();
  EXPECT_TRUE(sharedObjects().groupContainers.empty());
  EXPECT_TRUE(sharedObjects().applicationSupportDirectories.empty());
  EXPECT_TRUE(sharedObjects().applications.empty());
  EXPECT_TRUE(sharedObjects().openedApplications.empty());
  EXPECT_EQ(sharedObjects().begunRequests, 0);
  EXPECT_TRUE(loggedLines().empty());
}

/// Two equal tests. In either order, the second would find what the first has left.
class LeftoversTest : public testing::TestWithParam<int> {};

TEST_P(LeftoversTest, doNotReachTheNextTest) {
  EXPECT_EQ(runMainQueue(), 0U);
  EXPECT_TRUE(loggedLines().empty());
  dispatch_async_f(dispatch_get_main_queue(), nullptr, [](void*) {});
  recordLoggedLine("line");
}

INSTANTIATE_TEST_SUITE_P(Twice, LeftoversTest, testing::Values(1, 2));

}  // namespace
}  // namespace velmora

// Serves a request while memory runs out.

#include "extension/VelmoraFinderActionExtension.h"
#include "tests/fakes/FakeExtensionHost.h"
#include "tests/fakes/FakePlatform.h"
#include "tests/support/FailingAllocations.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string_view>
#include <utility>
#include <vector>

namespace velmora {
namespace {

/// Allocates nothing, so that only the tested code's allocations count.
class CountingQueue final : public MainQueue {
 public:
  void async(std::function<void()> task) override { task_ = std::move(task); }

  void run() {
    if (task_) {
      std::exchange(task_, nullptr)();
    }
  }

 private:
  std::function<void()> task_;
};

class CountingContext final : public ExtensionContext {
 public:
  std::vector<InputItem> items;
  int completedCount = 0;
  int cancelledCount = 0;
  int lastCode = 0;

  std::vector<InputItem> inputItems() const override { return items; }
  void completeRequest() noexcept override { ++completedCount; }
  void cancelRequest(const RequestError& error) noexcept override {
    ++cancelledCount;
    lastCode = error.code;
  }
};

class CountingLogger final : public Logger {
 public:
  int lineCount = 0;

  void log(std::string_view) noexcept override { ++lineCount; }
};

class SilentNotificationCenter final : public NotificationCenter {
 public:
  void post(std::string_view) noexcept override {}
};

/// A request for two folders, and its platform.
struct Request {
  Request() {
    fake.locations.groupContainers["group.io.tolvane.Velmora"] = "/group container of Velmora";
    fake.languages.tags = {"a language tag of some length", "ja-JP"};
    fake.fileSystem.directories = {"/", "/a folder with a long name", "/a second folder"};
    context->items = {
        ExtensionItem{.attachments = {{answeringPath("/a folder with a long name"),
                                       answering(URLObject{"file:///a%20second%20folder"})}}}};
  }

  FakePlatform fake;
  CountingQueue queue;
  CountingLogger logger;
  SilentNotificationCenter notifications;
  std::shared_ptr<CountingContext> context = std::make_shared<CountingContext>();
  VelmoraFinderActionExtension extension{
      {fake.bundle, fake.fileSystem, fake.fileSystem, fake.paths, fake.locations, fake.defaults,
       fake.languages, notifications, fake.workspace, queue, logger, fake.clock, fake.identifiers}};
};

TEST(FailingAllocations, endTheRequestOnceWithTheHandoffError) {
  const long allocationCount =
      failEachAllocation([] { return Request(); },
                         [](Request& request) {
                           request.extension.beginRequestWithExtensionContext(request.context);
                           request.queue.run();
                         },
                         [](const Request& request, const Attempt& attempt) {
                           const CountingContext& context = *request.context;
                           EXPECT_FALSE(attempt.hasThrown);
                           EXPECT_EQ(context.completedCount + context.cancelledCount, 1);
                           EXPECT_TRUE(attempt.hasFailed || context.completedCount == 1);
                           if (context.cancelledCount == 1) {
                             EXPECT_EQ(context.lastCode, 2);
                             EXPECT_EQ(request.logger.lineCount, 1);
                             EXPECT_TRUE(request.fake.fileSystem.files.empty());
                           }
                         });
  EXPECT_GT(allocationCount, 20);
}

}  // namespace
}  // namespace velmora

// Serves a request again and again, each time with another of its memory allocations failing.

#include "extension/VelmoraFinderActionExtension.h"
#include "tests/support/FailingAllocations.h"
#include "tests/fakes/FakeExtensionHost.h"
#include "tests/fakes/FakePlatform.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string_view>
#include <utility>
#include <vector>

namespace velmora {
namespace {

/// Allocates nothing, so that only the failures of what is tested count.
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
  explicit CountingContext(std::vector<InputItem> items) : items_(std::move(items)) {}

  std::vector<InputItem> inputItems() const override { return items_; }
  void completeRequest() noexcept override { ++completedCount; }
  void cancelRequest(const RequestError& error) noexcept override {
    ++cancelledCount;
    lastCode = error.code;
  }

  int completedCount = 0;
  int cancelledCount = 0;
  int lastCode = 0;

 private:
  std::vector<InputItem> items_;
};

class SilentLogger final : public Logger {
 public:
  void log(std::string_view) noexcept override { ++lineCount; }

  int lineCount = 0;
};

class SilentNotificationCenter final : public NotificationCenter {
 public:
  void post(std::string_view) noexcept override {}
};

class FailingAllocations : public testing::TestWithParam<MemoryShortage> {
 protected:
  FailingAllocations() {
    fake.locations.groupContainers["group.io.tolvane.Velmora"] = "/group container of Velmora";
    fake.languages.tags = {"a language tag of some length", "ja-JP"};
    fake.fileSystem.directories = {"/", "/a folder with a long name", "/a second folder"};
  }
  ~FailingAllocations() override { letAllocationsSucceed(); }

  /// Whether the request was served without reaching the failing allocation.
  bool serve(long successfulAllocations) {
    fake.fileSystem.files.clear();
    fake.journal.clear();
    Platform platform = fake.platform();
    Platform silent{platform.bundle,
                    platform.fileReader,
                    platform.fileWriter,
                    platform.paths,
                    platform.locations,
                    platform.defaults,
                    platform.languages,
                    notifications,
                    platform.workspace,
                    queue,
                    logger,
                    platform.clock,
                    platform.identifiers};
    const VelmoraFinderActionExtension extension(silent);
    const auto context = std::make_shared<CountingContext>(std::vector<InputItem>{
        ExtensionItem{.attachments = {{answeringPath("/a folder with a long name"),
                                       answering(URLObject{"file:///a%20second%20folder"})}}}});
    logger.lineCount = 0;
    failAllocations(successfulAllocations, GetParam());
    extension.beginRequestWithExtensionContext(context);
    queue.run();
    const bool wasServed = !letAllocationsSucceed();
    expectOneEnd(*context);
    return wasServed;
  }

  void expectOneEnd(const CountingContext& context) const {
    EXPECT_EQ(context.completedCount + context.cancelledCount, 1);
    if (context.cancelledCount == 1) {
      EXPECT_EQ(context.lastCode, 2);
      EXPECT_EQ(logger.lineCount, 1);
      EXPECT_TRUE(fake.fileSystem.files.empty());
    }
  }

  FakePlatform fake;
  CountingQueue queue;
  SilentLogger logger;
  SilentNotificationCenter notifications;
};

TEST_P(FailingAllocations, endTheRequestOnceWithTheHandoffError) {
  long allocationCount = 0;
  while (!serve(allocationCount) && !HasFailure()) {
    ++allocationCount;
  }
  EXPECT_GT(allocationCount, 20);
}

INSTANTIATE_TEST_SUITE_P(OnceOrForGood, FailingAllocations,
                         testing::Values(MemoryShortage::once, MemoryShortage::forGood));

}  // namespace
}  // namespace velmora

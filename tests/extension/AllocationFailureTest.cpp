// Serves a request again and again, each time with another of its memory allocations failing.

#include "extension/VelmoraFinderActionExtension.h"
#include "tests/fakes/FakeExtensionHost.h"
#include "tests/fakes/FakePlatform.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <new>

namespace {

/// How many more allocations succeed; negative: all.
std::atomic<long> allocationsUntilFailure = -1;
std::atomic<bool> failsFromThenOn = false;

bool fails() {
  if (allocationsUntilFailure < 0) {
    return false;
  }
  if (allocationsUntilFailure == 0) {
    if (!failsFromThenOn) {
      allocationsUntilFailure = -1;
    }
    return true;
  }
  --allocationsUntilFailure;
  return false;
}

}  // namespace

void* operator new(std::size_t size) {
  void* memory = fails() ? nullptr : std::malloc(size);
  if (memory == nullptr) {
    throw std::bad_alloc();
  }
  return memory;
}

void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }

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

class FailingAllocations : public testing::TestWithParam<bool> {
 protected:
  FailingAllocations() {
    fake.locations.groupContainers["group.io.tolvane.Velmora"] = "/group container of Velmora";
    fake.languages.tags = {"a language tag of some length", "ja-JP"};
    fake.fileSystem.directories = {"/", "/a folder with a long name", "/a second folder"};
  }
  ~FailingAllocations() override { allocationsUntilFailure = -1; }

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
                                       answering(DataBlob{"file:///a%20second%20folder"})}}}});
    logger.lineCount = 0;
    failsFromThenOn = GetParam();
    allocationsUntilFailure = successfulAllocations;
    extension.beginRequestWithExtensionContext(context);
    queue.run();
    const bool wasServed = allocationsUntilFailure > 0;
    allocationsUntilFailure = -1;
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

INSTANTIATE_TEST_SUITE_P(OnceOrForGood, FailingAllocations, testing::Bool());

}  // namespace
}  // namespace velmora

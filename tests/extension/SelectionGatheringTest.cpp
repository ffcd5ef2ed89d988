#include "extension/SelectionGathering.h"
#include "platform/PlatformError.h"
#include "tests/fakes/FakeExtensionHost.h"
#include "tests/fakes/FakePlatform.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <functional>
#include <memory>
#include <new>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace velmora {
namespace {

using Providers = std::vector<std::shared_ptr<ItemProvider>>;
using URLs = std::vector<FileURL>;

TEST(FileURLFromLoadedItem, takesFileURLsOnly) {
  struct Row {
    const char* name;
    LoadedItem item;
    std::optional<FileURL> url;
  };
  const Row rows[] = {{"nothing", std::monostate(), std::nullopt},
                      {"URL", FileURL{"/a b"}, FileURL{"/a b"}},
                      {"URL object", URLObject{"file:///a%20b"}, FileURL{"/a b"}},
                      {"URL object of the web", URLObject{"https://a/b"}, std::nullopt},
                      {"empty URL object", URLObject{""}, std::nullopt},
                      {"URL object of a path", URLObject{"/a"}, std::nullopt},
                      {"URL object of no text", URLObject{"file:///\xff"}, std::nullopt},
                      {"anything else", UnusableItem(), std::nullopt}};
  for (const Row& row : rows) {
    EXPECT_EQ(fileURLFromLoadedItem(row.item), row.url) << row.name;
  }
}

TEST(FileURLProviders, areThoseOfFileURLsInTheOrderOfItemsAndAttachments) {
  const auto image = answeringPath("/image");
  image->conformsToFileURL = false;
  const Providers all = {answeringPath("/0"), answeringPath("/1"), answeringPath("/2")};
  const FakeExtensionContext context(
      {ForeignObject(), ExtensionItem{.attachments = Providers{image, all[0], image, all[1]}},
       ExtensionItem{.attachments = std::nullopt}, ExtensionItem{.attachments = Providers{all[2]}},
       ForeignObject()});
  EXPECT_EQ(fileURLProviders(context), all);
}

class LoadingFileURLs : public testing::Test {
 protected:
  void load(const Providers& providers) {
    loadFileURLs(providers, queue, [this](GatheredFileURLs urls) {
      ++finalStepCount;
      gathered = std::move(urls);
    });
  }

  GatheredFileURLs finish() {
    queue.runAll();
    EXPECT_EQ(std::exchange(finalStepCount, 0), 1);
    return gathered;
  }

  FakeMainQueue queue;
  int finalStepCount = 0;
  GatheredFileURLs gathered;
};

std::shared_ptr<ItemProvider> answeringWithError(LoadedItem item) {
  return std::make_shared<FakeItemProvider>([item = std::move(item)](const auto& completion) {
    const PlatformError error = posixError(EIO);
    completion(item, &error);
  });
}

std::shared_ptr<ItemProvider> throwingProvider(const std::function<void()>& fault,
                                               const char* pathBefore = nullptr) {
  return std::make_shared<FakeItemProvider>([=](const auto& completion) {
    if (pathBefore != nullptr) {
      completion(FileURL{pathBefore}, nullptr);
    }
    fault();
  });
}

TEST_F(LoadingFileURLs, returnsTheDeliveredURLsUnlessMemoryRanOut) {
  const std::function<void()> fault = throwing(std::runtime_error("no such item"));
  struct Row {
    const char* name;
    Providers providers;
    GatheredFileURLs urls;
  };
  const Row rows[] = {
      {"no gap for loads that fail",
       {answeringPath("/a"), answering(std::monostate()), answering(UnusableItem()),
        answering(URLObject{"file:///b"})},
       {{{"/a"}, {"/b"}}}},
      {"repetitions", {answeringPath("/a"), answeringPath("/a")}, {{{"/a"}, {"/a"}}}},
      {"error beside an item", {answeringWithError(FileURL{"/a"})}, {{{"/a"}}}},
      {"error without an item",
       {answeringWithError(std::monostate()), answeringPath("/b")},
       {{{"/b"}}}},
      {"provider that throws", {throwingProvider(fault), answeringPath("/b")}, {{{"/b"}}}},
      {"provider that throws afterwards", {throwingProvider(fault, "/a")}, {{{"/a"}}}},
      {"no memory in a provider",
       {throwingProvider(throwing(std::bad_alloc())), answeringPath("/b")},
       std::nullopt},
      {"no memory in a provider afterwards",
       {throwingProvider(throwing(std::bad_alloc()), "/a")},
       {{{"/a"}}}},
      {"no memory for an item", {answeringPath("/a"), answering(OutOfMemory())}, std::nullopt}};
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    load(row.providers);
    EXPECT_EQ(finalStepCount, 0);
    EXPECT_EQ(queue.pendingTaskCount(), 1U);
    EXPECT_EQ(finish(), row.urls);
  }
}

TEST_F(LoadingFileURLs, startsEveryLoadAndKeepsTheirOrder) {
  const PendingLoad loads[12];
  Providers providers;
  URLs expected;
  for (const PendingLoad& load : loads) {
    expected.push_back({.path = "/" + std::to_string(providers.size())});
    providers.push_back(load.provider());
  }
  load(providers);
  for (std::size_t number = std::size(loads); number-- > 0;) {
    EXPECT_TRUE(loads[number].hasStarted());
    queue.runAll();
    EXPECT_EQ(finalStepCount, 0);
    loads[number].answer(expected[number]);
  }
  EXPECT_EQ(finish(), expected);
}

TEST_F(LoadingFileURLs, takesTheFirstAnswerOfAProviderOnly) {
  const PendingLoad twice;
  const PendingLoad once;
  load({twice.provider(), once.provider()});
  twice.answer(std::monostate());
  twice.answerPath("/late");
  EXPECT_EQ(queue.pendingTaskCount(), 0U);
  once.answerPath("/b");
  EXPECT_EQ(finish(), (URLs{{"/b"}}));
  once.answerPath("/c");
  EXPECT_EQ(queue.pendingTaskCount(), 0U);
}

TEST_F(LoadingFileURLs, endsAtOnceWhenTheMainQueueCannotBeReached) {
  queue.failure = throwing(std::bad_alloc());
  gathered = URLs();
  load({answeringPath("/a")});
  EXPECT_EQ(finalStepCount, 1);
  EXPECT_EQ(gathered, std::nullopt);
}

TEST_F(LoadingFileURLs, releasesTheFinalStepAfterItRan) {
  const PendingLoad keptForEver;
  auto owned = std::make_shared<int>(0);
  const std::weak_ptr<int> watched = owned;
  loadFileURLs({keptForEver.provider()}, queue,
               [kept = std::move(owned)](const GatheredFileURLs&) { ++*kept; });
  keptForEver.answerPath("/a");
  queue.runAll();
  EXPECT_TRUE(watched.expired());
}

}  // namespace
}  // namespace velmora

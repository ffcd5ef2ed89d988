#include "extension/SelectionGathering.h"
#include "tests/support/RowName.h"
#include "tests/fakes/FakeExtensionHost.h"
#include "tests/fakes/FakePlatform.h"

#include <gtest/gtest.h>

#include <new>
#include <stdexcept>
#include <string>

namespace velmora {
namespace {

using Providers = std::vector<std::shared_ptr<ItemProvider>>;

struct ItemCase {
  const char* name;
  LoadedItem item;
  std::optional<FileURL> url;
};

class FileURLFromLoadedItem : public testing::TestWithParam<ItemCase> {};

TEST_P(FileURLFromLoadedItem, takesFileURLsOnly) {
  EXPECT_EQ(fileURLFromLoadedItem(GetParam().item), GetParam().url);
}

INSTANTIATE_TEST_SUITE_P(
    Items, FileURLFromLoadedItem,
    testing::Values(ItemCase{"nothing", std::monostate(), std::nullopt},
                    ItemCase{"url", FileURL{"/a b"}, FileURL{"/a b"}},
                    ItemCase{"urlObject", URLObject{"file:///a%20b"}, FileURL{"/a b"}},
                    ItemCase{"urlObjectOfTheWeb", URLObject{"https://a/b"}, std::nullopt},
                    ItemCase{"emptyURLObject", URLObject{""}, std::nullopt},
                    ItemCase{"urlObjectOfAPath", URLObject{"/a"}, std::nullopt},
                    ItemCase{"urlObjectOfNoText", URLObject{"file:///\xff"}, std::nullopt},
                    ItemCase{"anythingElse", UnusableItem(), std::nullopt}),
    RowName());

TEST(FileURLProviders, keepTheOrderOfItemsAndAttachments) {
  const Providers all = {answeringPath("/0"), answeringPath("/1"), answeringPath("/2")};
  const FakeExtensionContext context({ExtensionItem{.attachments = Providers{all[0], all[1]}},
                                      ExtensionItem{.attachments = Providers{all[2]}}});
  EXPECT_EQ(fileURLProviders(context), all);
}

TEST(FileURLProviders, passOverForeignObjectsAndMissingAttachments) {
  const Providers only = {answeringPath("/0")};
  const FakeExtensionContext context({ForeignObject(), ExtensionItem{.attachments = std::nullopt},
                                      ExtensionItem{.attachments = only}, ForeignObject()});
  EXPECT_EQ(fileURLProviders(context), only);
}

TEST(FileURLProviders, passOverAttachmentsThatOfferNoFileURL) {
  const auto image = answeringPath("/image");
  image->conformsToFileURL = false;
  const auto folder = answeringPath("/folder");
  EXPECT_EQ(fileURLProviders(*contextWith({image, folder, image})), Providers{folder});
}

class LoadingFileURLs : public testing::Test {
 protected:
  void load(const Providers& providers) {
    loadFileURLs(providers, queue, [this](GatheredFileURLs urls) {
      ++finalStepCount;
      gathered = std::move(urls);
    });
  }

  std::vector<FileURL> finish() {
    queue.runAll();
    EXPECT_EQ(finalStepCount, 1);
    return gathered.value();
  }

  FakeMainQueue queue;
  int finalStepCount = 0;
  GatheredFileURLs gathered;
};

TEST_F(LoadingFileURLs, waitsForTheMainQueueEvenWhenAllAnswerAtOnce) {
  load({answeringPath("/a"), answeringPath("/b")});
  EXPECT_EQ(finalStepCount, 0);
  EXPECT_EQ(queue.pendingTaskCount(), 1U);
  EXPECT_EQ(finish(), (std::vector<FileURL>{{"/a"}, {"/b"}}));
}

TEST_F(LoadingFileURLs, startsEveryLoadBeforeAnyAnswer) {
  const PendingLoad first;
  const PendingLoad second;
  const Providers providers = {first.provider(), second.provider()};
  load(providers);
  EXPECT_TRUE(first.hasStarted());
  EXPECT_TRUE(second.hasStarted());
  EXPECT_EQ(queue.pendingTaskCount(), 0U);
}

TEST_F(LoadingFileURLs, restoresTheOrderOfTheProviders) {
  const PendingLoad loads[3];
  load({loads[0].provider(), loads[1].provider(), loads[2].provider()});
  loads[2].answerPath("/2");
  loads[1].answerPath("/1");
  EXPECT_EQ(queue.pendingTaskCount(), 0U);
  loads[0].answerPath("/0");
  EXPECT_EQ(finish(), (std::vector<FileURL>{{"/0"}, {"/1"}, {"/2"}}));
}

TEST_F(LoadingFileURLs, ordersByNumberNotByText) {
  std::vector<FileURL> expected;
  Providers providers;
  for (int index = 0; index < 12; ++index) {
    expected.push_back({.path = "/" + std::to_string(index)});
    providers.push_back(answering(expected.back()));
  }
  load(providers);
  EXPECT_EQ(finish(), expected);
}

TEST_F(LoadingFileURLs, leavesNoGapForLoadsThatFail) {
  load({answeringPath("/a"), answering(std::monostate()), answering(UnusableItem()),
        answering(URLObject{"file:///b"})});
  EXPECT_EQ(finish(), (std::vector<FileURL>{{"/a"}, {"/b"}}));
}

TEST_F(LoadingFileURLs, keepsRepetitions) {
  load({answeringPath("/a"), answeringPath("/a")});
  EXPECT_EQ(finish(), (std::vector<FileURL>{{"/a"}, {"/a"}}));
}

TEST_F(LoadingFileURLs, ignoresTheErrorBesideAnItem) {
  const auto provider = std::make_shared<FakeItemProvider>([](const auto& completion) {
    const PlatformError error = posixError(EIO);
    completion(FileURL{"/a"}, &error);
  });
  load({provider});
  EXPECT_EQ(finish(), (std::vector<FileURL>{{"/a"}}));
}

TEST_F(LoadingFileURLs, dropsAnErrorWithoutAnItem) {
  const auto provider = std::make_shared<FakeItemProvider>([](const auto& completion) {
    const PlatformError error = posixError(EIO);
    completion(std::monostate(), &error);
  });
  load({provider, answeringPath("/b")});
  EXPECT_EQ(finish(), (std::vector<FileURL>{{"/b"}}));
}

TEST_F(LoadingFileURLs, countsTheFirstAnswerOfAProviderOnly) {
  const PendingLoad twice;
  const PendingLoad once;
  load({twice.provider(), once.provider()});
  twice.answer(std::monostate());
  twice.answerPath("/late");
  EXPECT_EQ(queue.pendingTaskCount(), 0U);
  once.answerPath("/b");
  EXPECT_EQ(finish(), (std::vector<FileURL>{{"/b"}}));
}

TEST_F(LoadingFileURLs, ignoresAnAnswerAfterTheEnd) {
  const PendingLoad pending;
  load({pending.provider()});
  pending.answerPath("/a");
  EXPECT_EQ(finish(), (std::vector<FileURL>{{"/a"}}));
  pending.answerPath("/b");
  EXPECT_EQ(queue.pendingTaskCount(), 0U);
}

TEST_F(LoadingFileURLs, takesAProviderThatThrowsForOneThatDeliversNothing) {
  const auto throwing = std::make_shared<FakeItemProvider>(
      [](const auto&) { throw std::runtime_error("no such item"); });
  load({throwing, answeringPath("/b")});
  EXPECT_EQ(finish(), (std::vector<FileURL>{{"/b"}}));
}

TEST_F(LoadingFileURLs, keepsTheAnswerOfAProviderThatThrowsAfterwards) {
  const auto throwing = std::make_shared<FakeItemProvider>([](const auto& completion) {
    completion(FileURL{"/a"}, nullptr);
    throw std::runtime_error("too late");
  });
  load({throwing});
  EXPECT_EQ(finish(), (std::vector<FileURL>{{"/a"}}));
}

TEST_F(LoadingFileURLs, neverEndsWhileAProviderIsSilent) {
  const PendingLoad silent;
  load({answeringPath("/a"), silent.provider()});
  queue.runAll();
  EXPECT_EQ(finalStepCount, 0);
}

TEST_F(LoadingFileURLs, saysSoWhenMemoryRanOut) {
  const auto starving =
      std::make_shared<FakeItemProvider>([](const auto&) { throw std::bad_alloc(); });
  load({starving, answeringPath("/b")});
  queue.runAll();
  EXPECT_EQ(finalStepCount, 1);
  EXPECT_EQ(gathered, std::nullopt);
}

TEST_F(LoadingFileURLs, saysSoWhenThereWasNoMemoryForAnItem) {
  load({answeringPath("/a"), answering(OutOfMemory())});
  queue.runAll();
  EXPECT_EQ(finalStepCount, 1);
  EXPECT_EQ(gathered, std::nullopt);
}

TEST_F(LoadingFileURLs, endsAtOnceWhenTheMainQueueCannotBeReached) {
  queue.failure = throwing(std::bad_alloc());
  load({answeringPath("/a")});
  EXPECT_EQ(finalStepCount, 1);
  EXPECT_EQ(gathered, std::nullopt);
}

TEST(LoadingFileURLsLifetime, letsTheFinalStepGoAfterItRan) {
  FakeMainQueue queue;
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

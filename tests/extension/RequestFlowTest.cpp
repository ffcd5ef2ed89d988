#include "extension/RequestFlow.h"
#include "tests/support/RowName.h"
#include "tests/fakes/FakeExtensionHost.h"
#include "tests/fakes/FakePlatform.h"
#include "tests/fakes/RecordedWarps.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <new>
#include <stdexcept>

namespace velmora {
namespace {

constexpr const char* restoreIdentifier = "io.tolvane.Velmora.FinderRestoreAction";

/// Folders /a and /b, a plain file, a group container, and the application.
class RequestFlow : public testing::Test {
 protected:
  RequestFlow() {
    fake.locations.groupContainers["group.io.tolvane.Velmora"] = "/C";
    fake.workspace.installedApplications["io.tolvane.Velmora"] = "/Velmora";
    fake.fileSystem.directories = {"/", "/a", "/b"};
    fake.fileSystem.files["/file"] = "plain";
  }

  void begin(std::vector<std::shared_ptr<ItemProvider>> providers) {
    begin(contextWith(std::move(providers)));
  }

  void begin(const std::shared_ptr<FakeExtensionContext>& context) {
    ends = context->ends;
    beginRequest(context, fake.platform());
  }

  void expectCompleted() const {
    EXPECT_EQ(ends->completedCount, 1);
    EXPECT_EQ(ends->cancelledCount, 0);
    EXPECT_TRUE(fake.logger.lines.empty());
  }

  /// Cancelled once, with this code and description; nothing written, posted or opened.
  void expectCancelled(int code, const char* description) const {
    EXPECT_EQ(ends->completedCount, 0);
    ASSERT_EQ(ends->cancelledCount, 1);
    EXPECT_EQ(ends->errors[0], (RequestError{.domain = "io.tolvane.Velmora.FinderAction",
                                             .code = code,
                                             .localizedDescription = description}));
    EXPECT_TRUE(fake.journal.empty());
  }

  void expectSelectionError() const {
    expectCancelled(1, "Select one or more normal folders to Warp to Velmora.");
    EXPECT_TRUE(fake.logger.lines.empty());
  }

  void expectHandoffError(const std::string& description) const {
    expectCancelled(2, "Velmora could not start this Warp action. Open Velmora and try again.");
    EXPECT_EQ(fake.logger.lines,
              std::vector<std::string>{"Velmora Finder Action handoff failed: " + description});
  }

  FakePlatform fake;
  std::shared_ptr<RequestEnds> ends;
};

const std::string requestPath = "/C/Warp/FinderHandoff/00000000-0000-4000-8000-000000000001.json";

TEST_F(RequestFlow, writesThenPostsThenOpensThenCompletes) {
  begin({answeringPath("/b"), answeringPath("/a")});
  EXPECT_EQ(ends->count(), 0);
  fake.mainQueue.runAll();
  expectCompleted();
  EXPECT_EQ(fake.journal, (Journal{"write " + requestPath, "post io.tolvane.Velmora.finderHandoff",
                                   "open /Velmora"}));
  EXPECT_EQ(fake.fileSystem.files[requestPath],
            "{\n  \"action\" : \"warpFolder\",\n  \"createdAt\" : \"1970-01-01T00:00:00Z\",\n"
            "  \"folderPaths\" : [\n    \"\\/b\",\n    \"\\/a\"\n  ]\n}");
}

TEST_F(RequestFlow, handsTheSelectionOverInItsOrderWhateverTheOrderOfTheLoads) {
  const PendingLoad first;
  const PendingLoad second;
  begin({first.provider(), second.provider()});
  second.answerPath("/b");
  first.answerPath("/a");
  fake.mainQueue.runAll();
  EXPECT_NE(fake.fileSystem.files[requestPath].find("\"\\/a\",\n    \"\\/b\""), std::string::npos);
}

TEST_F(RequestFlow, handsAFolderOfferedTwiceOverOnce) {
  begin(std::make_shared<FakeExtensionContext>(std::vector<InputItem>{
      ExtensionItem{.attachments = {{answeringPath("/a")}}},
      ExtensionItem{.attachments = {{answeringPath("/a/"), answeringPath("/a")}}}}));
  fake.mainQueue.runAll();
  EXPECT_NE(fake.fileSystem.files[requestPath].find("[\n    \"\\/a\"\n  ]"), std::string::npos);
}

TEST_F(RequestFlow, handsTheSuitableItemsOverAndCompletes) {
  begin({answeringPath("/file"), answering(UnusableItem()), answeringPath("/a")});
  fake.mainQueue.runAll();
  expectCompleted();
  EXPECT_NE(fake.fileSystem.files[requestPath].find("[\n    \"\\/a\"\n  ]"), std::string::npos);
}

TEST_F(RequestFlow, performsRestoreUnderTheRestoreIdentifier) {
  fake.bundle.identifier = restoreIdentifier;
  recordWarp(fake, "/a", "warp");
  begin({answeringPath("/a"), answeringPath("/b")});
  fake.mainQueue.runAll();
  expectCompleted();
  EXPECT_NE(fake.fileSystem.files[requestPath].find("\"restoreMarkerFolder\""), std::string::npos);
}

TEST_F(RequestFlow, asksForTheActionAgainWhenItEnds) {
  const PendingLoad load;
  begin({load.provider()});
  fake.bundle.identifier = restoreIdentifier;
  load.answerPath("/a");
  fake.mainQueue.runAll();
  expectCancelled(1, "Select a warped Velmora item to restore.");
}

TEST_F(RequestFlow, completesWithoutTheApplication) {
  fake.workspace.installedApplications.clear();
  begin({answeringPath("/a")});
  fake.mainQueue.runAll();
  expectCompleted();
  EXPECT_TRUE(fake.fileSystem.exists(requestPath));
}

struct EmptySelectionCase {
  const char* name;
  std::vector<InputItem> items;
};

class RequestFlowOfEmptySelection : public RequestFlow,
                                    public testing::WithParamInterface<EmptySelectionCase> {};

TEST_P(RequestFlowOfEmptySelection, isCancelledWithinTheCall) {
  begin(std::make_shared<FakeExtensionContext>(GetParam().items));
  expectSelectionError();
  EXPECT_EQ(fake.mainQueue.pendingTaskCount(), 0U);
}

std::shared_ptr<FakeItemProvider> image() {
  const auto provider = answeringPath("/a");
  provider->conformsToFileURL = false;
  return provider;
}

INSTANTIATE_TEST_SUITE_P(
    Selections, RequestFlowOfEmptySelection,
    testing::Values(
        EmptySelectionCase{"noItem", {}}, EmptySelectionCase{"foreignObject", {ForeignObject()}},
        EmptySelectionCase{"missingAttachments", {ExtensionItem{.attachments = std::nullopt}}},
        EmptySelectionCase{
            "noAttachment",
            {ExtensionItem{.attachments = std::vector<std::shared_ptr<ItemProvider>>()}}},
        EmptySelectionCase{"noFileURL", {ExtensionItem{.attachments = {{image()}}}}}),
    RowName());

TEST_F(RequestFlow, cancelsOnTheMainQueueWhenEveryLoadFails) {
  begin({answering(std::monostate()), answering(UnusableItem())});
  EXPECT_EQ(ends->count(), 0);
  fake.mainQueue.runAll();
  expectSelectionError();
}

TEST_F(RequestFlow, cancelsWhenNothingSuits) {
  begin({answeringPath("/file")});
  fake.mainQueue.runAll();
  expectSelectionError();
  EXPECT_FALSE(fake.fileSystem.exists("/C/Warp"));
}

TEST_F(RequestFlow, cancelsAndLogsWithoutASharedLocation) {
  fake.locations.groupContainers.clear();
  begin({answeringPath("/a")});
  fake.mainQueue.runAll();
  expectHandoffError("The file doesn’t exist.");
}

TEST_F(RequestFlow, cancelsAndLogsWhenTheDirectoryCannotBeMade) {
  fake.fileSystem.createDirectoriesFailure = throwing(posixError(EACCES));
  begin({answeringPath("/a")});
  fake.mainQueue.runAll();
  expectHandoffError("Permission denied");
}

TEST_F(RequestFlow, cancelsAndLogsWhenTheFileCannotBeWritten) {
  fake.fileSystem.writeFailure = throwing(posixError(ENOSPC));
  begin({answeringPath("/a")});
  fake.mainQueue.runAll();
  expectHandoffError("No space left on device");
}

TEST_F(RequestFlow, logsAPercentSignAsItIs) {
  fake.fileSystem.writeFailure =
      throwing(PlatformError(cocoaErrorDomain, 512, "“100% %s%n” could not be saved."));
  begin({answeringPath("/a")});
  fake.mainQueue.runAll();
  expectHandoffError("“100% %s%n” could not be saved.");
}

TEST_F(RequestFlow, cancelsAndLogsAnyOtherError) {
  fake.fileSystem.writeFailure = throwing(std::runtime_error("unforeseen"));
  begin({answeringPath("/a")});
  fake.mainQueue.runAll();
  expectHandoffError("unforeseen");
}

TEST_F(RequestFlow, endsWithTheHandoffErrorWhenScreeningRunsOutOfMemory) {
  fake.fileSystem.entryNamesFailure = throwing(std::bad_alloc());
  begin({answeringPath("/a")});
  fake.mainQueue.runAll();
  expectHandoffError("Cannot allocate memory");
}

TEST_F(RequestFlow, endsWithTheHandoffErrorWhenALoadRunsOutOfMemory) {
  begin({std::make_shared<FakeItemProvider>([](const auto&) { throw std::bad_alloc(); })});
  fake.mainQueue.runAll();
  expectHandoffError("Cannot allocate memory");
}

TEST_F(RequestFlow, endsWithTheHandoffErrorWhenTheMainQueueCannotBeReached) {
  fake.mainQueue.failure = throwing(std::bad_alloc());
  begin({answeringPath("/a")});
  expectHandoffError("Cannot allocate memory");
}

TEST_F(RequestFlow, cancelsAFailedRestoreWithItsOwnMessage) {
  fake.bundle.identifier = restoreIdentifier;
  recordWarp(fake, "/a", "warp");
  fake.fileSystem.writeFailure = throwing(posixError(EIO));
  begin({answeringPath("/a")});
  fake.mainQueue.runAll();
  expectCancelled(2, "Velmora could not start this Restore action. Open Velmora and try again.");
}

class FailingLanguages final : public PreferredLanguages {
 public:
  std::vector<Text> preferredLanguages() const override { throw std::runtime_error("no answer"); }
};

TEST_F(RequestFlow, cancelsWithoutASentenceWhenNoneCanBeLookedUp) {
  const FailingLanguages languages;
  const Platform whole = fake.platform();
  const Platform platform = {.bundle = whole.bundle,
                             .fileReader = whole.fileReader,
                             .fileWriter = whole.fileWriter,
                             .paths = whole.paths,
                             .locations = whole.locations,
                             .defaults = whole.defaults,
                             .languages = languages,
                             .notifications = whole.notifications,
                             .workspace = whole.workspace,
                             .mainQueue = whole.mainQueue,
                             .logger = whole.logger,
                             .clock = whole.clock,
                             .identifiers = whole.identifiers};
  // Nothing that suits, so that the first look-up of a sentence is the selection error's.
  const auto context = contextWith({});
  beginRequest(context, platform);
  ASSERT_EQ(context->ends->count(), 1);
  EXPECT_EQ(context->ends->errors,
            (std::vector<RequestError>{{.domain = "io.tolvane.Velmora.FinderAction", .code = 2}}));
  EXPECT_EQ(fake.logger.lines.size(), 1U);
}

TEST_F(RequestFlow, neverEndsWhileALoadIsSilent) {
  const PendingLoad silent;
  begin({answeringPath("/a"), silent.provider()});
  fake.mainQueue.runAll();
  EXPECT_EQ(ends->count(), 0);
}

TEST_F(RequestFlow, holdsTheContextUntilTheEndAndNoLonger) {
  const PendingLoad keptForEver;
  auto context = contextWith({keptForEver.provider()});
  const std::weak_ptr<FakeExtensionContext> watched = context;
  begin(context);
  context.reset();
  EXPECT_FALSE(watched.expired());
  keptForEver.answerPath("/a");
  fake.mainQueue.runAll();
  EXPECT_TRUE(watched.expired());
  expectCompleted();
}

TEST_F(RequestFlow, servesRequestsInFlightApartFromEachOther) {
  const PendingLoad first;
  const PendingLoad second;
  begin({first.provider()});
  const std::shared_ptr<RequestEnds> firstEnds = ends;
  begin({second.provider()});
  second.answerPath("/file");
  fake.mainQueue.runAll();
  EXPECT_EQ(firstEnds->count(), 0);
  EXPECT_EQ(ends->cancelledCount, 1);
  first.answerPath("/a");
  fake.mainQueue.runAll();
  EXPECT_EQ(firstEnds->completedCount, 1);
  EXPECT_EQ(ends->count(), 1);
}

}  // namespace
}  // namespace velmora

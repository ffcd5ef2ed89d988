#include "extension/RequestFlow.h"
#include "platform/PlatformError.h"
#include "tests/fakes/FakeExtensionHost.h"
#include "tests/fakes/FakePlatform.h"
#include "tests/fakes/RecordedWarps.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <functional>
#include <memory>
#include <new>
#include <stdexcept>
#include <string>
#include <vector>

namespace velmora {
namespace {

using Providers = std::vector<std::shared_ptr<ItemProvider>>;

constexpr const char* restoreIdentifier = "io.tolvane.Velmora.FinderRestoreAction";
const std::string requestPath = "/C/Warp/FinderHandoff/00000000-0000-4000-8000-000000000001.json";

/// Folders /a and /b, a plain file, a group container, and the application; and a request.
class Requested {
 public:
  Requested() {
    fake.locations.groupContainers["group.io.tolvane.Velmora"] = "/C";
    fake.workspace.installedApplications["io.tolvane.Velmora"] = "/Velmora";
    fake.fileSystem.directories = {"/", "/a", "/b"};
    fake.fileSystem.files["/file"] = "plain";
  }

  void begin(const std::shared_ptr<FakeExtensionContext>& context) {
    begin(context, fake.platform());
  }

  void begin(const std::shared_ptr<FakeExtensionContext>& context, const Platform& platform) {
    ends = context->ends;
    ends->journal = &fake.journal;
    beginRequest(context, platform);
  }

  void serve(Providers providers) {
    begin(contextWith(std::move(providers)));
    fake.mainQueue.runAll();
  }

  void expectCompleted() const {
    EXPECT_EQ(ends->completedCount, 1);
    EXPECT_EQ(ends->cancelledCount, 0);
    EXPECT_TRUE(fake.logger.lines.empty());
  }

  /// Expects one cancellation with this code and description, after these events.
  void expectCancelled(int code, const char* description, Journal events = {}) const {
    EXPECT_EQ(ends->completedCount, 0);
    EXPECT_EQ(ends->errors, (std::vector<RequestError>{{.domain = "io.tolvane.Velmora.FinderAction",
                                                        .code = code,
                                                        .localizedDescription = description}}));
    events.push_back("cancel " + std::to_string(code));
    EXPECT_EQ(fake.journal, events);
  }

  void expectSelectionError() const {
    expectCancelled(1, "Select one or more normal folders to Warp to Velmora.");
    EXPECT_TRUE(fake.logger.lines.empty());
  }

  void expectHandoffError(const std::string& description) const {
    expectCancelled(2, "Velmora could not start this Warp action. Open Velmora and try again.",
                    {"log"});
    EXPECT_EQ(fake.logger.lines,
              std::vector<std::string>{"Velmora Finder Action handoff failed: " + description});
  }

  FakePlatform fake;
  std::shared_ptr<RequestEnds> ends;
};

class RequestFlow : public Requested, public testing::Test {};

TEST_F(RequestFlow, writesThenPostsThenOpensThenCompletes) {
  begin(contextWith({answeringPath("/b"), answeringPath("/file"), answering(UnusableItem()),
                     answeringPath("/a")}));
  EXPECT_EQ(ends->count(), 0);
  fake.mainQueue.runAll();
  expectCompleted();
  EXPECT_EQ(fake.journal, (Journal{"write " + requestPath, "post io.tolvane.Velmora.finderHandoff",
                                   "open /Velmora", "complete"}));
  EXPECT_EQ(fake.fileSystem.files[requestPath],
            "{\n  \"action\" : \"warpFolder\",\n  \"createdAt\" : \"1970-01-01T00:00:00Z\",\n"
            "  \"folderPaths\" : [\n    \"\\/b\",\n    \"\\/a\"\n  ]\n}");
}

TEST_F(RequestFlow, performsRestoreUnderTheRestoreIdentifier) {
  fake.bundle.identifier = restoreIdentifier;
  recordWarp(fake, "/a", "warp");
  serve({answeringPath("/a"), answeringPath("/b")});
  expectCompleted();
  EXPECT_NE(fake.fileSystem.files[requestPath].find("\"restoreMarkerFolder\""), std::string::npos);
}

TEST_F(RequestFlow, readsTheActionAgainWhenItEnds) {
  const PendingLoad load;
  begin(contextWith({load.provider()}));
  fake.bundle.identifier = restoreIdentifier;
  load.answerPath("/a");
  fake.mainQueue.runAll();
  expectCancelled(1, "Select a warped Velmora item to restore.");
}

TEST_F(RequestFlow, completesWithoutTheApplication) {
  fake.workspace.installedApplications.clear();
  serve({answeringPath("/a")});
  expectCompleted();
  EXPECT_TRUE(fake.fileSystem.exists(requestPath));
}

TEST(RequestFlowOfEmptySelection, isCancelledWithinTheCall) {
  const auto image = answeringPath("/a");
  image->conformsToFileURL = false;
  const std::pair<const char*, std::vector<InputItem>> rows[] = {
      {"no item", {}},
      {"foreign object", {ForeignObject()}},
      {"missing attachments", {ExtensionItem{.attachments = std::nullopt}}},
      {"no attachment", {ExtensionItem{.attachments = Providers()}}},
      {"no file URL", {ExtensionItem{.attachments = {{image}}}}}};
  for (const auto& [name, items] : rows) {
    SCOPED_TRACE(name);
    Requested request;
    request.begin(std::make_shared<FakeExtensionContext>(items));
    request.expectSelectionError();
    EXPECT_EQ(request.fake.mainQueue.pendingTaskCount(), 0U);
  }
}

TEST_F(RequestFlow, cancelsOnTheMainQueueWhenEveryLoadFails) {
  begin(contextWith({answering(std::monostate()), answering(UnusableItem())}));
  EXPECT_EQ(ends->count(), 0);
  fake.mainQueue.runAll();
  expectSelectionError();
}

TEST_F(RequestFlow, cancelsWhenNoItemIsAccepted) {
  serve({answeringPath("/file")});
  expectSelectionError();
  EXPECT_FALSE(fake.fileSystem.exists("/C/Warp"));
}

TEST_F(RequestFlow, cancelsAndLogsWithoutASharedLocation) {
  fake.locations.groupContainers.clear();
  serve({answeringPath("/a")});
  expectHandoffError("The file doesn’t exist.");
}

TEST(RequestFlowOverAFault, cancelsAndLogsTheFault) {
  struct Row {
    std::function<void()> FakeFileSystem::*place;
    std::function<void()> fault;
    const char* description;
  };
  const Row rows[] = {
      {&FakeFileSystem::createDirectoriesFailure, throwing(posixError(EACCES)),
       "Permission denied"},
      {&FakeFileSystem::writeFailure, throwing(posixError(ENOSPC)), "No space left on device"},
      // A percent sign in the message is logged unchanged.
      {&FakeFileSystem::writeFailure,
       throwing(PlatformError(cocoaErrorDomain, 512, "“100% %s%n” could not be saved.")),
       "“100% %s%n” could not be saved."},
      {&FakeFileSystem::writeFailure, throwing(std::runtime_error("unforeseen")), "unforeseen"},
      {&FakeFileSystem::readFailure, throwing(std::bad_alloc()), "Cannot allocate memory"}};
  for (const Row& row : rows) {
    SCOPED_TRACE(row.description);
    Requested request;
    request.fake.fileSystem.*row.place = row.fault;
    request.serve({answeringPath("/a")});
    request.expectHandoffError(row.description);
  }
}

TEST_F(RequestFlow, endsWithTheHandoffErrorWhenALoadRunsOutOfMemory) {
  serve({std::make_shared<FakeItemProvider>([](const auto&) { throw std::bad_alloc(); })});
  expectHandoffError("Cannot allocate memory");
}

TEST_F(RequestFlow, endsWithTheHandoffErrorWhenTheMainQueueCannotBeReached) {
  fake.mainQueue.failure = throwing(std::bad_alloc());
  begin(contextWith({answeringPath("/a")}));
  expectHandoffError("Cannot allocate memory");
}

TEST_F(RequestFlow, cancelsAFailedRestoreWithItsOwnMessage) {
  fake.bundle.identifier = restoreIdentifier;
  recordWarp(fake, "/a", "warp");
  fake.fileSystem.writeFailure = throwing(posixError(EIO));
  serve({answeringPath("/a")});
  expectCancelled(2, "Velmora could not start this Restore action. Open Velmora and try again.",
                  {"log"});
}

/// Records when the action is asked for.
class AskedBundle final : public ExtensionBundle {
 public:
  explicit AskedBundle(Journal& journal) : journal_(journal) {}

  std::optional<Text> bundleIdentifier() const override {
    journal_.emplace_back("action?");
    return restoreIdentifier;
  }
  std::unique_ptr<LocalizationFolder> localizationFolder(std::string_view) const override {
    return nullptr;
  }

 private:
  Journal& journal_;
};

/// Records when the shared root is asked for.
class AskedLocations final : public SharedLocations {
 public:
  AskedLocations(const SharedLocations& locations, Journal& journal)
      : locations_(locations), journal_(journal) {}

  std::optional<Text> groupContainer(std::string_view groupIdentifier) const override {
    journal_.emplace_back("root?");
    return locations_.groupContainer(groupIdentifier);
  }
  std::vector<Text> applicationSupportDirectories() const override {
    return locations_.applicationSupportDirectories();
  }

 private:
  const SharedLocations& locations_;
  Journal& journal_;
};

TEST_F(RequestFlow, asksForTheActionAndThenForTheRootInBothSteps) {
  recordWarp(fake, "/a", "warp");
  const AskedBundle bundle(fake.journal);
  const AskedLocations locations(fake.locations, fake.journal);
  begin(contextWith({answeringPath("/a")}),
        {bundle, fake.fileSystem, fake.fileSystem, fake.paths, locations, fake.defaults,
         fake.languages, fake.notifications, fake.workspace, fake.mainQueue, fake.logger,
         fake.clock, fake.identifiers});
  fake.mainQueue.runAll();
  EXPECT_EQ(fake.journal,
            (Journal{"action?", "root?", "action?", "root?", "write " + requestPath,
                     "post io.tolvane.Velmora.finderHandoff", "open /Velmora", "complete"}));
}

class FailingLanguages final : public PreferredLanguages {
 public:
  std::vector<Text> preferredLanguages() const override { throw std::runtime_error("no answer"); }
};

TEST_F(RequestFlow, cancelsWithoutAMessageWhenLookUpFails) {
  const FailingLanguages languages;
  // The selection is empty, so the first message looked up is that of the selection error.
  const auto context = contextWith({});
  beginRequest(context, {fake.bundle, fake.fileSystem, fake.fileSystem, fake.paths, fake.locations,
                         fake.defaults, languages, fake.notifications, fake.workspace,
                         fake.mainQueue, fake.logger, fake.clock, fake.identifiers});
  ASSERT_EQ(context->ends->count(), 1);
  EXPECT_EQ(context->ends->errors,
            (std::vector<RequestError>{{.domain = "io.tolvane.Velmora.FinderAction", .code = 2}}));
  EXPECT_EQ(fake.logger.lines.size(), 1U);
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

}  // namespace
}  // namespace velmora

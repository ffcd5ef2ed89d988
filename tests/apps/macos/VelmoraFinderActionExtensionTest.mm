// Whole requests through the principal class. The extension host finds the class by its name.

#include "tests/apps/macos/HostSession.h"
#include "tests/gnustep/NotificationObserver.h"
#include "tests/gnustep/SharedObjects.h"
#include "tests/gnustep/Strings.h"
#include "tests/platform/macos/MethodReplacement.h"

#include <gtest/gtest.h>

#import <AppKit/AppKit.h>
#import <objc/runtime.h>

#include <array>
#include <cstddef>
#include <fstream>
#include <functional>
#include <memory>
#include <optional>
#include <ostream>
#include <set>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace velmora {
namespace {

constexpr const char* warpIdentifier = "io.tolvane.Velmora.FinderWarpAction";
constexpr const char* restoreIdentifier = "io.tolvane.Velmora.FinderRestoreAction";
constexpr const char* notificationName = "io.tolvane.Velmora.finderHandoff";
constexpr const char* chooseWarpFolders = "Select one or more normal folders to Warp to Velmora.";
constexpr const char* warpHandoffFailed =
    "Velmora could not start this Warp action. Open Velmora and try again.";

Class principalClass() { return NSClassFromString(@"VelmoraFinderActionExtension"); }

RecordedError finderActionError(long code, const std::string& message) {
  return {.domain = "io.tolvane.Velmora.FinderAction",
          .code = code,
          .userInfo = {{utf8(NSLocalizedDescriptionKey), message}}};
}

void expectCompleted(const BegunRequest& request) {
  EXPECT_TRUE(request->cancellations().empty());
  ASSERT_EQ(request->completions().size(), 1U);
  EXPECT_EQ(request->completions().at(0).itemCount, 0U);
  EXPECT_FALSE(request->completions().at(0).hasCompletionHandler);
}

void expectCancelled(const BegunRequest& request, const RecordedError& error) {
  EXPECT_TRUE(request->completions().empty());
  ASSERT_EQ(request->cancellations().size(), 1U);
  EXPECT_EQ(request->cancellations().at(0).error, error);
}

/// The content of a request file, read by Foundation, not by the project's reader of JSON.
struct Handoff {
  std::string action;
  std::vector<std::string> folderPaths;

  bool operator==(const Handoff&) const = default;
};

Handoff handoffIn(const std::string& request) {
  @autoreleasepool {
    NSDictionary* object = [NSJSONSerialization
        JSONObjectWithData:[NSData dataWithBytes:request.data() length:request.size()]
                   options:0
                     error:nullptr];
    EXPECT_EQ([object count], 3U);
    Handoff handoff = {.action = utf8([object objectForKey:@"action"]), .folderPaths = {}};
    for (NSString* path in [object objectForKey:@"folderPaths"]) {
      handoff.folderPaths.push_back(utf8(path));
    }
    return handoff;
  }
}

class PrincipalClass : public testing::Test {
 protected:
  /// The content of the only request file.
  Handoff handoff() {
    const std::vector<std::string> requests = host.requests();
    EXPECT_EQ(requests.size(), 1U);
    return requests.size() == 1 ? handoffIn(requests.front()) : Handoff();
  }

  HostSession host;
};

TEST_F(PrincipalClass, isAViewControllerWithoutStateOfItsOwn) {
  ASSERT_NE(principalClass(), Nil);
  EXPECT_EQ([principalClass() superclass], [NSViewController class]);
  EXPECT_EQ(class_getInstanceSize(principalClass()),
            class_getInstanceSize([NSViewController class]));
}

TEST_F(PrincipalClass, showsAnEmptyView) {
  @autoreleasepool {
    NSViewController* controller = [[[principalClass() alloc] initWithNibName:nil
                                                                       bundle:nil] autorelease];
    [controller loadView];
    ASSERT_NE([controller view], nil);
    EXPECT_TRUE(NSEqualRects([[controller view] frame], NSMakeRect(0, 0, 0, 0)));
    EXPECT_EQ([[controller view] class], [NSView class]);
  }
}

TEST_F(PrincipalClass, isInitialisedAsItsBaseClassIs) {
  @autoreleasepool {
    NSBundle* bundle = [NSBundle bundleForClass:[NSView class]];
    NSViewController* controller = [[[principalClass() alloc] initWithNibName:@"Name"
                                                                       bundle:bundle] autorelease];
    EXPECT_TRUE([[controller nibName] isEqualToString:@"Name"]);
    EXPECT_EQ([controller nibBundle], bundle);
  }
}

NSCoder* coderOfTheBaseClass = nil;

id initialiseWithCoder(id controller, SEL, NSCoder* coder) {
  coderOfTheBaseClass = coder;
  return controller;
}

TEST_F(PrincipalClass, isReadFromAnArchiveAsItsBaseClassIs) {
  @autoreleasepool {
    const MethodReplacement recording(
        class_getInstanceMethod([NSViewController class], @selector(initWithCoder:)),
        initialiseWithCoder);
    NSCoder* coder = [[[NSCoder alloc] init] autorelease];
    NSViewController* allocated = [principalClass() alloc];
    EXPECT_EQ([allocated initWithCoder:coder], allocated);
    EXPECT_EQ(coderOfTheBaseClass, coder);
    [allocated release];
  }
}

TEST_F(PrincipalClass, isTheOnlyOwnerOfItsView) {
  @autoreleasepool {
    NSViewController* controller = [[[principalClass() alloc] initWithNibName:nil
                                                                       bundle:nil] autorelease];
    NSView* view = nil;
    @autoreleasepool {
      [controller loadView];
      view = [controller view];
    }
    EXPECT_EQ([view retainCount], 1U);
  }
}

TEST_F(PrincipalClass, handsTheSelectionToTheApplication) {
  NotificationObserver observer({notificationName});
  host.bundle.identifyAs(warpIdentifier);
  const std::string first = host.makeFolder("first 100% folder");
  const std::string second = host.makeFolder("復元 e\u0301");
  const BegunRequest request =
      host.beginWithAttachments(@[ providerOfPath(first), providerOfPath(second) ]);
  EXPECT_EQ(sharedObjects().begunRequests, 1);
  EXPECT_TRUE(request->completions().empty());
  runMainQueue();
  expectCompleted(request);
  EXPECT_EQ(handoff(), (Handoff{.action = "warpFolder", .folderPaths = {first, second}}));
  EXPECT_EQ(observer.received(),
            (std::vector<ReceivedNotification>{
                {.name = notificationName, .object = std::nullopt, .userInfo = std::nullopt}}));
  EXPECT_EQ(sharedObjects().openedApplications,
            (std::vector<OpenedApplication>{{.url = "file:///Applications/Velmora.app",
                                             .activates = true,
                                             .addsToRecentItems = false,
                                             .hasCompletionHandler = false}}));
  EXPECT_TRUE(loggedLines().empty());
}

TEST_F(PrincipalClass, restoresUnderTheIdentifierOfThatAction) {
  host.bundle.identifyAs(restoreIdentifier);
  const std::string folder = host.makeFolder("warped");
  host.recordWarp(folder, "warp-1");
  const BegunRequest request = host.beginWithAttachments(@[ providerOfPath(folder) ]);
  runMainQueue();
  expectCompleted(request);
  EXPECT_EQ(handoff(), (Handoff{.action = "restoreMarkerFolder", .folderPaths = {folder}}));
}

TEST_F(PrincipalClass, warpsUnderAnyOtherIdentifier) {
  const std::string folder = host.makeFolder("folder");
  for (const auto& identifier :
       {std::optional<std::string>(), std::optional<std::string>("io.tolvane.velmora.other")}) {
    host.bundle.identifyAs(identifier);
    const BegunRequest request = host.beginWithAttachments(@[ providerOfPath(folder) ]);
    runMainQueue();
    expectCompleted(request);
  }
  for (const std::string& request : host.requests()) {
    EXPECT_EQ(handoffIn(request).action, "warpFolder");
  }
  EXPECT_EQ(host.requests().size(), 2U);
}

TEST_F(PrincipalClass, leavesOutFoldersInsideAWarpedFolder) {
  const std::string warped = host.makeFolder("warped");
  const std::string inside = host.makeFolder("warped/inside");
  const std::string ordinary = host.makeFolder("ordinary");
  host.recordWarp(warped, "warp-1");
  const BegunRequest request = host.beginWithAttachments(
      @[ providerOfPath(warped), providerOfPath(inside), providerOfPath(ordinary) ]);
  runMainQueue();
  expectCompleted(request);
  EXPECT_EQ(handoff().folderPaths, std::vector{ordinary});
}

TEST_F(PrincipalClass, standardisesPathsAsFoundationDoes) {
  const std::string folder = host.makeFolder("folder");
  ASSERT_TRUE(folder.starts_with("/tmp/")) << folder;
  const BegunRequest request = host.beginWithAttachments(@[
    providerOf([NSURL URLWithString:nsString("file://" + folder + "/../folder/")]),
    providerOfPath(folder)
  ]);
  runMainQueue();
  expectCompleted(request);
  EXPECT_EQ(handoff().folderPaths, std::vector{folder});
}

TEST_F(PrincipalClass, keepsTheOrderOfTheSelectionInAnyOrderOfAnswers) {
  constexpr std::size_t count = 3;
  std::vector<std::string> folders;
  std::array<std::optional<HeldCompletionHandler>, count> handlers;
  BegunRequest request;
  @autoreleasepool {
    NSMutableArray* attachments = [NSMutableArray array];
    for (std::size_t index = 0; index < count; ++index) {
      folders.push_back(host.makeFolder("folder " + std::to_string(index)));
      [attachments addObject:[[[ScriptedItemProvider alloc]
                                 initWithTypes:{"public.file-url"}
                                        script:[&held = handlers[index]](
                                                   NSItemProviderCompletionHandler handler) {
                                          held.emplace(handler);
                                        }] autorelease]];
    }
    request = host.beginWithAttachments(attachments);
  }
  for (std::size_t index = count; index-- > 0;) {
    // All loads are started before the first is answered.
    ASSERT_TRUE(handlers[index].has_value());
    EXPECT_EQ(runMainQueue(), 0U);
    std::thread([&handler = *handlers[index], &folder = folders[index]] {
      @autoreleasepool {
        handler([NSURL fileURLWithPath:nsString(folder)], nil);
      }
    }).join();
  }
  handlers.fill(std::nullopt);
  EXPECT_TRUE(request->completions().empty());
  runMainQueue();
  expectCompleted(request);
  EXPECT_EQ(request->completions().at(0).thread, std::this_thread::get_id());
  EXPECT_EQ(handoff().folderPaths, folders);
}

TEST_F(PrincipalClass, takesURLsAndTheirDataAndSkipsOtherItems) {
  @autoreleasepool {
    const std::string url = host.makeFolder("url");
    const std::string data = host.makeFolder("data");
    const std::string despiteAnError = host.makeFolder("despite an error");
    const std::string dataText = "file://" + data;
    NSError* error = [NSError errorWithDomain:@"d" code:1 userInfo:nil];
    NSItemProvider* otherType = [[[ScriptedItemProvider alloc] initWithTypes:{"public.image"}
                                                                      script:{}] autorelease];
    NSItemProvider* raising = [[[ScriptedItemProvider alloc]
        initWithTypes:{"public.file-url"}
               script:[](NSItemProviderCompletionHandler) {
                 [NSException raise:NSGenericException format:@"no item"];
               }] autorelease];
    const BegunRequest request = host.beginWithAttachments(@[
      providerOf([NSURL fileURLWithPath:nsString(url)]), otherType, providerOf(@"text"),
      providerOf(nil), providerOf(nil, error), raising, providerOf([NSData data]),
      providerOf([NSData dataWithBytes:dataText.data() length:dataText.size()]),
      providerOf([NSURL fileURLWithPath:nsString(despiteAnError)], error)
    ]);
    runMainQueue();
    expectCompleted(request);
    EXPECT_EQ(handoff().folderPaths, (std::vector{url, data, despiteAnError}));
  }
}

TEST_F(PrincipalClass, takesTheFirstOfTwoAnswers) {
  @autoreleasepool {
    const std::string first = host.makeFolder("first");
    const std::string second = host.makeFolder("second");
    NSItemProvider* twice = [[[ScriptedItemProvider alloc]
        initWithTypes:{"public.file-url"}
               script:[&](NSItemProviderCompletionHandler handler) {
                 handler([NSURL fileURLWithPath:nsString(first)], nil);
                 handler([NSURL fileURLWithPath:nsString(second)], nil);
               }] autorelease];
    const BegunRequest request = host.beginWithAttachments(@[ twice ]);
    EXPECT_EQ(runMainQueue(), 1U);
    expectCompleted(request);
    EXPECT_EQ(handoff().folderPaths, std::vector{first});
  }
}

TEST_F(PrincipalClass, ignoresForeignObjectsAmongInputItems) {
  @autoreleasepool {
    const std::string folder = host.makeFolder("folder");
    NSExtensionItem* item = [[[NSExtensionItem alloc] init] autorelease];
    [item setAttachments:@[ providerOfPath(folder) ]];
    NSExtensionItem* without = [[[NSExtensionItem alloc] init] autorelease];
    const BegunRequest request = host.begin(@[ @"junk", without, item, [NSNull null] ]);
    runMainQueue();
    expectCompleted(request);
    EXPECT_EQ(handoff().folderPaths, std::vector{folder});
  }
}

TEST_F(PrincipalClass, cancelsAtOnceWithoutAFileURL) {
  @autoreleasepool {
    NSItemProvider* image = [[[ScriptedItemProvider alloc] initWithTypes:{"public.image"}
                                                                  script:{}] autorelease];
    for (const BegunRequest& request : {
           host.begin(nil), host.begin(@[]), host.begin(@[ @"junk" ]),
               host.beginWithAttachments(nil), host.beginWithAttachments(@[ image ])
         }) {
      expectCancelled(request, finderActionError(1, chooseWarpFolders));
      EXPECT_EQ(request->cancellations().at(0).thread, std::this_thread::get_id());
    }
    EXPECT_EQ(runMainQueue(), 0U);
  }
}

TEST_F(PrincipalClass, cancelsAnUnsuitableSelectionOnTheMainQueue) {
  @autoreleasepool {
    const std::string file = host.home.write("file", "");
    for (NSItemProvider* provider : {providerOfPath(file), providerOf(@"text")}) {
      const BegunRequest request = host.beginWithAttachments(@[ provider ]);
      EXPECT_TRUE(request->cancellations().empty());
      runMainQueue();
      expectCancelled(request, finderActionError(1, chooseWarpFolders));
    }
    EXPECT_TRUE(host.requests().empty());
    EXPECT_TRUE(sharedObjects().openedApplications.empty());
    EXPECT_TRUE(loggedLines().empty());
  }
}

TEST_F(PrincipalClass, logsAFailedHandoffOnceAndOpensNothing) {
  NotificationObserver observer({notificationName});
  host.obstructHandoff();
  const std::string folder = host.makeFolder("100% sure %s%n%@");
  const BegunRequest request = host.beginWithAttachments(@[ providerOfPath(folder) ]);
  runMainQueue();
  expectCancelled(request, finderActionError(2, warpHandoffFailed));
  EXPECT_EQ(loggedLines(),
            std::vector<std::string>{"Velmora Finder Action handoff failed: File exists"});
  EXPECT_TRUE(observer.received().empty());
  EXPECT_TRUE(sharedObjects().openedApplications.empty());
}

TEST_F(PrincipalClass, failsWithoutAnySharedLocation) {
  sharedObjects().groupContainers.clear();
  const std::string folder = host.makeFolder("folder");
  const BegunRequest request = host.beginWithAttachments(@[ providerOfPath(folder) ]);
  runMainQueue();
  expectCancelled(request, finderActionError(2, warpHandoffFailed));
  EXPECT_EQ(loggedLines().size(), 1U);
}

TEST_F(PrincipalClass, fallsBackToTheFirstApplicationSupportDirectory) {
  sharedObjects().groupContainers.clear();
  sharedObjects().applicationSupportDirectories = {host.home.path("Support"),
                                                   host.home.path("Other")};
  const BegunRequest request =
      host.beginWithAttachments(@[ providerOfPath(host.makeFolder("folder")) ]);
  runMainQueue();
  expectCompleted(request);
  EXPECT_EQ(host.home.names("Support/Velmora/Warp/FinderHandoff").size(), 1U);
}

TEST_F(PrincipalClass, completesWithoutAnInstalledApplication) {
  sharedObjects().applications.clear();
  const BegunRequest request =
      host.beginWithAttachments(@[ providerOfPath(host.makeFolder("folder")) ]);
  runMainQueue();
  expectCompleted(request);
  EXPECT_EQ(host.requests().size(), 1U);
  EXPECT_TRUE(sharedObjects().openedApplications.empty());
}

id raise(id, SEL) {
  [NSException raise:NSGenericException format:@"no answer"];
  return nil;
}

TEST_F(PrincipalClass, completesWhenANotificationReachesNobody) {
  const MethodReplacement broken(
      class_getClassMethod([NSDistributedNotificationCenter class], @selector(defaultCenter)),
      raise);
  const BegunRequest request =
      host.beginWithAttachments(@[ providerOfPath(host.makeFolder("folder")) ]);
  runMainQueue();
  expectCompleted(request);
}

TEST_F(PrincipalClass, cancelsWithoutAMessageWhenLookUpFails) {
  const MethodReplacement broken(
      class_getClassMethod([NSLocale class], @selector(preferredLanguages)), raise);
  host.obstructHandoff();
  const BegunRequest request =
      host.beginWithAttachments(@[ providerOfPath(host.makeFolder("folder")) ]);
  runMainQueue();
  expectCancelled(request, finderActionError(2, ""));
}

TEST_F(PrincipalClass, servesTwoRequestsAtTheSameTime) {
  @autoreleasepool {
    std::optional<HeldCompletionHandler> held;
    const std::string slow = host.makeFolder("slow");
    const std::string quick = host.makeFolder("quick");
    NSItemProvider* slowProvider = [[[ScriptedItemProvider alloc]
        initWithTypes:{"public.file-url"}
               script:[&held](NSItemProviderCompletionHandler handler) { held.emplace(handler); }]
        autorelease];
    const BegunRequest first = host.beginWithAttachments(@[ slowProvider ]);
    const BegunRequest second = host.beginWithAttachments(@[ providerOfPath(quick) ]);
    runMainQueue();
    EXPECT_TRUE(first->completions().empty());
    expectCompleted(second);
    (*held)([NSURL fileURLWithPath:nsString(slow)], nil);
    held.reset();
    runMainQueue();
    expectCompleted(first);
    EXPECT_EQ(host.requests().size(), 2U);
  }
}

TEST_F(PrincipalClass, releasesEverythingOfARequestAtItsEnd) {
  std::shared_ptr<const ProviderRecord> provider;
  BegunRequest completed;
  BegunRequest cancelled;
  BegunRequest cancelledAtOnce;
  @autoreleasepool {
    auto* attachment =
        static_cast<ScriptedItemProvider*>(providerOfPath(host.makeFolder("folder")));
    provider = [attachment record];
    completed = host.beginWithAttachments(@[ attachment ]);
    cancelled = host.beginWithAttachments(@[ providerOf(@"text") ]);
    cancelledAtOnce = host.beginWithAttachments(@[]);
  }
  EXPECT_TRUE(cancelledAtOnce->deallocated());
  EXPECT_FALSE(completed->deallocated());
  EXPECT_FALSE(cancelled->deallocated());
  runMainQueue();
  EXPECT_TRUE(completed->deallocated());
  EXPECT_TRUE(cancelled->deallocated());
  EXPECT_TRUE(provider->deallocated());
}

/// The expected language of the messages. Foundation reads the real tables.
struct MessageRow {
  std::string name;
  std::string language;
  const char* identifier;
  bool handoffFails;
};

std::ostream& operator<<(std::ostream& out, const MessageRow& row) { return out << row.name; }

class PrincipalClassMessages : public testing::TestWithParam<MessageRow> {
 protected:
  static std::string tableOf(const std::string& language) {
    std::ifstream file(VELMORA_TEST_RESOURCES "/" + language + ".lproj/Localizable.strings");
    return {std::istreambuf_iterator<char>(file), {}};
  }

  /// Stores the chosen language as the application does.
  static void choose(const std::string& language) {
    [[NSUserDefaults standardUserDefaults]
        setPersistentDomain:@{@"VelmoraSelectedLanguage.v1" : nsString(language)}
                    forName:@"group.io.tolvane.Velmora"];
    [[NSUserDefaults standardUserDefaults] synchronize];
  }

  ~PrincipalClassMessages() override {
    [[NSUserDefaults standardUserDefaults]
        removePersistentDomainForName:@"group.io.tolvane.Velmora"];
    [[NSUserDefaults standardUserDefaults] synchronize];
  }

  HostSession host;
};

/// The value of a key in a strings file with one pair per line.
std::string textIn(const std::string& table, const std::string& key) {
  const std::string start = "\"" + key + "\" = \"";
  const std::size_t begin = table.find(start) + start.size();
  return table.substr(begin, table.find("\";\n", begin) - begin);
}

TEST_P(PrincipalClassMessages, areInTheLanguageThatTheUserChose) {
  const MessageRow& row = GetParam();
  const bool restores = row.identifier == restoreIdentifier;
  const std::string key =
      std::string("consumer.finder-service.error.") +
      (row.handoffFails ? (restores ? "restore-handoff-failed" : "warp-handoff-failed")
                        : (restores ? "choose-warped-item" : "choose-warp-folders"));
  const std::string folder = host.makeFolder("folder");
  for (const char* language : {"en", "ja", "zh-Hans", "es", "pt-BR"}) {
    host.bundle.writeStrings(language, tableOf(language));
  }
  host.bundle.identifyAs(row.identifier);
  choose(row.language);
  if (row.handoffFails) {
    host.recordWarp(folder, "warp-1");
    host.obstructHandoff();
  }
  const std::string selected = row.handoffFails && !restores ? host.makeFolder("other") : folder;
  const bool suits = row.handoffFails;
  const BegunRequest request = host.beginWithAttachments(
      @[ suits ? providerOfPath(selected) : providerOf(@"nothing that suits") ]);
  runMainQueue();
  const std::string message = textIn(tableOf(row.language), key);
  EXPECT_FALSE(message.empty());
  expectCancelled(request, finderActionError(row.handoffFails ? 2 : 1, message));
}

std::vector<MessageRow> messageRows() {
  std::vector<MessageRow> rows;
  for (const char* language : {"en", "ja", "zh-Hans", "es", "pt-BR"}) {
    for (const char* identifier : {warpIdentifier, restoreIdentifier}) {
      for (const bool handoffFails : {false, true}) {
        std::string name = std::string(language) +
                           (identifier == warpIdentifier ? "Warp" : "Restore") +
                           (handoffFails ? "Handoff" : "Selection");
        std::erase(name, '-');
        rows.push_back({.name = name,
                        .language = language,
                        .identifier = identifier,
                        .handoffFails = handoffFails});
      }
    }
  }
  return rows;
}

INSTANTIATE_TEST_SUITE_P(All, PrincipalClassMessages, testing::ValuesIn(messageRows()),
                         [](const auto& info) { return info.param.name; });

}  // namespace
}  // namespace velmora

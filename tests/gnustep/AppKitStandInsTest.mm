#include "tests/gnustep/SharedObjects.h"
#include "tests/gnustep/Strings.h"

#include <gtest/gtest.h>

#import <AppKit/AppKit.h>

#include <string>
#include <vector>

namespace velmora {

namespace {

class AppKitStandInsTest : public testing::Test {
 private:
  NSAutoreleasePool* const pool_ = [[NSAutoreleasePool alloc] init];

 protected:
  ~AppKitStandInsTest() override { [pool_ release]; }

  NSWorkspace* const workspace = [NSWorkspace sharedWorkspace];
};

TEST_F(AppKitStandInsTest, applicationsAreFoundByTheirIdentifiers) {
  sharedObjects().applications["io.example.Known"] = "/Applications/Known one.app";
  EXPECT_EQ(
      utf8([[workspace URLForApplicationWithBundleIdentifier:@"io.example.Known"] absoluteString]),
      "file:///Applications/Known%20one.app");
  EXPECT_TRUE([workspace URLForApplicationWithBundleIdentifier:@"io.example.Unknown"] == nil);
}

TEST_F(AppKitStandInsTest, openedApplicationsAreRecordedInOrder) {
  auto* configuration = [NSWorkspaceOpenConfiguration configuration];
  [workspace openApplicationAtURL:[NSURL fileURLWithPath:@"/First.app"]
                    configuration:configuration
                completionHandler:nil];
  [configuration setActivates:NO];
  [configuration setAddsToRecentItems:NO];
  [workspace openApplicationAtURL:[NSURL fileURLWithPath:@"/Second.app"]
                    configuration:configuration
                completionHandler:^(NSRunningApplication*, NSError*){
                }];
  EXPECT_EQ(sharedObjects().openedApplications,
            (std::vector<OpenedApplication>{
                {.url = "file:///First.app", .activates = true, .addsToRecentItems = true},
                {.url = "file:///Second.app", .hasCompletionHandler = true}}));
}

TEST_F(AppKitStandInsTest, workspaceIsShared) {
  EXPECT_TRUE([NSWorkspace sharedWorkspace] == workspace);
}

TEST_F(AppKitStandInsTest, viewControllersCountTheRequestsThatReachTheirOwnClass) {
  auto* context = [[[NSExtensionContext alloc] init] autorelease];
  auto* controller = [[[NSViewController alloc] initWithNibName:nil bundle:nil] autorelease];
  // The runtime does not recognise the "@protocol(…)" that clang++ compiles.
  EXPECT_TRUE([controller conformsToProtocol:NSProtocolFromString(@"NSExtensionRequestHandling")]);
  [controller beginRequestWithExtensionContext:context];
  EXPECT_EQ(sharedObjects().begunRequests, 1);
}

TEST_F(AppKitStandInsTest, viewsNeedNoDisplay) {
  auto* controller = [[[NSViewController alloc] initWithNibName:nil bundle:nil] autorelease];
  auto* view = [[[NSView alloc] initWithFrame:NSZeroRect] autorelease];
  [controller setView:view];
  EXPECT_TRUE([controller view] == view);
}

}  // namespace
}  // namespace velmora

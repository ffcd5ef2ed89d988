#include "platform/macos/MacWorkspace.h"
#include "tests/contracts/WorkspaceContract.h"
#include "tests/gnustep/SharedObjects.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <vector>

namespace velmora {
namespace {

class MacWorkspaceAdapter {
 public:
  MacWorkspaceAdapter() {
    sharedObjects().applications = {{installedApplication(), "/Applications/Velm\u00f3ra.app"},
                                    {otherInstalledApplication(), "/Applications/100% Other.app"}};
  }

  Workspace& workspace() { return workspace_; }
  static std::string installedApplication() { return "org.example.Application"; }
  static std::string otherInstalledApplication() { return "org.example.Other"; }
  static Text emptyLocation() { return "file:///nowhere/Application.app"; }

  std::vector<std::string> opened(std::size_t count) {
    std::vector<std::string> identifiers;
    for (const OpenedApplication& opened : sharedObjects().openedApplications) {
      for (const auto& [identifier, path] : sharedObjects().applications) {
        if (workspace_.applicationLocation(identifier) == Text(opened.url)) {
          identifiers.push_back(identifier);
        }
      }
    }
    EXPECT_EQ(identifiers.size(), count);
    return identifiers;
  }

 private:
  MacWorkspace workspace_;
};

INSTANTIATE_TYPED_TEST_SUITE_P(Mac, WorkspaceContract, MacWorkspaceAdapter);

TEST(MacWorkspaceTest, namesALocationByItsURL) {
  sharedObjects().applications = {{"org.example.Application", "/Applications/100% \u00e9.app"}};
  const auto location = MacWorkspace().applicationLocation("org.example.Application");
  EXPECT_EQ(location.value(), Text("file:///Applications/100%25%20%C3%A9.app"));
}

TEST(MacWorkspaceTest, passesTheConfigurationAndWaitsForNothing) {
  MacWorkspace workspace;
  const std::string url = "file:///Applications/Application.app";
  workspace.openApplication(url, {.activates = true, .addsToRecentItems = false});
  workspace.openApplication(url, {.activates = false, .addsToRecentItems = true});
  const auto opened = [&url](bool activates, bool addsToRecentItems) {
    return OpenedApplication{.url = url,
                             .activates = activates,
                             .addsToRecentItems = addsToRecentItems,
                             .hasCompletionHandler = false};
  };
  EXPECT_EQ(sharedObjects().openedApplications,
            (std::vector{opened(true, false), opened(false, true)}));
}

TEST(MacWorkspaceTest, opensNothingWithoutAURL) {
  MacWorkspace workspace;
  workspace.openApplication("\xff", {});
  EXPECT_TRUE(sharedObjects().openedApplications.empty());
}

}  // namespace
}  // namespace velmora

#include "handoff/ApplicationLaunch.h"
#include "tests/fakes/FakePlatform.h"

#include <gtest/gtest.h>

namespace velmora {
namespace {

TEST(ApplicationLaunch, opensTheInstalledApplicationInFrontAndOutsideTheRecentItems) {
  FakePlatform fake;
  fake.workspace.installedApplications["io.tolvane.Velmora"] = "/Applications/Velmora.app";
  openMainApplication(fake.workspace);
  ASSERT_EQ(fake.workspace.opened.size(), 1U);
  EXPECT_EQ(fake.workspace.opened[0].first, Text("/Applications/Velmora.app"));
  EXPECT_EQ(fake.workspace.opened[0].second,
            (OpenConfiguration{.activates = true, .addsToRecentItems = false}));
}

TEST(ApplicationLaunch, doesNothingWithoutTheApplication) {
  FakePlatform fake;
  fake.workspace.installedApplications["io.tolvane.VelmoraBeta"] = "/Applications/Beta.app";
  openMainApplication(fake.workspace);
  EXPECT_TRUE(fake.workspace.opened.empty());
  EXPECT_TRUE(fake.logger.lines.empty());
}

}  // namespace
}  // namespace velmora

// The contract of every Workspace. Instantiated with an adapter for each implementation.
#pragma once

#include "platform/Workspace.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace velmora {

/// An adapter has
///   Workspace& workspace();
///   std::string installedApplication();
///   std::string otherInstalledApplication();
///       the bundle identifiers of two applications that are installed
///   Text emptyLocation();
///       a location of the platform's kind without an application
///   std::vector<std::string> opened(std::size_t count);
///       waits until applications have been opened `count` times since the start, and returns
///       their bundle identifiers in order; requests for an empty location do not count
template <class Adapter>
class WorkspaceContract : public testing::Test {};

TYPED_TEST_SUITE_P(WorkspaceContract);

TYPED_TEST_P(WorkspaceContract, opensTheApplicationAtALocation) {
  TypeParam adapter;
  Workspace& workspace = adapter.workspace();
  const std::string application = adapter.otherInstalledApplication();
  const auto location = workspace.applicationLocation(application);
  const auto other = workspace.applicationLocation(adapter.installedApplication());
  ASSERT_TRUE(location && other);
  EXPECT_NE(location->utf8(), other->utf8());
  workspace.openApplication(*location, {.activates = true, .addsToRecentItems = false});
  EXPECT_EQ(adapter.opened(1), std::vector{application});
}

TYPED_TEST_P(WorkspaceContract, opensAnApplicationAfterAFailure) {
  TypeParam adapter;
  Workspace& workspace = adapter.workspace();
  EXPECT_EQ(workspace.applicationLocation("org.example.NotInstalled"), std::nullopt);
  const std::string application = adapter.installedApplication();
  const auto location = workspace.applicationLocation(application);
  ASSERT_TRUE(location);
  for (const Text& place : {adapter.emptyLocation(), *location}) {
    workspace.openApplication(place, {.activates = true, .addsToRecentItems = false});
  }
  EXPECT_EQ(adapter.opened(1), std::vector{application});
}

REGISTER_TYPED_TEST_SUITE_P(WorkspaceContract, opensTheApplicationAtALocation,
                            opensAnApplicationAfterAFailure);

}  // namespace velmora

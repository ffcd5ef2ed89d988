// What every Workspace promises. Instantiated with an adapter for each implementation.
#pragma once

#include "platform/Workspace.h"

#include <gtest/gtest.h>

#include <concepts>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace velmora {

template <class Adapter>
concept WorkspaceAdapter = std::default_initializable<Adapter> &&
    requires(Adapter& adapter, std::size_t count) {
  { adapter.workspace() } -> std::convertible_to<Workspace&>;
  // The bundle identifiers of two applications that are installed.
  { adapter.installedApplication() } -> std::same_as<std::string>;
  { adapter.otherInstalledApplication() } -> std::same_as<std::string>;
  // A location of the platform's kind where nothing is.
  { adapter.emptyLocation() } -> std::same_as<Text>;
  // Waits until applications have been opened `count` times since the beginning, what was asked
  // for an empty location not counted, and returns their bundle identifiers in order.
  { adapter.opened(count) } -> std::same_as<std::vector<std::string>>;
};

template <class Adapter>
class WorkspaceContract : public testing::Test {
  static_assert(WorkspaceAdapter<Adapter>);

 protected:
  static constexpr OpenConfiguration configuration = {.activates = true,
                                                      .addsToRecentItems = false};

  Adapter adapter;
};

TYPED_TEST_SUITE_P(WorkspaceContract);

TYPED_TEST_P(WorkspaceContract, knowsNoLocationOfAnUnknownApplication) {
  EXPECT_EQ(this->adapter.workspace().applicationLocation("org.example.NotInstalled"),
            std::nullopt);
}

TYPED_TEST_P(WorkspaceContract, tellsApplicationsApart) {
  Workspace& workspace = this->adapter.workspace();
  const auto location = workspace.applicationLocation(this->adapter.installedApplication());
  const auto other = workspace.applicationLocation(this->adapter.otherInstalledApplication());
  ASSERT_TRUE(location && other);
  EXPECT_NE(location->utf8(), other->utf8());
}

TYPED_TEST_P(WorkspaceContract, opensTheApplicationAtALocation) {
  Workspace& workspace = this->adapter.workspace();
  const std::string application = this->adapter.otherInstalledApplication();
  const auto location = workspace.applicationLocation(application);
  ASSERT_TRUE(location);
  workspace.openApplication(*location, this->configuration);
  EXPECT_EQ(this->adapter.opened(1), std::vector{application});
}

TYPED_TEST_P(WorkspaceContract, opensWhatItCanAfterWhatItCannot) {
  Workspace& workspace = this->adapter.workspace();
  const std::string application = this->adapter.installedApplication();
  const auto location = workspace.applicationLocation(application);
  ASSERT_TRUE(location);
  workspace.openApplication(this->adapter.emptyLocation(), this->configuration);
  workspace.openApplication(*location, this->configuration);
  EXPECT_EQ(this->adapter.opened(1), std::vector{application});
}

REGISTER_TYPED_TEST_SUITE_P(WorkspaceContract, knowsNoLocationOfAnUnknownApplication,
                            tellsApplicationsApart, opensTheApplicationAtALocation,
                            opensWhatItCanAfterWhatItCannot);

}  // namespace velmora

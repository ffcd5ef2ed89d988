// What every SharedLocations promises. Instantiated with an adapter for each implementation.
#pragma once

#include "platform/SharedLocations.h"

#include <gtest/gtest.h>

#include <concepts>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace velmora {

template <class Adapter>
concept SharedLocationsAdapter = std::default_initializable<Adapter> &&
    requires(Adapter& adapter, std::string_view group) {
  { adapter.locations() } -> std::convertible_to<const SharedLocations&>;
  // Gives this program a part in `group`; returns the path of the container.
  { adapter.joinGroup(group) } -> std::same_as<std::string>;
  // Provides directories for the data of applications, where there are none at the beginning;
  // returns their paths.
  { adapter.provideSupportDirectories() } -> std::same_as<std::vector<std::string>>;
};

template <class Adapter>
class SharedLocationsContract : public testing::Test {
  static_assert(SharedLocationsAdapter<Adapter>);

 protected:
  std::optional<std::string> container(std::string_view group) {
    const std::optional<Text> path = adapter.locations().groupContainer(group);
    return path ? std::optional(path->utf8()) : std::nullopt;
  }

  std::vector<std::string> supportDirectories() {
    std::vector<std::string> paths;
    for (const Text& path : adapter.locations().applicationSupportDirectories()) {
      paths.push_back(path.utf8());
    }
    return paths;
  }

  Adapter adapter;
};

TYPED_TEST_SUITE_P(SharedLocationsContract);

TYPED_TEST_P(SharedLocationsContract, hasNoContainerOfAForeignGroup) {
  EXPECT_EQ(this->container("group.org.example"), std::nullopt);
  this->adapter.joinGroup("group.org.other");
  EXPECT_EQ(this->container("group.org.example"), std::nullopt);
}

TYPED_TEST_P(SharedLocationsContract, findsTheContainerOnceTheProgramHasAPartInTheGroup) {
  EXPECT_EQ(this->container("group.org.example"), std::nullopt);
  const std::string path = this->adapter.joinGroup("group.org.example");
  EXPECT_EQ(this->container("group.org.example"), path);
  EXPECT_TRUE(path.starts_with('/')) << path;
}

TYPED_TEST_P(SharedLocationsContract, mayKnowOfNoSupportDirectory) {
  EXPECT_EQ(this->supportDirectories(), std::vector<std::string>());
}

TYPED_TEST_P(SharedLocationsContract, listsTheSupportDirectoriesInTheirOrder) {
  const std::vector<std::string> paths = this->adapter.provideSupportDirectories();
  EXPECT_FALSE(paths.empty());
  EXPECT_EQ(this->supportDirectories(), paths);
}

REGISTER_TYPED_TEST_SUITE_P(SharedLocationsContract, hasNoContainerOfAForeignGroup,
                            findsTheContainerOnceTheProgramHasAPartInTheGroup,
                            mayKnowOfNoSupportDirectory, listsTheSupportDirectoriesInTheirOrder);

}  // namespace velmora

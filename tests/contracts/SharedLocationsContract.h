// The contract of every SharedLocations. Instantiated with an adapter for each implementation.
#pragma once

#include "platform/SharedLocations.h"
#include "tests/support/Bytes.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace velmora {

/// An adapter has
///   const SharedLocations& locations();
///   std::string joinGroup(std::string_view group);
///       adds this program to `group`; returns the path of the container
///   std::vector<std::string> provideSupportDirectories();
///       provides directories for the data of applications, of which there are none at first;
///       returns their paths
template <class Adapter>
class SharedLocationsContract : public testing::Test {};

TYPED_TEST_SUITE_P(SharedLocationsContract);

TYPED_TEST_P(SharedLocationsContract, findsTheContainerOfAGroupThatTheProgramIsIn) {
  TypeParam adapter;
  const SharedLocations& locations = adapter.locations();
  EXPECT_EQ(locations.groupContainer("group.org.example"), std::nullopt);
  adapter.joinGroup("group.org.other");
  EXPECT_EQ(locations.groupContainer("group.org.example"), std::nullopt);
  const std::string path = adapter.joinGroup("group.org.example");
  EXPECT_EQ(locations.groupContainer("group.org.example").value_or("none").utf8(), path);
  EXPECT_TRUE(path.starts_with('/')) << path;
}

TYPED_TEST_P(SharedLocationsContract, listsTheSupportDirectoriesInTheirOrder) {
  TypeParam adapter;
  EXPECT_TRUE(adapter.locations().applicationSupportDirectories().empty());
  const std::vector<std::string> paths = adapter.provideSupportDirectories();
  EXPECT_FALSE(paths.empty());
  EXPECT_EQ(bytesOf(adapter.locations().applicationSupportDirectories()), paths);
}

REGISTER_TYPED_TEST_SUITE_P(SharedLocationsContract, findsTheContainerOfAGroupThatTheProgramIsIn,
                            listsTheSupportDirectoriesInTheirOrder);

}  // namespace velmora

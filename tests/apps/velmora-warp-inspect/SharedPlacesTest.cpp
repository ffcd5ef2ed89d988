#include "SharedPlaces.h"
#include "tests/fakes/FakePlatform.h"

#include <gtest/gtest.h>

namespace velmora::inspect {
namespace {

TEST(SharedPlaces, areThoseThatTheActionsUse) {
  FakePlatform fake;
  fake.locations.groupContainers["group.io.tolvane.Velmora"] = "/C";
  const auto places = sharedPlaces(fake.locations, fake.paths);
  ASSERT_TRUE(places.has_value());
  EXPECT_EQ(places->root, Text("/C/Warp"));
  EXPECT_EQ(places->rootParent, SharedWarpRootParent::groupContainer);
  EXPECT_EQ(places->mirror, Text("/C/Warp/ManifestMirror"));
  EXPECT_EQ(places->index, Text("/C/Warp/destroyed-manifest-index.json"));
  EXPECT_EQ(places->handoff, Text("/C/Warp/FinderHandoff"));
}

TEST(SharedPlaces, areNoneWithoutARoot) {
  const FakePlatform fake;
  EXPECT_FALSE(sharedPlaces(fake.locations, fake.paths).has_value());
}

}  // namespace
}  // namespace velmora::inspect

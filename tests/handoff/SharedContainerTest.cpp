#include "handoff/SharedContainer.h"
#include "tests/support/RowName.h"
#include "tests/fakes/FakePlatform.h"

#include <gtest/gtest.h>

namespace velmora {
namespace {

struct RootCase {
  const char* name;
  std::optional<Text> container;
  std::vector<Text> supportDirectories;
  const char* root;
};

class SharedContainer : public testing::TestWithParam<RootCase> {};

TEST_P(SharedContainer, givesTheSharedWarpRoot) {
  FakePlatform fake;
  if (GetParam().container.has_value()) {
    fake.locations.groupContainers["group.io.tolvane.Velmora"] = *GetParam().container;
  }
  fake.locations.supportDirectories = GetParam().supportDirectories;
  EXPECT_EQ(sharedWarpRootURL(fake.locations, fake.paths).utf8(), GetParam().root);
}

INSTANTIATE_TEST_SUITE_P(
    Roots, SharedContainer,
    testing::Values(
        RootCase{"container", "/C", {}, "/C/Warp"},
        RootCase{"containerBeforeSupport", "/C", {"/S"}, "/C/Warp"},
        RootCase{"containerIsStandardised", "/x/.././C//d/", {}, "/C/d/Warp"},
        RootCase{"containerAtTheRoot", "/", {}, "/Warp"},
        RootCase{"support",
                 std::nullopt,
                 {"/U/Library/Application Support"},
                 "/U/Library/Application Support/Velmora/Warp"},
        RootCase{"firstSupportOnly", std::nullopt, {"/one", "/two"}, "/one/Velmora/Warp"},
        RootCase{"supportIsStandardised", std::nullopt, {"/a/../b/."}, "/b/Velmora/Warp"}),
    RowName());

TEST(SharedContainerFailure, isTheBareErrorOfAMissingFile) {
  FakePlatform fake;
  try {
    static_cast<void>(sharedWarpRootURL(fake.locations, fake.paths));
    FAIL() << "no error";
  } catch (const PlatformError& error) {
    EXPECT_EQ(error.domain(), "NSCocoaErrorDomain");
    EXPECT_EQ(error.code(), 4);
    EXPECT_STREQ(error.what(), "The file doesn’t exist.");
    EXPECT_EQ(error.native(), nullptr);
  }
}

TEST(SharedContainerLookup, asksAfreshEachTime) {
  FakePlatform fake;
  fake.locations.supportDirectories = {"/S"};
  EXPECT_EQ(sharedWarpRootURL(fake.locations, fake.paths), Text("/S/Velmora/Warp"));
  fake.locations.groupContainers["group.io.tolvane.Velmora"] = "/C";
  EXPECT_EQ(sharedWarpRootURL(fake.locations, fake.paths), Text("/C/Warp"));
}

}  // namespace
}  // namespace velmora

#include "handoff/SharedContainer.h"
#include "platform/PlatformError.h"
#include "tests/fakes/FakePlatform.h"

#include <gtest/gtest.h>

#include <optional>
#include <vector>

namespace velmora {
namespace {

TEST(SharedContainer, looksForTheSharedWarpRootEachTime) {
  struct Row {
    const char* name;
    std::optional<Text> container;
    std::vector<Text> supportDirectories;
    const char* root;
  };
  const Row rows[] = {{"container", "/C", {}, "/C/Warp"},
                      {"containerBeforeSupport", "/C", {"/S"}, "/C/Warp"},
                      {"containerIsStandardised", "/x/.././C//d/", {}, "/C/d/Warp"},
                      {"containerAtTheRoot", "/", {}, "/Warp"},
                      {"support",
                       std::nullopt,
                       {"/U/Library/Application Support"},
                       "/U/Library/Application Support/Velmora/Warp"},
                      {"firstSupportOnly", std::nullopt, {"/one", "/two"}, "/one/Velmora/Warp"},
                      {"supportIsStandardised", std::nullopt, {"/a/../b/."}, "/b/Velmora/Warp"}};
  FakePlatform fake;
  for (const Row& row : rows) {
    fake.locations.groupContainers.clear();
    if (row.container.has_value()) {
      fake.locations.groupContainers["group.io.tolvane.Velmora"] = *row.container;
    }
    fake.locations.supportDirectories = row.supportDirectories;
    EXPECT_EQ(sharedWarpRootURL(fake.locations, fake.paths).path.utf8(), row.root) << row.name;
    EXPECT_EQ(sharedWarpRoot(fake.locations, fake.paths).url.path.utf8(), row.root) << row.name;
    EXPECT_EQ(sharedWarpRoot(fake.locations, fake.paths).parent,
              row.container.has_value() ? SharedWarpRootParent::groupContainer
                                        : SharedWarpRootParent::applicationSupport)
        << row.name;
  }
}

TEST(SharedContainer, raisesTheErrorOfAMissingFile) {
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

}  // namespace
}  // namespace velmora

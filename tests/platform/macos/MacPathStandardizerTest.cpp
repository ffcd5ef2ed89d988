#include "platform/macos/MacPathStandardizer.h"
#include "tests/contracts/PathStandardizerContract.h"

#include <gtest/gtest.h>

#include <vector>

namespace velmora {
namespace {

class MacPathsAdapter {
 public:
  const PathStandardizer& paths() { return paths_; }

 private:
  MacPathStandardizer paths_;
};

INSTANTIATE_TYPED_TEST_SUITE_P(Mac, PathStandardizerContract, MacPathsAdapter);

// Only Foundation has these rules, so the results show that Foundation was called.
TEST(MacPathStandardizerTest, removesPrivateBeforeAPathThatExistsWithoutIt) {
  const MacPathStandardizer paths;
  EXPECT_EQ(paths.standardizedFileURLPath("/private/tmp"), Text("/tmp"));
  EXPECT_EQ(paths.standardizedPath("/private/tmp"), Text("/tmp"));
}

TEST(MacPathStandardizerTest, listsThePathsWhosePrefixFoundationRemoves) {
  const MacPathStandardizer paths;
  EXPECT_EQ(paths.pathsStandardizedTo("/tmp"),
            (std::vector<Text>{"/tmp", "/private/tmp", "/var/automount/tmp",
                               "/private/var/automount/tmp"}));
}

TEST(MacPathStandardizerTest, listsNoPathForBytesThatAreNotUTF8) {
  const MacPathStandardizer paths;
  EXPECT_EQ(paths.standardizedFileURLPath("/a\xff").utf8(), "");
  EXPECT_EQ(paths.standardizedPath("/a\xff").utf8(), "/a\xff");
}

}  // namespace
}  // namespace velmora

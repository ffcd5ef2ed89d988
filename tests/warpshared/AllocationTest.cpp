// What is asked of every path of a large manifest costs no allocation when the path is ASCII.

#include "tests/FailingAllocations.h"
#include "text/CanonicalTextSet.h"
#include "text/Characters.h"
#include "text/Text.h"
#include "warpshared/EncodedValues.h"
#include "warpshared/PathPredicates.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <string_view>

namespace velmora {
namespace {

/// How many allocations `operation` makes.
template <class Operation>
std::size_t allocationsOf(Operation operation) {
  const long before = allocationCount();
  operation();
  return static_cast<std::size_t>(allocationCount() - before);
}

constexpr std::string_view path =
    "/Users/mika/Documents/Projects/2025/Camera Originals/Take 12/A long name of a file.mov";

TEST(Allocations, areCounted) {
  EXPECT_EQ(allocationsOf([] { static_cast<void>(std::string(path)); }), 1);
}

TEST(Allocations, areNoneInThePredicates) {
  EXPECT_EQ(allocationsOf([] {
              EXPECT_TRUE(isCanonicalAbsolutePath(path));
              EXPECT_TRUE(isSafeRelativeObjectKey(path.substr(1)));
              EXPECT_TRUE(isStandardBase64("QUJDREVGR0g="));
              EXPECT_FALSE(isSHA256Hex(path));
            }),
            0);
}

TEST(Allocations, areNoneWhenPathsAreCompared) {
  EXPECT_EQ(allocationsOf([] {
              EXPECT_TRUE(canonicallyEqual(path, path));
              EXPECT_FALSE(canonicallyEqual(path, path.substr(1)));
              EXPECT_TRUE(hasCharacterPrefix(path, "/Users/mika/"));
              EXPECT_NE(canonicalHash(path), canonicalHash(path.substr(1)));
            }),
            0);
}

TEST(Allocations, areNoneInASetWithRoom) {
  CanonicalTextSet set;
  set.reserve(path.size());
  EXPECT_EQ(allocationsOf([&set] {
              for (std::size_t length = 1; length <= path.size(); ++length) {
                EXPECT_TRUE(set.insert(path.substr(0, length)));
              }
              EXPECT_TRUE(set.contains(path));
            }),
            0);
}

}  // namespace
}  // namespace velmora

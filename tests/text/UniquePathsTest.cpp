#include "tests/support/Bytes.h"
#include "text/UniquePaths.h"

#include <gtest/gtest.h>

namespace velmora::internal {
namespace {

TEST(UniquePathsTest, keepTheFirstOfEquals) {
  EXPECT_EQ(bytesOf(uniquePaths({"/\u00e9", "/b", "/e\u0301", "/B", "/b"})),
            (std::vector<std::string>{"/\u00e9", "/b", "/B"}));
}

}  // namespace
}  // namespace velmora::internal

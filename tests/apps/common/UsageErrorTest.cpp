#include "common/UsageError.h"

#include <gtest/gtest.h>

namespace velmora {
namespace {

TEST(Options, beginWithADashAndAreMore) {
  EXPECT_TRUE(isOption("-x"));
  EXPECT_TRUE(isOption("--long"));
  EXPECT_TRUE(isOption("--"));
  EXPECT_FALSE(isOption("-"));
  EXPECT_FALSE(isOption(""));
  EXPECT_FALSE(isOption("x-"));
}

TEST(UsageErrors, areOneLineWhateverTheUserGave) {
  EXPECT_EQ(usageErrorInOneLine("a\nb\x1b[31m\x7f").message, "a?b?[31m?");
  EXPECT_EQ(usageErrorInOneLine("日本 'x'").message, "日本 'x'");
}

}  // namespace
}  // namespace velmora

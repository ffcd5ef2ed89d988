#include "text/UTF16.h"

#include <gtest/gtest.h>

namespace velmora::internal {
namespace {

TEST(UTF16, surrogatesAreHighOrLow) {
  struct {
    char32_t unit;
    bool isHigh;
    bool isLow;
  } const rows[] = {{0xD7FF, false, false}, {0xD800, true, false}, {0xDBFF, true, false},
                    {0xDC00, false, true},  {0xDFFF, false, true}, {0xE000, false, false}};
  for (const auto& row : rows) {
    EXPECT_EQ(isHighSurrogate(row.unit), row.isHigh) << static_cast<unsigned>(row.unit);
    EXPECT_EQ(isLowSurrogate(row.unit), row.isLow) << static_cast<unsigned>(row.unit);
    EXPECT_EQ(isSurrogate(row.unit), row.isHigh || row.isLow) << static_cast<unsigned>(row.unit);
  }
}

TEST(UTF16, pairIsACodePoint) {
  EXPECT_EQ(codePointOfPair(0xD800, 0xDC00), 0x10000U);
  EXPECT_EQ(codePointOfPair(0xD83D, 0xDE00), 0x1F600U);
  EXPECT_EQ(codePointOfPair(0xDBFF, 0xDFFF), 0x10FFFFU);
}

}  // namespace
}  // namespace velmora::internal

#include "json/streaming/MemberPrefix.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>

namespace velmora::internal {
namespace {

std::string startOfLength(std::size_t length) {
  std::string text = ",\"";
  while (text.size() < length) {
    text += static_cast<char>('a' + text.size() % 26);
  }
  return text.substr(0, length);
}

TEST(MemberPrefixTest, matchesItsTextBeforeAnyOtherText) {
  for (std::size_t length = 1; length <= MemberPrefix::maxLength; ++length) {
    const std::string text = startOfLength(length);
    const MemberPrefix start(text);
    EXPECT_EQ(start.length(), length);
    for (const char next : {'\0', '1', '"', '\xFF'}) {
      EXPECT_TRUE(start.isAt((text + std::string(MemberPrefix::maxLength, next)).data())) << length;
    }
  }
}

TEST(MemberPrefixTest, doesNotMatchWhenOneBitDiffers) {
  for (std::size_t length = 1; length <= MemberPrefix::maxLength; ++length) {
    const std::string text = startOfLength(length);
    const MemberPrefix start(text);
    for (std::size_t place = 0; place < length; ++place) {
      for (unsigned bit = 0; bit < 8; ++bit) {
        std::string other = text + std::string(MemberPrefix::maxLength, 'x');
        other[place] = static_cast<char>(static_cast<unsigned char>(other[place]) ^ 1U << bit);
        EXPECT_FALSE(start.isAt(other.data())) << length << ' ' << place << ' ' << bit;
      }
    }
  }
}

TEST(MemberPrefixTest, isEmptyForAnEmptyOrTooLongText) {
  EXPECT_EQ(MemberPrefix().length(), 0);
  EXPECT_EQ(MemberPrefix(startOfLength(MemberPrefix::maxLength + 1)).length(), 0);
}

}  // namespace
}  // namespace velmora::internal

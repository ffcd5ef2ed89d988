#include "text/ByteVector.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace velmora::internal {
namespace {

constexpr int byteCount = 256;

// For the comparison of a vector of equal bytes: whether all bits are set. Expects all or none.
bool isSet(ByteVector vector) {
  EXPECT_NE(isAnySet(vector), isAnySet(~vector));
  return isAnySet(vector);
}

ByteVector repeated(int byte) {
  const std::string bytes(byteVectorSize, static_cast<char>(byte));
  return byteVectorAt(bytes.data());
}

TEST(ByteVectorTest, comparesEachByte) {
  for (int byte = 0; byte < byteCount; ++byte) {
    for (int other = 0; other < byteCount; ++other) {
      ASSERT_EQ(isSet(areEqualTo(repeated(byte), static_cast<std::uint8_t>(other))), byte == other);
    }
  }
}

TEST(ByteVectorTest, findsEachByteOfARange) {
  for (const int last : {0x00, 0x01, 0x39, 0x7A, 0x7E, 0x7F, 0x80, 0x81, 0xFE, 0xFF}) {
    for (int first = std::max(0, last - 127); first <= last; ++first) {
      for (int byte = 0; byte < byteCount; ++byte) {
        const ByteVector inRange = areInRange(repeated(byte), static_cast<std::uint8_t>(first),
                                              static_cast<std::uint8_t>(last));
        ASSERT_EQ(isSet(inRange), first <= byte && byte <= last)
            << byte << " in " << first << " to " << last;
      }
    }
  }
}

TEST(ByteVectorTest, detectsAnySetBit) {
  EXPECT_FALSE(isAnySet(ByteVector{}));
  for (std::size_t position = 0; position < byteVectorSize; ++position) {
    for (int bit = 0; bit < 8; ++bit) {
      std::string bytes(byteVectorSize, '\0');
      bytes[position] = static_cast<char>(1 << bit);
      EXPECT_TRUE(isAnySet(byteVectorAt(bytes.data())));
    }
  }
}

struct AreLetters {
  ByteVector operator()(ByteVector bytes) const { return areEqualTo(bytes, 'a'); }
};

TEST(ByteVectorTest, checksEachByteOfTextsOfAnyLength) {
  for (std::size_t length = 0; length < 70; ++length) {
    // An allocation of exactly this length, so that sanitizers see a read beyond the end.
    std::vector<char> bytes(length, 'a');
    const std::string_view text(bytes.data(), bytes.size());
    EXPECT_TRUE(holdsForEachByte(text, 'a', AreLetters{})) << length;
    EXPECT_EQ(holdsForEachByte(text, 'b', AreLetters{}), length >= byteVectorSize) << length;
    for (char& byte : bytes) {
      byte = 'b';
      EXPECT_FALSE(holdsForEachByte(text, 'a', AreLetters{})) << length;
      byte = 'a';
    }
  }
}

}  // namespace
}  // namespace velmora::internal

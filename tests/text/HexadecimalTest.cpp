#include "text/Hexadecimal.h"

#include <gtest/gtest.h>

#include <string>

namespace velmora::internal {
namespace {

TEST(Hexadecimal, digitsOfEitherCaseHaveTheirValues) {
  for (unsigned value = 0; value < 16; ++value) {
    EXPECT_EQ(hexDigitValue(lowerCaseHexDigits[value]), value);
    EXPECT_EQ(hexDigitValue(upperCaseHexDigits[value]), value);
  }
}

TEST(Hexadecimal, noOtherByteIsADigit) {
  constexpr std::string_view all = "0123456789abcdefABCDEF";
  for (int byte = 0; byte < 256; ++byte) {
    const char character = static_cast<char>(byte);
    EXPECT_EQ(hexDigitValue(character).has_value(), all.find(character) != all.npos) << byte;
  }
}

TEST(Hexadecimal, aByteHasTwoDigits) {
  std::string text = ">";
  appendHexByte(text, 0x0F, lowerCaseHexDigits);
  appendHexByte(text, 0xA0, upperCaseHexDigits);
  EXPECT_EQ(text, ">0fA0");
}

}  // namespace
}  // namespace velmora::internal

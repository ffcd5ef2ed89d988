#include "json/DecimalDigits.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <random>
#include <string>
#include <vector>

namespace velmora::internal {
namespace {

DecimalValue valueOf(const std::string& digits) {
  // A separate allocation, so that a sanitizer sees a read beyond the digits.
  const std::vector<char> exact(digits.begin(), digits.end());
  return valueOfDigits(exact.data(), exact.size());
}

TEST(DecimalDigits, haveTheirValueForAnyCountOfDigits) {
  std::mt19937_64 random(7);
  for (int round = 0; round < 2000; ++round) {
    const std::uint64_t value = random() >> (round % 64);
    const DecimalValue read = valueOf(std::to_string(value));
    EXPECT_TRUE(read.isValid) << value;
    EXPECT_EQ(read.value, value);
  }
}

TEST(DecimalDigits, areValidUpTo64Bits) {
  struct {
    const char* digits;
    bool isValid;
  } const rows[] = {{"", false},
                    {"0", true},
                    {"00000007", true},
                    {"9999999999999999999", true},
                    {"10000000000000000000", true},
                    {"18446744073709551615", true},
                    {"18446744073709551616", false},
                    {"19999999999999999999", false},
                    {"20000000000000000000", false},
                    {"36893488147419103232", false},
                    {"99999999999999999999", false},
                    {"100000000000000000000", false}};
  for (const auto& row : rows) {
    EXPECT_EQ(valueOf(row.digits).isValid, row.isValid) << row.digits;
  }
}

TEST(DecimalDigits, areNotValidWithAnyOtherByte) {
  for (std::size_t count = 1; count <= 20; ++count) {
    for (std::size_t place = 0; place < count; ++place) {
      for (int byte = 0; byte < 256; ++byte) {
        std::string digits(count, '0');
        digits.front() = '1';
        digits[place] = static_cast<char>(byte);
        const bool isDigit = byte >= '0' && byte <= '9';
        const bool fits = count < 20 || (digits.front() == '1' && digits[1] < '9');
        ASSERT_EQ(valueOf(digits).isValid, isDigit && fits) << digits;
      }
    }
  }
}

TEST(DecimalDigits, areReadFromAWordWithoutTheBytesAfterThem) {
  for (std::size_t count = 1; count <= 8; ++count) {
    const std::string text = std::string("12345678").substr(0, count) + "\xFF,]x/:9 ";
    const DecimalValue read = valueOfDigitsInWord(text.data(), count);
    EXPECT_TRUE(read.isValid) << count;
    EXPECT_EQ(read.value, std::stoull(text.substr(0, count)));
  }
}

}  // namespace
}  // namespace velmora::internal

#include "json/ExactInteger.h"
#include "tests/json/JSONCases.h"
#include "tests/text/Words.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <type_traits>
#include <vector>

namespace velmora::internal {
namespace {

std::string zeros(std::size_t count) { return std::string(count, '0'); }

std::string written(std::optional<ExactInteger> integer) {
  return integer.has_value() ? (integer->isNegative ? "-" : "") + std::to_string(integer->magnitude)
                             : std::string(noInteger);
}

TEST(ExactIntegerTest, valueIsExactInEveryNotation) {
  for (const NumberCase& row : numberCases) {
    for (const std::string& text : wordsOf(row.texts)) {
      SCOPED_TRACE(text);
      EXPECT_EQ(isJSONNumber(text), row.value != noNumber);
      if (row.value != noNumber) {
        EXPECT_EQ(written(exactInteger(text)), row.value == itself ? text : row.value);
      }
    }
  }
}

TEST(ExactIntegerTest, otherTextIsNoNumber) {
  for (const std::string text : {"", " 1", "1 ", "1,000"}) {
    EXPECT_FALSE(isJSONNumber(text)) << text;
  }
}

/// `digits` times ten to the power of `exponent`, with the decimal point before the last
/// `fractionLength` digits.
std::string pointed(std::string digits, std::size_t fractionLength, int exponent) {
  if (digits.size() <= fractionLength) {
    digits.insert(0, zeros(fractionLength + 1 - digits.size()));
  }
  if (fractionLength > 0) {
    digits.insert(digits.size() - fractionLength, ".");
  }
  return digits + "e" + std::to_string(exponent);
}

TEST(ExactIntegerTest, positionOfThePointMakesNoDifference) {
  std::vector<std::uint64_t> values = {1, 9, 10, 101, 4096, 1000000};
  for (std::uint64_t power = 1; power <= 1000000000000000000U; power *= 10) {
    values.insert(values.end(), {power * 10 - 1, power * 10, power * 10 + 1});
  }
  values.push_back(std::numeric_limits<std::uint64_t>::max());
  for (const std::uint64_t value : values) {
    const std::string digits = std::to_string(value);
    for (std::size_t length = 0; length <= 30; ++length) {
      const auto exponent = static_cast<int>(length);
      EXPECT_EQ(written(exactInteger(pointed(digits, length, exponent))), digits);
      EXPECT_EQ(written(exactInteger(pointed(digits + zeros(length), 0, -exponent))), digits);
      EXPECT_EQ(exactInteger(pointed(digits + "1", length, exponent - 1)), std::nullopt);
    }
  }
}

TEST(ExactIntegerTest, digitsCountByTheirPosition) {
  const std::string digits = "98765432109876543210";
  for (std::size_t begin = 0; begin < digits.size(); ++begin) {
    for (std::size_t length = 1; begin + length <= digits.size() && length < digits.size();
         ++length) {
      const std::string number = digits.substr(begin, length);
      if (number.front() != '0') {
        EXPECT_TRUE(isJSONNumber(number)) << number;
        EXPECT_EQ(written(exactInteger(number)), number);
        EXPECT_EQ(written(exactInteger("-" + number)), "-" + number);
      }
    }
  }
}

TEST(ExactIntegerTest, everyOtherByteIsDistinguishedFromDigits) {
  for (std::size_t place = 0; place < 19; ++place) {
    for (int byte = 0; byte <= std::numeric_limits<unsigned char>::max(); ++byte) {
      std::string text(19, '1');
      text[place] = static_cast<char>(byte);
      const bool isDigit = byte >= '0' && byte <= '9';
      const bool isInside = place > 0 && place < 18;
      const bool isNumber = (isDigit && (byte != '0' || place > 0)) ||
                            (byte == '-' && place == 0) ||
                            ((byte == '.' || byte == 'e' || byte == 'E') && isInside);
      EXPECT_EQ(isJSONNumber(text), isNumber) << text;
      if (isNumber && isDigit) {
        EXPECT_EQ(written(exactInteger(text)), text);
      } else if (byte == '.') {
        EXPECT_EQ(exactInteger(text), std::nullopt) << text;
      }
    }
  }
}

TEST(ExactIntegerTest, numbersOfMillionsOfCharactersAreRead) {
  constexpr std::size_t many = 10'000'000;
  const std::string nines(many, '9');
  EXPECT_EQ(written(exactInteger("1" + zeros(many) + "e-10000000")), "1");
  EXPECT_EQ(written(exactInteger("0." + zeros(many) + "1e10000001")), "1");
  EXPECT_EQ(exactInteger("1" + zeros(many) + "e-9999999999999999999"), std::nullopt);
  EXPECT_EQ(exactInteger("1" + zeros(many) + "e9999999999999999999"), std::nullopt);
  EXPECT_EQ(exactInteger("1e" + nines), std::nullopt);
  EXPECT_EQ(exactInteger("1e-" + nines), std::nullopt);
  EXPECT_EQ(exactInteger("0e" + nines), ExactInteger{});
  EXPECT_EQ(exactInteger(nines), std::nullopt);
}

template <class Integer>
void expectBoundaries() {
  using Limits = std::numeric_limits<Integer>;
  constexpr auto largest = static_cast<std::uint64_t>(Limits::max());
  constexpr std::uint64_t largestOfAll = std::numeric_limits<std::uint64_t>::max();
  constexpr bool isSigned = std::is_signed_v<Integer>;
  const auto below = [](std::uint64_t magnitude) {
    return checkedCast<Integer>({.isNegative = true, .magnitude = magnitude});
  };
  const std::optional<Integer> none;
  EXPECT_EQ(checkedCast<Integer>({}), Integer{0});
  EXPECT_EQ(checkedCast<Integer>({.magnitude = 1}), Integer{1});
  EXPECT_EQ(checkedCast<Integer>({.magnitude = largest}), Limits::max());
  if (largest < largestOfAll) {
    EXPECT_EQ(checkedCast<Integer>({.magnitude = largest + 1}), none);
  }
  EXPECT_EQ(below(1), isSigned ? std::optional(static_cast<Integer>(-1)) : none);
  EXPECT_EQ(below(largest), isSigned ? std::optional(static_cast<Integer>(-largest)) : none);
  if (isSigned) {
    EXPECT_EQ(below(largest + 1), Limits::min());
    EXPECT_EQ(below(largest + 2), none);
  }
  EXPECT_EQ(below(largestOfAll), none);
}

TEST(ExactIntegerTest, fitsWithinTheBoundariesOfEachType) {
  expectBoundaries<std::int8_t>();
  expectBoundaries<std::uint8_t>();
  expectBoundaries<std::int16_t>();
  expectBoundaries<std::uint16_t>();
  expectBoundaries<std::int32_t>();
  expectBoundaries<std::uint32_t>();
  expectBoundaries<std::int64_t>();
  expectBoundaries<std::uint64_t>();
}

}  // namespace
}  // namespace velmora::internal

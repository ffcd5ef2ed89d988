#include "json/ExactInteger.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

namespace velmora {
namespace {

constexpr std::string_view numbers[] = {
    "0",         "-0",     "1",    "-1",   "10",    "1234567890", "0.0",    "0.5",
    "-0.50",     "1e0",    "1E0",  "1e+0", "1e-0",  "1E+05",      "1E-05",  "-1.5e3",
    "0e0",       "0.0e-0", "1e99", "9e-9", "0e999", "1e9999",     "1.0e01", "18446744073709551616",
    "-9.99E+99",
};

constexpr std::string_view notNumbers[] = {
    "",    "-",        "+1",        "+",     "01", "00",  "-01",    "-00",     ".5",  "-.5",
    "1.",  "-1.",      "1.e",       "1e",    "1E", "1e+", "1e-",    "1e+-1",   "e5",  "-e5",
    ".",   "1.5.5",    "1e5e5",     "1e5.5", " 1", "1 ",  "1_000",  "1,000",   "0x1", "1f",
    "NaN", "Infinity", "-Infinity", "--1",   "1-", "1+1", "\u0661", "1\u0661",
};

TEST(ExactIntegerTest, tellsNumbersFromOtherTexts) {
  for (const std::string_view number : numbers) {
    EXPECT_TRUE(isJSONNumber(number)) << number;
  }
  for (const std::string_view text : notNumbers) {
    EXPECT_FALSE(isJSONNumber(text)) << text;
  }
  EXPECT_FALSE(isJSONNumber({"1\0", 2}));
}

struct IntegerCase {
  const char* name;
  std::string number;
  std::optional<ExactInteger> value;
};

std::string zeros(std::size_t count) { return std::string(count, '0'); }

const IntegerCase integerCases[] = {
    {.name = "zero", .number = "0", .value = ExactInteger{}},
    {.name = "negativeZero", .number = "-0", .value = ExactInteger{}},
    {.name = "negativeZeroWithFraction", .number = "-0.0", .value = ExactInteger{}},
    {.name = "one", .number = "1", .value = ExactInteger{.magnitude = 1}},
    {.name = "minusOne", .number = "-1", .value = ExactInteger{.isNegative = true, .magnitude = 1}},
    {.name = "zeroAsFraction", .number = "4.0", .value = ExactInteger{.magnitude = 4}},
    {.name = "exponentZero", .number = "4e0", .value = ExactInteger{.magnitude = 4}},
    {.name = "negativeExponent", .number = "40e-1", .value = ExactInteger{.magnitude = 4}},
    {.name = "negativeExponentAndSign",
     .number = "-400E-2",
     .value = ExactInteger{.isNegative = true, .magnitude = 4}},
    {.name = "fractionMadeWhole", .number = "1.25e2", .value = ExactInteger{.magnitude = 125}},
    {.name = "fractionMadeWholeAndMore",
     .number = "1.25e+3",
     .value = ExactInteger{.magnitude = 1250}},
    {.name = "smallFractionMadeWhole", .number = "0.0004e4", .value = ExactInteger{.magnitude = 4}},
    {.name = "fractionLeft", .number = "1.25e1", .value = std::nullopt},
    {.name = "half", .number = "0.5", .value = std::nullopt},
    {.name = "minusHalf", .number = "-0.5", .value = std::nullopt},
    {.name = "justNotWhole", .number = "4.00000000000000000000000001", .value = std::nullopt},
    {.name = "digitLost", .number = "41e-1", .value = std::nullopt},
    {.name = "largeAsFraction",
     .number = "9007199254740993.0",
     .value = ExactInteger{.magnitude = 9007199254740993U}},
    {.name = "nineteenDigits",
     .number = "9999999999999999999",
     .value = ExactInteger{.magnitude = 9999999999999999999U}},
    {.name = "twentyDigits",
     .number = "10000000000000000000",
     .value = ExactInteger{.magnitude = 10000000000000000000U}},
    {.name = "twentyDigitsByExponent",
     .number = "1e19",
     .value = ExactInteger{.magnitude = 10000000000000000000U}},
    {.name = "largest",
     .number = "18446744073709551615",
     .value = ExactInteger{.magnitude = std::numeric_limits<std::uint64_t>::max()}},
    {.name = "largestNegative",
     .number = "-18446744073709551615",
     .value =
         ExactInteger{.isNegative = true, .magnitude = std::numeric_limits<std::uint64_t>::max()}},
    {.name = "largestAsFraction",
     .number = "18446744073709551615.000",
     .value = ExactInteger{.magnitude = std::numeric_limits<std::uint64_t>::max()}},
    {.name = "largestByExponent",
     .number = "1.8446744073709551615e19",
     .value = ExactInteger{.magnitude = std::numeric_limits<std::uint64_t>::max()}},
    {.name = "oneMoreThanLargest", .number = "18446744073709551616", .value = std::nullopt},
    {.name = "otherTwentyDigits", .number = "99999999999999999999", .value = std::nullopt},
    {.name = "twentyOneDigits", .number = "100000000000000000000", .value = std::nullopt},
    {.name = "twentyOneDigitsByExponent", .number = "1e20", .value = std::nullopt},
    {.name = "beyondDouble", .number = "1e400", .value = std::nullopt},
    {.name = "belowDouble", .number = "1e-400", .value = std::nullopt},
    {.name = "zeroWithAnyExponent", .number = "0e999999999999", .value = ExactInteger{}},
    {.name = "zeroWithAnyNegativeExponent",
     .number = "-0.000e-999999999999",
     .value = ExactInteger{}},
    {.name = "exponentOf64Bits", .number = "1e18446744073709551616", .value = std::nullopt},
    {.name = "negativeExponentOf64Bits",
     .number = "1e-18446744073709551616",
     .value = std::nullopt},
    {.name = "exponentWithZeros",
     .number = "4e" + zeros(1000) + "1",
     .value = ExactInteger{.magnitude = 40}},
    {.name = "exponentOfZeros",
     .number = "4e-" + zeros(1000),
     .value = ExactInteger{.magnitude = 4}},
    {.name = "thousandDigitsMadeFew",
     .number = "12" + zeros(1000) + "e-1000",
     .value = ExactInteger{.magnitude = 12}},
    {.name = "thousandDigitsMadeTooFew",
     .number = "12" + zeros(1000) + "e-1002",
     .value = std::nullopt},
    {.name = "thousandDigits", .number = "1" + zeros(999), .value = std::nullopt},
    {.name = "thousandDigitsThatMatter",
     .number = std::string(1000, '7') + "e-990",
     .value = std::nullopt},
    {.name = "thousandZerosAsFraction",
     .number = "7." + zeros(1000),
     .value = ExactInteger{.magnitude = 7}},
    {.name = "thousandZerosBeforeDigit",
     .number = "0." + zeros(1000) + "7e1001",
     .value = ExactInteger{.magnitude = 7}},
};

TEST(ExactIntegerTest, valueIsExactHoweverWritten) {
  for (const IntegerCase& row : integerCases) {
    SCOPED_TRACE(row.name);
    ASSERT_TRUE(isJSONNumber(row.number));
    EXPECT_EQ(exactInteger(row.number), row.value);
  }
}

/// `digits`, times ten to the power of `exponent`, with the decimal point before the last
/// `fractionLength` of them.
std::string pointed(std::string digits, std::size_t fractionLength, int exponent) {
  if (digits.size() <= fractionLength) {
    digits.insert(0, zeros(fractionLength + 1 - digits.size()));
  }
  if (fractionLength > 0) {
    digits.insert(digits.size() - fractionLength, ".");
  }
  return digits + "e" + std::to_string(exponent);
}

TEST(ExactIntegerTest, thePlaceOfThePointMakesNoDifference) {
  std::vector<std::uint64_t> values = {1, 9, 10, 101, 4096, 1000000};
  for (std::uint64_t power = 1; power <= 1000000000000000000U; power *= 10) {
    values.insert(values.end(), {power * 10 - 1, power * 10, power * 10 + 1});
  }
  values.push_back(std::numeric_limits<std::uint64_t>::max());
  for (const std::uint64_t value : values) {
    const ExactInteger expected{.magnitude = value};
    for (std::size_t length = 0; length <= 30; ++length) {
      const auto exponent = static_cast<int>(length);
      EXPECT_EQ(exactInteger(pointed(std::to_string(value), length, exponent)), expected);
      EXPECT_EQ(exactInteger(pointed(std::to_string(value) + zeros(length), 0, -exponent)),
                expected);
      EXPECT_EQ(exactInteger(pointed(std::to_string(value) + "1", length, exponent - 1)),
                std::nullopt);
    }
  }
}

TEST(ExactIntegerTest, digitsCountByTheirPlace) {
  const std::string digits = "98765432109876543210";
  for (std::size_t begin = 0; begin < digits.size(); ++begin) {
    for (std::size_t length = 1; begin + length <= digits.size() && length < digits.size();
         ++length) {
      const std::string number = digits.substr(begin, length);
      if (number.front() == '0' && length > 1) {
        continue;
      }
      const std::uint64_t value = std::stoull(number);
      EXPECT_TRUE(isJSONNumber(number)) << number;
      EXPECT_EQ(exactInteger(number), (ExactInteger{.isNegative = false, .magnitude = value}))
          << number;
      EXPECT_EQ(exactInteger("-" + number),
                (ExactInteger{.isNegative = value != 0, .magnitude = value}))
          << number;
    }
  }
}

TEST(ExactIntegerTest, everyOtherByteAmongDigitsIsToldFromThem) {
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
        EXPECT_EQ(exactInteger(text),
                  (ExactInteger{.isNegative = false, .magnitude = std::stoull(text)}));
      } else if (byte == '.') {
        EXPECT_EQ(exactInteger(text), std::nullopt) << text;
      }
    }
  }
}

TEST(ExactIntegerTest, numbersOfMillionsOfCharactersAreRead) {
  constexpr std::size_t many = 10'000'000;
  const ExactInteger one{.magnitude = 1};
  EXPECT_EQ(exactInteger("1" + zeros(many) + "e-10000000"), one);
  EXPECT_EQ(exactInteger("0." + zeros(many) + "1e10000001"), one);
  EXPECT_EQ(exactInteger("1" + zeros(many) + "e-9999999999999999999"), std::nullopt);
  EXPECT_EQ(exactInteger("1" + zeros(many) + "e9999999999999999999"), std::nullopt);
  EXPECT_EQ(exactInteger("1e" + std::string(many, '9')), std::nullopt);
  EXPECT_EQ(exactInteger("1e-" + std::string(many, '9')), std::nullopt);
  EXPECT_EQ(exactInteger("0e" + std::string(many, '9')), ExactInteger{});
  EXPECT_EQ(exactInteger(std::string(many, '9')), std::nullopt);
}

template <class Integer>
void expectBoundaries() {
  using Limits = std::numeric_limits<Integer>;
  constexpr auto largest = static_cast<std::uint64_t>(Limits::max());
  const ExactInteger zero{};
  EXPECT_EQ(fitted<Integer>(zero), Integer{0});
  EXPECT_EQ(fitted<Integer>({.magnitude = 1}), Integer{1});
  EXPECT_EQ(fitted<Integer>({.magnitude = largest}), Limits::max());
  if (largest < std::numeric_limits<std::uint64_t>::max()) {
    EXPECT_EQ(fitted<Integer>({.magnitude = largest + 1}), std::nullopt);
  }
  constexpr ExactInteger smallest{.isNegative = true, .magnitude = largest + 1};
  if (std::is_signed_v<Integer>) {
    EXPECT_EQ(fitted<Integer>({.isNegative = true, .magnitude = 1}), static_cast<Integer>(-1));
    EXPECT_EQ(fitted<Integer>(smallest), Limits::min());
    EXPECT_EQ(fitted<Integer>({.isNegative = true, .magnitude = largest + 2}), std::nullopt);
  } else {
    EXPECT_EQ(fitted<Integer>({.isNegative = true, .magnitude = 1}), std::nullopt);
    EXPECT_EQ(fitted<Integer>({.isNegative = true, .magnitude = largest}), std::nullopt);
  }
  EXPECT_EQ(
      fitted<Integer>({.isNegative = true, .magnitude = std::numeric_limits<std::uint64_t>::max()}),
      std::nullopt);
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
}  // namespace velmora

#include "tests/support/AnsweredCases.h"
#include "warpshared/EncodedValues.h"

#include <gtest/gtest.h>

#include <iterator>
#include <limits>
#include <random>

namespace velmora {
namespace {

struct EncodedCase {
  std::string_view name;
  std::string_view text;
  bool isValid;
};

constexpr EncodedCase base64Cases[] = {
    {.name = "empty", .text = "", .isValid = true},
    {.name = "oneByte", .text = "QQ==", .isValid = true},
    {.name = "twoBytes", .text = "QUI=", .isValid = true},
    {.name = "threeBytes", .text = "QUJD", .isValid = true},
    {.name = "allDigits",
     .text = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/",
     .isValid = true},
    {.name = "bitsLeftOverOfOneByte", .text = "QR==", .isValid = true},
    {.name = "bitsLeftOverOfTwoBytes", .text = "QUJ=", .isValid = true},
    {.name = "lacksOnePadding", .text = "QQ=", .isValid = false},
    {.name = "lacksAllPadding", .text = "QQ", .isValid = false},
    {.name = "oneDigit", .text = "Q", .isValid = false},
    {.name = "oneDigitPadded", .text = "Q===", .isValid = false},
    {.name = "onlyPadding", .text = "====", .isValid = false},
    {.name = "paddingInside", .text = "QQ==QUJD", .isValid = false},
    {.name = "paddingBeforeDigit", .text = "QU=D", .isValid = false},
    {.name = "fourTooManyPaddings", .text = "QUJD====", .isValid = false},
    {.name = "spaceInside", .text = "Q Q==", .isValid = false},
    {.name = "spaceForDigit", .text = "Q Q=", .isValid = false},
    {.name = "lineFeedInside", .text = "QUJD\nUJD", .isValid = false},
    {.name = "lineFeedAtEnd", .text = "QUJD\n", .isValid = false},
    {.name = "digitsOfURLs", .text = "-_-_", .isValid = false},
    {.name = "nul", .text = {"QUJ\0", 4}, .isValid = false},
    {.name = "notASCII", .text = "QU\u00e9", .isValid = false},
};

constexpr std::string_view base64Digits =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

constexpr std::string_view sixtyFourDigits =
    "0123456789abcdefABCDEF01234567890123456789abcdefABCDEF0123456789";

TEST(EncodedValuesTest, base64HasItsAlphabetAndPaddingOnly) {
  for (const EncodedCase& row : base64Cases) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(isStandardBase64(row.text), row.isValid);
  }
}

TEST(EncodedValuesTest, answersTheBase64Cases) {
  const std::vector<AnsweredCase> cases = readAnsweredCases("warpshared/base64.jsonl");
  EXPECT_EQ(cases.size(), 17U);
  for (const AnsweredCase& row : cases) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(isStandardBase64(row.input), row.expect<bool>());
  }
}

TEST(EncodedValuesTest, answersTheChecksumCases) {
  const std::vector<AnsweredCase> cases = readAnsweredCases("warpshared/checksum.jsonl");
  EXPECT_EQ(cases.size(), 9U);
  for (const AnsweredCase& row : cases) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(isSHA256Hex(row.input), row.expect<bool>());
  }
}

// What each byte makes of `text` in each place.
void expectEachByteInEachPlace(std::string text, bool (*isValid)(std::string_view),
                               std::string_view digits, std::size_t placeCount) {
  for (std::size_t place = 0; place < placeCount; ++place) {
    const char original = text[place];
    for (int byte = 0; byte <= std::numeric_limits<unsigned char>::max(); ++byte) {
      text[place] = static_cast<char>(byte);
      EXPECT_EQ(isValid(text), digits.find(text[place]) != std::string_view::npos)
          << "byte " << byte << " at " << place;
    }
    text[place] = original;
  }
}

TEST(EncodedValuesTest, eachByteOfBase64IsLookedAt) {
  for (const std::size_t length : {4U, 8U, 16U, 36U, 68U}) {
    // The last digit may be padding, too.
    expectEachByteInEachPlace(std::string(length, 'Q'), isStandardBase64, base64Digits, length - 1);
    expectEachByteInEachPlace(std::string(length - 2, 'Q') + "==", isStandardBase64, base64Digits,
                              length - 2);
  }
}

TEST(EncodedValuesTest, eachByteOfAChecksumIsLookedAt) {
  constexpr std::string_view digits = "0123456789abcdefABCDEF";
  expectEachByteInEachPlace(std::string(sixtyFourDigits), isSHA256Hex, digits,
                            sixtyFourDigits.size());
}

// The rules, byte by byte.
bool isBase64ByTheRules(std::string_view text) {
  std::size_t digits = 0;
  while (digits < text.size() && base64Digits.find(text[digits]) != std::string_view::npos) {
    ++digits;
  }
  const std::string_view rest = text.substr(digits);
  return text.size() % 4 == 0 && (rest.empty() || rest == "=" || rest == "==");
}

bool isChecksumByTheRules(std::string_view text) {
  return text.size() == 64 &&
         text.find_first_not_of("0123456789abcdefABCDEF") == std::string_view::npos;
}

class RandomDigits {
 public:
  // Of `length` digits from `alphabet`, at most two replaced by any byte.
  std::string next(std::string_view alphabet, std::size_t length) {
    std::string text(length, '\0');
    for (char& digit : text) {
      digit = alphabet[upTo(alphabet.size() - 1)];
    }
    for (std::size_t count = text.empty() ? 0 : upTo(2); count > 0; --count) {
      text[upTo(text.size() - 1)] = static_cast<char>(upTo(255));
    }
    return text;
  }

  std::size_t upTo(std::size_t last) {
    return std::uniform_int_distribution<std::size_t>(0, last)(engine_);
  }

 private:
  std::mt19937_64 engine_{20240303};
};

TEST(EncodedValuesTest, answersAreTheRulesForAnyText) {
  constexpr std::string_view paddings[] = {"", "", "=", "==", "==="};
  RandomDigits random;
  int base64 = 0;
  int checksums = 0;
  for (int round = 0; round < 50'000; ++round) {
    std::string text = random.next(base64Digits, random.upTo(70));
    text += paddings[random.upTo(std::size(paddings) - 1)];
    ASSERT_EQ(isStandardBase64(text), isBase64ByTheRules(text)) << testing::PrintToString(text);
    base64 += isStandardBase64(text) ? 1 : 0;
    const std::string digits = random.next("0123456789abcdefABCDEF", 63 + random.upTo(2));
    ASSERT_EQ(isSHA256Hex(digits), isChecksumByTheRules(digits)) << testing::PrintToString(digits);
    checksums += isSHA256Hex(digits) ? 1 : 0;
  }
  // Else the comparison would say little.
  EXPECT_GT(base64, 2'000);
  EXPECT_GT(checksums, 2'000);
}

TEST(EncodedValuesTest, checksumHas64Digits) {
  std::string digits(sixtyFourDigits);
  EXPECT_TRUE(isSHA256Hex(digits));
  EXPECT_FALSE(isSHA256Hex(digits + "0"));
  EXPECT_FALSE(isSHA256Hex(digits + "\n"));
  EXPECT_FALSE(isSHA256Hex(digits + digits));
  digits.pop_back();
  EXPECT_FALSE(isSHA256Hex(digits));
  EXPECT_FALSE(isSHA256Hex(""));
}

}  // namespace
}  // namespace velmora

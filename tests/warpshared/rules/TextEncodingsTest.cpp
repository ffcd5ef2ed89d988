#include "tests/support/AnsweredCases.h"
#include "warpshared/rules/TextEncodings.h"

#include <gtest/gtest.h>

#include <iterator>
#include <limits>
#include <random>

namespace velmora::internal {
namespace {

constexpr std::string_view base64Digits =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

constexpr std::string_view sixtyFourDigits =
    "0123456789abcdefABCDEF01234567890123456789abcdefABCDEF0123456789";

TEST(TextEncodingsTest, base64HasOnlyItsAlphabetAndPadding) {
  for (const char* const text : {"QQ==", "QUI="}) {
    EXPECT_TRUE(isStandardBase64(text)) << text;
  }
  for (const char* const text : {"Q", "Q===", "QQ==QUJD", "QUJD====", "QUJD\nUJD", "QUJD\n"}) {
    EXPECT_FALSE(isStandardBase64(text)) << text;
  }
}

TEST(TextEncodingsTest, answersTheCases) {
  const auto expectAnswers = [](const char* path, std::size_t count, auto isValid) {
    const std::vector<AnsweredCase> cases = readAnsweredCases(path);
    EXPECT_EQ(cases.size(), count);
    for (const AnsweredCase& row : cases) {
      EXPECT_EQ(isValid(row.input), row.expect<bool>()) << row.name;
    }
  };
  expectAnswers("warpshared/base64.jsonl", 17, isStandardBase64);
  expectAnswers("warpshared/checksum.jsonl", 9, isSHA256Hex);
}

// Tries each byte at each position of `text`.
void expectEachByteAtEachPosition(std::string text, bool (*isValid)(std::string_view),
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

TEST(TextEncodingsTest, eachByteOfBase64IsChecked) {
  for (const std::size_t length : {4U, 8U, 16U, 36U, 68U}) {
    // The last digit may also be padding.
    expectEachByteAtEachPosition(std::string(length, 'Q'), isStandardBase64, base64Digits,
                                 length - 1);
    expectEachByteAtEachPosition(std::string(length - 2, 'Q') + "==", isStandardBase64,
                                 base64Digits, length - 2);
  }
}

TEST(TextEncodingsTest, eachByteOfAChecksumIsChecked) {
  constexpr std::string_view digits = "0123456789abcdefABCDEF";
  expectEachByteAtEachPosition(std::string(sixtyFourDigits), isSHA256Hex, digits,
                               sixtyFourDigits.size());
}

// The rules in their simplest form.
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
  // A text of `length` digits from `alphabet`, of which at most two are replaced by any byte.
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

TEST(TextEncodingsTest, answersFollowTheRulesForAnyText) {
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
  // Too few of a kind would make the comparison weak.
  EXPECT_GT(base64, 2'000);
  EXPECT_GT(checksums, 2'000);
}

TEST(TextEncodingsTest, checksumHas64Digits) {
  const std::string digits(sixtyFourDigits);
  EXPECT_TRUE(isSHA256Hex(digits));
  for (const std::string& after : {std::string("0"), std::string("\n"), digits}) {
    EXPECT_FALSE(isSHA256Hex(digits + after)) << after;
  }
}

}  // namespace
}  // namespace velmora::internal

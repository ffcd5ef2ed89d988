#include "json/ExactInteger.h"
#include "json/QuickTokens.h"
#include "tests/support/RowName.h"
#include "tests/json/TokenizedText.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace velmora {
namespace {

using std::string_literals::operator""s;

/// The value that is all of `text`.
template <class Value>
std::optional<Value> taken(const std::string& text) {
  TokenizedText document(text);
  Value value{};
  const bool isTaken = document.tokens().take(value) && document.tokens().atEnd();
  return isTaken ? std::optional(value) : std::nullopt;
}

std::optional<std::string> takenText(const std::string& text) {
  TokenizedText document(text);
  std::string_view value;
  return document.tokens().take(value) ? std::optional(std::string(value)) : std::nullopt;
}

struct IntegerCase {
  const char* name;
  std::string number;
  bool isTaken = true;
};

const std::vector<IntegerCase> integers = {
    {"zero", "0"},
    {"minusZero", "-0"},
    {"one", "1"},
    {"minusOne", "-1"},
    {"sevenDigits", "1234567"},
    {"eightDigits", "12345678"},
    {"nineDigits", "123456789"},
    {"sixteenDigits", "1234567890123456"},
    {"seventeenDigits", "98765432109876543"},
    {"uint8Largest", "255"},
    {"uint8Beyond", "256"},
    {"uint16Largest", "65535"},
    {"uint16Beyond", "65536"},
    {"uint32Largest", "4294967295"},
    {"uint32Beyond", "4294967296"},
    {"int64Largest", "9223372036854775807"},
    {"int64Beyond", "9223372036854775808"},
    {"int64Least", "-9223372036854775808"},
    {"int64Below", "-9223372036854775809"},
    {"mostOf19Digits", "9999999999999999999"},
    {"leastOf20Digits", "10000000000000000000"},
    {"uint64Largest", "18446744073709551615"},
    {"uint64Beyond", "18446744073709551616", false},
    {"justBelowTwiceTheLeastOf20Digits", "19999999999999999999", false},
    {"twiceTheLeastOf20Digits", "20000000000000000000", false},
    {"wrapsAroundToAnother20Digits", "28446744073709551616", false},
    {"wrapsAroundTwice", "46893488147419103231", false},
    {"mostOf20Digits", "99999999999999999999", false},
    {"uint64BeyondBelowZero", "-18446744073709551616", false},
    {"leastOf21Digits", "100000000000000000000", false},
    {"wrapsAroundFrom21Digits", "184467440737095516160", false},
    {"leadingZero", "01", false},
    {"twoZeros", "00", false},
    {"leadingZeroBelowZero", "-01", false},
    {"minusAlone", "-", false},
    {"twoMinuses", "--1", false},
    {"plus", "+1", false},
    {"minusInside", "1-2", false},
    {"fraction", "1.0", false},
    {"exponent", "1e0", false},
    {"capitalExponent", "1E2", false},
    {"lettersBehind", "1x", false},
    {"hexadecimal", "0x1", false},
    {"letter", "x", false},
    {"letterAmongEight", "1234x678", false},
    {"fractionAmongEight", "1234.678", false},
    {"minusAmongEight", "123456-8", false},
    {"plusAmongEight", "1+345678", false},
    {"byteBelowZeroAmongEight", "1234/678", false},
    {"byteBelowZeroBehindEight", "123456781/345678", false},
    {"sevenMoreThanNineAmongEight", "1234?678", false},
    {"nonASCII", "123456\u00e9", false},
    {"NULBehind", "1\0"s, false},
    {"NULAmongEight", "1234\000678"s, false},
    {"text", "\"1\"", false},
    {"null", "null", false},
    {"array", "[", false},
};

class QuickIntegers : public testing::TestWithParam<IntegerCase> {};

/// As the exact reader has it, or not at all.
template <std::integral Integer>
void expectExact(const IntegerCase& row) {
  const std::optional<ExactInteger> exact = row.isTaken ? exactInteger(row.number) : std::nullopt;
  const std::optional<Integer> expected =
      exact.has_value() ? fitted<Integer>(*exact) : std::nullopt;
  EXPECT_EQ(taken<Integer>(row.number), expected);
  EXPECT_EQ(taken<Integer>(" \n" + row.number + "\r\t "), expected);
}

TEST_P(QuickIntegers, areExactOrGivenUp) {
  expectExact<std::int64_t>(GetParam());
  expectExact<std::uint64_t>(GetParam());
  expectExact<std::uint32_t>(GetParam());
  expectExact<std::uint16_t>(GetParam());
  expectExact<std::int8_t>(GetParam());
}

INSTANTIATE_TEST_SUITE_P(Table, QuickIntegers, testing::ValuesIn(integers), RowName());

TEST(QuickTokensTest, takesEveryIntegerOfItsWriting) {
  std::mt19937_64 random(1);
  for (int count = 0; count < 5000; ++count) {
    const std::uint64_t number = random() >> (random() % 64);
    EXPECT_EQ(taken<std::uint64_t>(std::to_string(number)), number);
    const auto signedNumber = static_cast<std::int64_t>(number);
    EXPECT_EQ(taken<std::int64_t>(std::to_string(signedNumber)), signedNumber);
  }
}

TEST(QuickTokensTest, takesNoNumberThatIsNotExact) {
  constexpr std::string_view characters = "00123456789999-+.eE:/";
  std::mt19937_64 random(2);
  for (int count = 0; count < 20'000; ++count) {
    std::string number = random() % 2 == 0 ? "1" : "";
    for (std::size_t length = 1 + random() % 21; length > 0; --length) {
      number += characters[random() % (random() % 4 == 0 ? characters.size() : 14)];
    }
    if (const std::optional<std::uint64_t> value = taken<std::uint64_t>(number)) {
      ASSERT_TRUE(isJSONNumber(number)) << number;
      ASSERT_EQ(exactInteger(number), (ExactInteger{.magnitude = *value})) << number;
    }
  }
}

struct TextCase {
  const char* name;
  std::string string;
  /// None when it is given up.
  std::optional<std::string> text;
};

class QuickTexts : public testing::TestWithParam<TextCase> {};

TEST_P(QuickTexts, areResolvedOrGivenUp) {
  EXPECT_EQ(takenText(GetParam().string), GetParam().text);
  EXPECT_EQ(takenText("  " + GetParam().string + "\n "), GetParam().text);
}

TEST_P(QuickTexts, areTheSameBehindOthers) {
  const std::string others = R"("plain" "escaped\n" "" "plain again" "two\\\"")";
  TokenizedText document(others + GetParam().string);
  for (const std::string_view expected : {"plain", "escaped\n", "", "plain again", "two\\\""}) {
    std::string_view text;
    ASSERT_TRUE(document.tokens().take(text));
    EXPECT_EQ(text, expected);
  }
  std::string_view text;
  ASSERT_EQ(document.tokens().take(text), GetParam().text.has_value());
  if (GetParam().text.has_value()) {
    EXPECT_EQ(text, *GetParam().text);
  }
}

INSTANTIATE_TEST_SUITE_P(
    Table, QuickTexts,
    testing::Values(TextCase{"empty", R"("")", ""}, TextCase{"plain", R"("text")", "text"},
                    TextCase{"escapedSlashes", R"("\/a\/b")", "/a/b"},
                    TextCase{"escapedQuote", R"("\"")", "\""},
                    TextCase{"escapedBackslash", R"("\\")", "\\"},
                    TextCase{"NUL", R"("a\u0000b")", "a\0b"s},
                    TextCase{"pairOfSurrogates", R"("\uD83D\uDE00")", "\U0001F600"},
                    TextCase{"nonASCII", "\"\u00e9\U0001F600\"", "\u00e9\U0001F600"},
                    TextCase{"DEL", "\"\x7F\"", "\x7F"},
                    TextCase{"looksLikeTokens", R"("},{\"a\":[1],null")", "},{\"a\":[1],null"},
                    TextCase{"long", '"' + std::string(100'000, 'x') + '"',
                             std::string(100'000, 'x')},
                    TextCase{"longWithEscapes", '"' + std::string(50'000, 'x') + "\\t\"",
                             std::string(50'000, 'x') + '\t'},
                    TextCase{"halfOfAPair", R"("\uD83D")", std::nullopt},
                    TextCase{"unknownEscape", R"("\x")", std::nullopt},
                    TextCase{"cutEscape", R"("\u12")", std::nullopt},
                    TextCase{"escapedBlank", R"("\ ")", std::nullopt},
                    TextCase{"number", "1", std::nullopt}, TextCase{"null", "null", std::nullopt},
                    TextCase{"backslashBefore", R"(\"a")"s + " \"", std::nullopt},
                    TextCase{"letter", "a", std::nullopt}),
    RowName());

struct LiteralCase {
  const char* name;
  std::string text;
  std::optional<bool> boolean;
  bool isNull = false;
};

class QuickLiterals : public testing::TestWithParam<LiteralCase> {};

TEST_P(QuickLiterals, areTakenWholeOnly) {
  EXPECT_EQ(taken<bool>(GetParam().text), GetParam().boolean);
  EXPECT_EQ(taken<bool>(" " + GetParam().text + "\t"), GetParam().boolean);
  TokenizedText document(GetParam().text);
  EXPECT_EQ(document.tokens().takeNull(), GetParam().isNull);
}

INSTANTIATE_TEST_SUITE_P(Table, QuickLiterals,
                         testing::Values(LiteralCase{"true", "true", true},
                                         LiteralCase{"false", "false", false},
                                         LiteralCase{"null", "null", std::nullopt, true},
                                         LiteralCase{"upperCase", "True", std::nullopt},
                                         LiteralCase{"cutTrue", "tru", std::nullopt},
                                         LiteralCase{"cutFalse", "fals", std::nullopt},
                                         LiteralCase{"cutNull", "nul", std::nullopt},
                                         LiteralCase{"lettersBehindTrue", "truex", std::nullopt},
                                         LiteralCase{"lettersBehindNull", "nullx", std::nullopt},
                                         LiteralCase{"NULBehind", "true\0"s, std::nullopt},
                                         LiteralCase{"blankInside", "tr ue", std::nullopt},
                                         LiteralCase{"string", "\"true\"", std::nullopt},
                                         LiteralCase{"number", "1", std::nullopt}),
                         RowName());

TEST(QuickTokensTest, takesWhatIsNextOnly) {
  TokenizedText document(R"( { "a" : [ 1 , null ] } )");
  QuickTokens& tokens = document.tokens();
  EXPECT_FALSE(tokens.take('}'));
  EXPECT_TRUE(tokens.isNext('{'));
  EXPECT_TRUE(tokens.take('{'));
  Text key;
  EXPECT_TRUE(tokens.take(key));
  EXPECT_EQ(key, "a");
  EXPECT_FALSE(tokens.take(','));
  EXPECT_TRUE(tokens.take(':'));
  EXPECT_EQ(tokens.remaining(), std::string_view("[ 1 , null ] } ").size());
  EXPECT_EQ(std::string_view(tokens.position(), tokens.remaining()), "[ 1 , null ] } ");
  EXPECT_TRUE(tokens.take('['));
  int number = 0;
  EXPECT_TRUE(tokens.take(number));
  EXPECT_TRUE(tokens.take(','));
  EXPECT_TRUE(tokens.isNext('n'));
  EXPECT_TRUE(tokens.takeNull());
  EXPECT_FALSE(tokens.atEnd());
  EXPECT_TRUE(tokens.take(']'));
  EXPECT_TRUE(tokens.take('}'));
  EXPECT_TRUE(tokens.atEnd());
  EXPECT_EQ(tokens.remaining(), 0);
}

TEST(QuickTokensTest, hasNothingToTakeAtTheEnd) {
  TokenizedText document("1");
  QuickTokens& tokens = document.tokens();
  int number = 0;
  ASSERT_TRUE(tokens.take(number));
  EXPECT_TRUE(tokens.atEnd());
  for (const char byte : {'{', '}', '"', '1', ' '}) {
    EXPECT_FALSE(tokens.isNext(byte));
  }
  std::string_view text;
  TextView view;
  Text owned("before");
  bool boolean = false;
  EXPECT_FALSE(tokens.take('}'));
  EXPECT_FALSE(tokens.take(number));
  EXPECT_FALSE(tokens.take(text));
  EXPECT_FALSE(tokens.take(view));
  EXPECT_FALSE(tokens.take(owned));
  EXPECT_FALSE(tokens.take(boolean));
  EXPECT_FALSE(tokens.takeNull());
  EXPECT_FALSE(tokens.take(MemberStart()));
  EXPECT_FALSE(tokens.take(MemberStart(",\"a\":")));
  EXPECT_TRUE(tokens.atEnd());
}

TEST(QuickTokensTest, takesAMemberStartByItsBytes) {
  const MemberStart start(",\"a\" : ");
  const std::string rest = "1,\"b\":\"" + std::string(MemberStart::glance, 'x') + "\"}";
  TokenizedText same(",\"a\" : " + rest);
  EXPECT_TRUE(same.tokens().take(start));
  int number = 0;
  EXPECT_TRUE(same.tokens().take(number));
  for (const std::string& text : {",\"a\" :  "s, ",\"a\": "s, ", \"a\": "s, ",\"b\" : "s,
                                  "{\"a\" : "s, ",\"a\"  :"s, ",\"a\" , "s}) {
    TokenizedText other(text + rest);
    EXPECT_FALSE(other.tokens().take(start)) << text;
    EXPECT_EQ(other.tokens().remaining(), text.size() + rest.size());
  }
}

TEST(QuickTokensTest, resolvesBehindAKeyWithAnEscapeThatWasPassedAtAGlance) {
  const std::string key = R"(,"\u0061":)";
  TokenizedText document(key + R"("a\/b",)" + '"' + std::string(MemberStart::glance, 'x') + '"');
  std::string_view text;
  EXPECT_TRUE(document.tokens().take(MemberStart(key)));
  EXPECT_TRUE(document.tokens().take(text));
  EXPECT_EQ(text, "a/b");
}

}  // namespace
}  // namespace velmora

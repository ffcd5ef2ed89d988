#include "json/TokenFinder.h"
#include "tests/support/RowName.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace velmora {
namespace {

using std::string_literals::operator""s;
using Places = std::vector<std::uint32_t>;

Places placesOf(const FoundTokens& tokens) { return {tokens.first, tokens.first + tokens.count}; }

struct FoundCase {
  const char* name;
  std::string text;
  Places places;
};

class FoundTokensTest : public testing::TestWithParam<FoundCase> {};

TEST_P(FoundTokensTest, beginWhereTheyBegin) {
  TokenFinder finder;
  const FoundTokens tokens = finder.find(GetParam().text);
  EXPECT_EQ(tokens.fault, TokenFault::none);
  EXPECT_EQ(placesOf(tokens), GetParam().places);
}

TEST_P(FoundTokensTest, areFollowedByTheLength) {
  TokenFinder finder;
  const FoundTokens tokens = finder.find(GetParam().text);
  for (std::size_t place = 0; place < tokenLookAhead; ++place) {
    EXPECT_EQ(tokens.first[tokens.count + place], GetParam().text.size()) << place;
  }
}

INSTANTIATE_TEST_SUITE_P(
    Table, FoundTokensTest,
    testing::Values(FoundCase{"number", "7", {0}}, FoundCase{"blanksAround", " \t\r\n7 \n", {4}},
                    FoundCase{"object", R"({"a":1,"b":[]})", {0, 1, 4, 5, 6, 7, 10, 11, 12, 13}},
                    FoundCase{"emptyString", R"("")", {0}},
                    FoundCase{"punctuationInString", R"("{}[]:, 1")", {0}},
                    FoundCase{"escapedQuote", R"("a\"b" 1)", {0, 7}},
                    FoundCase{"escapedBackslash", R"("a\\" 1)", {0, 6}},
                    FoundCase{"literals", "true false null", {0, 5, 11}},
                    FoundCase{"lettersBehindAString", R"("a"b)", {0, 3}},
                    FoundCase{"stringsInARow", R"("a""b")", {0, 3}},
                    FoundCase{"backslashOutside", R"(\"a 1)", {0, 4}},
                    FoundCase{"NULOutside", "\0 1"s, {0, 2}},
                    FoundCase{"NULInTheMiddleOfANumber", "1\0002"s, {0}},
                    FoundCase{"DELInString", "\"\x7F\"", {0}},
                    FoundCase{"nonASCII", "\"\u00e9\U0001F600\",1", {0, 8, 9}}),
    RowName());

struct FaultCase {
  const char* name;
  std::string text;
  TokenFault fault;
};

class FaultyTexts : public testing::TestWithParam<FaultCase> {};

TEST_P(FaultyTexts, haveNoTokens) {
  TokenFinder finder;
  const FoundTokens tokens = finder.find(GetParam().text);
  EXPECT_EQ(tokens.fault, GetParam().fault);
  EXPECT_EQ(tokens.first, nullptr);
}

/// Where the fault stands must make no difference: the search goes by blocks.
TEST_P(FaultyTexts, haveNoTokensWhereverTheFaultIs) {
  if (GetParam().fault == TokenFault::empty) {
    return;
  }
  TokenFinder finder;
  for (std::size_t before = 0; before <= 130; ++before) {
    EXPECT_EQ(finder.find(std::string(before, ' ') + GetParam().text).fault, GetParam().fault)
        << before;
  }
}

INSTANTIATE_TEST_SUITE_P(
    Table, FaultyTexts,
    testing::Values(FaultCase{"empty", "", TokenFault::empty},
                    FaultCase{"space", " ", TokenFault::empty},
                    FaultCase{"blanks", " \t\r\n" + std::string(200, ' '), TokenFault::empty},
                    FaultCase{"strayContinuation", "\"\x80\"", TokenFault::notUTF8},
                    FaultCase{"outsideOfStrings", "1 \xFF", TokenFault::notUTF8},
                    FaultCase{"cutCodePoint", "\"\" \xC3", TokenFault::notUTF8},
                    FaultCase{"overlong", "\"\xC0\x80\"", TokenFault::notUTF8},
                    FaultCase{"surrogate", "\"\xED\xA0\x80\"", TokenFault::notUTF8},
                    FaultCase{"beyondUnicode", "\"\xF4\x90\x80\x80\"", TokenFault::notUTF8},
                    FaultCase{"noEnd", "\"a", TokenFault::brokenString},
                    FaultCase{"escapedEnd", R"("a\")", TokenFault::brokenString},
                    FaultCase{"lineBreakInString", "\"\n\"", TokenFault::brokenString},
                    FaultCase{"escapedLineBreakInString", "\"\\\n\"", TokenFault::brokenString},
                    FaultCase{"NULInString", "\"\0\""s, TokenFault::brokenString}),
    RowName());

TEST(TokenFinderTest, findsInOneTextAfterTheOther) {
  TokenFinder finder;
  for (const std::size_t count : {1U, 5000U, 3U, 100000U, 0U, 40U}) {
    std::string text;
    Places places;
    for (std::size_t number = 0; number < count; ++number) {
      places.push_back(static_cast<std::uint32_t>(text.size()));
      text += "12 ";
    }
    const FoundTokens tokens = finder.find(text);
    EXPECT_EQ(tokens.fault, count == 0 ? TokenFault::empty : TokenFault::none);
    EXPECT_EQ(placesOf(tokens), places);
    EXPECT_EQ(finder.find("\"").fault, TokenFault::brokenString);
  }
}

TEST(TokenFinderTest, findsAsManyTokensAsBytes) {
  TokenFinder finder;
  // As long as the memory for them is, and around.
  for (const std::size_t length : {63U, 64U, 65U, 1023U, 1024U, 1025U, 4096U}) {
    const FoundTokens tokens = finder.find(std::string(length, '['));
    ASSERT_EQ(tokens.count, length);
    for (std::size_t place = 0; place < length + tokenLookAhead; ++place) {
      EXPECT_EQ(tokens.first[place], std::min(place, length));
    }
  }
}

TEST(TokenFinderTest, canBeMoved) {
  TokenFinder finder;
  EXPECT_EQ(finder.find("[1]").count, 3);
  TokenFinder other = std::move(finder);
  EXPECT_EQ(other.find("[]").count, 2);
  finder = std::move(other);
  EXPECT_EQ(finder.find("1").count, 1);
}

}  // namespace
}  // namespace velmora

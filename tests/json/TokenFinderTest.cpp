#include "json/TokenFinder.h"
#include "tests/json/JSONCases.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace velmora::internal {
namespace {

using Places = std::vector<std::uint32_t>;

Places placesOf(const FoundTokens& tokens) { return {tokens.first, tokens.first + tokens.count}; }

struct FoundCase {
  const char* name;
  std::string text;
  Places places;
};

const FoundCase foundCases[] = {
    {"number", "7", {0}},
    {"blanksAround", " \t\r\n7 \n", {4}},
    {"object", R"({"a":1,"b":[]})", {0, 1, 4, 5, 6, 7, 10, 11, 12, 13}},
    {"emptyString", R"("")", {0}},
    {"punctuationInString", R"("{}[]:, 1")", {0}},
    {"escapedQuote", R"("a\"b" 1)", {0, 7}},
    {"escapedBackslash", R"("a\\" 1)", {0, 6}},
    {"literals", "true false null", {0, 5, 11}},
    {"lettersAfterAString", R"("a"b)", {0, 3}},
    {"stringsInARow", R"("a""b")", {0, 3}},
    {"backslashOutside", R"(\"a 1)", {0, 4}},
    {"NULOutside", "\0 1"s, {0, 2}},
    {"NULInTheMiddleOfANumber", "1\0002"s, {0}},
    {"DELInString", "\"\x7F\"", {0}},
    {"nonASCII", "\"\u00e9\U0001F600\",1", {0, 8, 9}},
};

TEST(TokenFinderTest, findsTheStartsOfTokensAndThenTheLength) {
  TokenFinder finder;
  for (const FoundCase& row : foundCases) {
    SCOPED_TRACE(row.name);
    const FoundTokens tokens = finder.find(row.text);
    EXPECT_EQ(tokens.fault, TokenFault::none);
    EXPECT_EQ(placesOf(tokens), row.places);
    for (std::size_t place = 0; place < tokenLookAhead; ++place) {
      EXPECT_EQ(tokens.first[tokens.count + place], row.text.size()) << place;
    }
  }
}

/// The position of the fault must make no difference, because the search goes by blocks.
TEST(TokenFinderTest, findsNoneInAFaultyTextWithTheFaultAnywhere) {
  TokenFinder finder;
  for (const RefusedCase& row : refusedCases) {
    SCOPED_TRACE(row.name);
    for (std::size_t before = 0; before <= 130; ++before) {
      const FoundTokens tokens = finder.find(std::string(before, ' ') + row.document);
      EXPECT_EQ(tokens.fault, row.tokens) << before;
      EXPECT_EQ(tokens.first == nullptr, row.tokens != TokenFault::none) << before;
    }
  }
}

TEST(TokenFinderTest, findsTokensOfSeveralTextsInTurn) {
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
    EXPECT_EQ(finder.find("\"").fault, TokenFault::unclosedString);
  }
}

TEST(TokenFinderTest, findsAsManyTokensAsBytes) {
  TokenFinder finder;
  // Lengths around the capacity of the finder's memory.
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
}  // namespace velmora::internal

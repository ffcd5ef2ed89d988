#include "json/streaming/ChunkEnd.h"
#include "tests/support/Repeated.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>

namespace velmora::internal {
namespace {

struct PlaceCase {
  const char* name;
  std::string text;
  std::size_t place;
};

TEST(ChunkEndTest, endsBetweenTwoTokensOrInAString) {
  const std::string manyLetters(5000, 'x');
  const PlaceCase rows[] = {
      {"nothing", "", 0},
      {"oneToken", "123", 0},
      {"lineBreak", "[1,\n2", 4},
      {"lineBreakAtTheEnd", "[1,\n", 4},
      {"nextObject", R"([{"a":1},{"b":2)", 9},
      {"nextObjectAfterBlanks", R"([{"a":1},  {"b":2)", 11},
      {"nextObjectWithoutALetter", R"([{"1":1},{"2":2)", 14},
      {"firstObject", R"([{"a":"b)", 6},
      {"punctuation", "[1,[2],34", 7},
      {"farLineBreak", "\n[\"" + manyLetters, 2},
      {"punctuationInAString", R"(["a,b)", 4},
  };
  for (const PlaceCase& row : rows) {
    EXPECT_EQ(lastChunkEnd(row.text), row.place) << row.name;
  }
}

TEST(ChunkEndTest, findsTheStringWithoutAnEnd) {
  const PlaceCase rows[] = {
      {"first", R"("abc)", 0},
      {"afterOthers", R"(["a","b)", 5},
      {"afterAnEscapedQuote", R"(["a","b\"c\"d)", 5},
      {"afterBackslashes", R"(["a\\","b\\\"c)", 7},
      {"emptyYet", R"(["a",")", 5},
  };
  for (const PlaceCase& row : rows) {
    EXPECT_EQ(unclosedStringOffset(row.text), row.place) << row.name;
  }
}

TEST(ChunkEndTest, cutsNoEscape) {
  const PlaceCase rows[] = {
      {"none", "abc", 3},
      {"whole", R"(ab\n)", 4},
      {"half", R"(ab\)", 2},
      {"wholeUnit", R"(\u00e9)", 6},
      {"halfUnit", R"(a\u00e)", 1},
      {"pair", R"(\ud83d\ude00)", 12},
      {"halfPair", R"(a\uD83D)", 1},
      {"cutPair", R"(a\uD83D\ude0)", 1},
      {"otherUnitOfD", R"(\ud000)", 6},
      {"escapedBackslash", R"(\\u00)", 5},
  };
  for (const PlaceCase& row : rows) {
    EXPECT_EQ(lastOffsetOutsideOfEscapes(row.text), row.place) << row.name;
  }
}

TEST(ChunkEndTest, onlyStringsAndNumbersAreLong) {
  EXPECT_TRUE(mayBeginToken(""));
  for (const std::string beginning : {"x", "tru", "\\"}) {
    EXPECT_TRUE(mayBeginToken(beginning + std::string(4000, '1'))) << beginning;
    EXPECT_FALSE(mayBeginToken(beginning + std::string(4096, '1'))) << beginning;
  }
  EXPECT_TRUE(mayBeginToken('"' + std::string(5000, '\0')));
  EXPECT_TRUE(mayBeginToken(repeated("-1.5e+9E", 1000)));
  EXPECT_FALSE(mayBeginToken(repeated("1", 5000) + "x"));
}

}  // namespace
}  // namespace velmora::internal

#include "tests/support/AnsweredCases.h"
#include "text/Characters.h"
#include "text/Text.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace velmora {
namespace {

struct CountCase {
  std::string_view name;
  std::string_view text;
  std::size_t count;
};

constexpr CountCase countCases[] = {
    {.name = "empty", .text = "", .count = 0},
    {.name = "ascii", .text = "/Users/a", .count = 8},
    {.name = "nul", .text = {"a\0b", 3}, .count = 3},
    {.name = "precomposed", .text = "\u00e9", .count = 1},
    {.name = "decomposed", .text = "e\u0301", .count = 1},
    {.name = "markOnLastOfASCIIRun", .text = "abc\u0301d", .count = 4},
    {.name = "markAlone", .text = "\u0301", .count = 1},
    {.name = "slashWithMark", .text = "a/\u0301b", .count = 3},
    {.name = "crlf", .text = "\r\n", .count = 1},
    {.name = "crlfTwice", .text = "a\r\n\r\nb", .count = 4},
    {.name = "lfcr", .text = "\n\r", .count = 2},
    {.name = "crcrlf", .text = "\r\r\n", .count = 2},
    {.name = "markAfterCRLF", .text = "\r\n\u0301", .count = 2},
    {.name = "markAfterControl", .text = "\t\u0301", .count = 2},
    {.name = "crlfAfterOther", .text = "\u00e9\r\n", .count = 2},
    {.name = "crlfAfterPrepended", .text = "\u0600\r\n", .count = 2},
    {.name = "syllable", .text = "\ud55c", .count = 1},
    {.name = "jamo", .text = "\u1112\u1161\u11ab", .count = 1},
    {.name = "twoSyllablesOfJamo", .text = "\u1112\u1161\u11ab\u1100\u1173\u11af", .count = 2},
    {.name = "oneRegionalIndicator", .text = "\U0001F1E6", .count = 1},
    {.name = "flag", .text = "\U0001F1E6\U0001F1E7", .count = 1},
    {.name = "flagAndHalf", .text = "\U0001F1E6\U0001F1E7\U0001F1E8", .count = 2},
    {.name = "flagAfterASCII", .text = "a\U0001F1E6\U0001F1E7\U0001F1E8\U0001F1E9", .count = 3},
    {.name = "family", .text = "\U0001F468\u200d\U0001F469\u200d\U0001F467", .count = 1},
    {.name = "emojiWithSkinTone", .text = "\U0001F44D\U0001F3FD", .count = 1},
    {.name = "emojiWithSelector", .text = "\u2764\ufe0f", .count = 1},
    {.name = "heartOnFire", .text = "\u2764\ufe0f\u200d\U0001F525", .count = 1},
    {.name = "joinerBetweenLetters", .text = "a\u200db", .count = 2},
    {.name = "keycap", .text = "1\ufe0f\u20e3", .count = 1},
    {.name = "prepended", .text = "\u0600/", .count = 1},
    {.name = "prependedAfterASCII", .text = "a\u0600/b", .count = 3},
    {.name = "spacingMark", .text = "\u0915\u093e", .count = 1},
    {.name = "byteNotUTF8", .text = "a\xFF\xFE", .count = 3},
    {.name = "truncated", .text = "\xE2\x82", .count = 2},
    {.name = "markAfterByteNotUTF8", .text = "\xFF\u0301", .count = 2},
    {.name = "byteNotUTF8AfterPrepended", .text = "\u0600\xFF", .count = 2},
};

TEST(CharactersTest, countsWholeCharacters) {
  for (const CountCase& row : countCases) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(characterCount(row.text), row.count);
  }
}

TEST(CharactersTest, answersTheCountCases) {
  const std::vector<AnsweredCase> cases = readAnsweredCases("text/count.jsonl");
  EXPECT_EQ(cases.size(), 5U);
  for (const AnsweredCase& row : cases) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(characterCount(row.input), static_cast<std::size_t>(row.expect<std::int64_t>()));
  }
}

struct PrefixCase {
  std::string_view name;
  std::string_view text;
  std::string_view prefix;
  bool isPrefix;
};

constexpr PrefixCase prefixCases[] = {
    {.name = "emptyOfEmpty", .text = "", .prefix = "", .isPrefix = true},
    {.name = "empty", .text = "\u0301", .prefix = "", .isPrefix = true},
    {.name = "itself", .text = "/a/", .prefix = "/a/", .isPrefix = true},
    {.name = "folder", .text = "/a/b", .prefix = "/a/", .isPrefix = true},
    {.name = "sibling", .text = "/ab", .prefix = "/a/", .isPrefix = false},
    {.name = "longer", .text = "/a", .prefix = "/a/", .isPrefix = false},
    {.name = "ofEmpty", .text = "", .prefix = "/", .isPrefix = false},
    {.name = "differentASCII", .text = "/b/c", .prefix = "/a/", .isPrefix = false},
    {.name = "case", .text = "/A/b", .prefix = "/a/", .isPrefix = false},
    {.name = "itselfEndingInOther", .text = "/\u00e9", .prefix = "/\u00e9", .isPrefix = true},
    {.name = "decomposedText", .text = "/e\u0301/x", .prefix = "/\u00e9/", .isPrefix = true},
    {.name = "decomposedPrefix", .text = "/\u00e9/x", .prefix = "/e\u0301/", .isPrefix = true},
    {.name = "longerThanEquivalentText", .text = "\u00e9", .prefix = "e\u0301/", .isPrefix = false},
    {.name = "sameBytesThenOther", .text = "/\u00e9\u00e8", .prefix = "/\u00e9", .isPrefix = true},
    {.name = "sameBytesThenMark", .text = "/\u00e9\u0323", .prefix = "/\u00e9", .isPrefix = false},
    {.name = "letterOfDecomposed", .text = "e\u0301", .prefix = "e", .isPrefix = false},
    {.name = "letterOfPrecomposed", .text = "\u00e9", .prefix = "e", .isPrefix = false},
    {.name = "halfOfTwoMarks", .text = "\u1e69", .prefix = "s\u0323", .isPrefix = false},
    {.name = "marksInEitherOrder",
     .text = "q\u0307\u0323/",
     .prefix = "q\u0323\u0307",
     .isPrefix = true},
    {.name = "kelvinSign", .text = "\u212a/x", .prefix = "K/", .isPrefix = true},
    {.name = "slashWithMark", .text = "/a/\u0301b", .prefix = "/a/", .isPrefix = false},
    {.name = "slashWithMarkAtEnd", .text = "/a/\u0301", .prefix = "/a/", .isPrefix = false},
    {.name = "slashWithJoiner", .text = "/a/\u200dx", .prefix = "/a/", .isPrefix = false},
    {.name = "slashWithSelector", .text = "/a/\ufe0fx", .prefix = "/a/", .isPrefix = false},
    {.name = "slashWithSpacingMark", .text = "/a/\u0903", .prefix = "/a/", .isPrefix = false},
    {.name = "slashBeforeLetter", .text = "/a/\u00e9", .prefix = "/a/", .isPrefix = true},
    {.name = "slashBeforePrepended", .text = "/a/\u0600b", .prefix = "/a/", .isPrefix = true},
    {.name = "prependedSlash", .text = "/a\u0600/b", .prefix = "/a\u0600/", .isPrefix = true},
    {.name = "prependedOfPrependedSlash", .text = "\u0600/", .prefix = "\u0600", .isPrefix = false},
    {.name = "crOfCRLF", .text = "/a\r\n", .prefix = "/a\r", .isPrefix = false},
    {.name = "crBeforeOther", .text = "/a\rb", .prefix = "/a\r", .isPrefix = true},
    {.name = "crBeforeMark", .text = "/a\r\u0301", .prefix = "/a\r", .isPrefix = true},
    {.name = "crlf", .text = "/a\r\n/", .prefix = "/a\r\n", .isPrefix = true},
    {.name = "lfBeforeLF", .text = "\n\n", .prefix = "\n", .isPrefix = true},
    {.name = "syllableOfSyllableWithFinal",
     .text = "\ud55c",
     .prefix = "\ud558",
     .isPrefix = false},
    {.name = "syllableBeforeFinal", .text = "\ud558\u11ab", .prefix = "\ud558", .isPrefix = false},
    {.name = "jamoOfSyllable",
     .text = "\ud55c\uae00",
     .prefix = "\u1112\u1161\u11ab",
     .isPrefix = true},
    {.name = "halfFlag", .text = "\U0001F1E6\U0001F1E7", .prefix = "\U0001F1E6", .isPrefix = false},
    {.name = "flag",
     .text = "\U0001F1E6\U0001F1E7\U0001F1E8",
     .prefix = "\U0001F1E6\U0001F1E7",
     .isPrefix = true},
    {.name = "oneOfFamily",
     .text = "\U0001F468\u200d\U0001F469",
     .prefix = "\U0001F468",
     .isPrefix = false},
    {.name = "bytesNotUTF8", .text = "/\xFF/a", .prefix = "/\xFF/", .isPrefix = true},
    {.name = "otherBytesNotUTF8", .text = "/\xFF/a", .prefix = "/\xFE/", .isPrefix = false},
    {.name = "halfCodePoint", .text = "/\u65e5", .prefix = "/\xE6\x97", .isPrefix = false},
    {.name = "wholeCodePointOfHalf", .text = "/\xE6\x97", .prefix = "/\u65e5", .isPrefix = false},
    {.name = "slashBeforeByteNotUTF8", .text = "/a/\x80", .prefix = "/a/", .isPrefix = true},
};

TEST(CharactersTest, prefixIsOfWholeCharacters) {
  for (const PrefixCase& row : prefixCases) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(hasCharacterPrefix(row.text, row.prefix), row.isPrefix);
  }
}

TEST(CharactersTest, answersThePrefixCases) {
  const std::vector<AnsweredCase> cases = readAnsweredCases("text/hasPrefix.jsonl");
  EXPECT_EQ(cases.size(), 7U);
  for (const AnsweredCase& row : cases) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(hasCharacterPrefix(row.input, row.other), row.expect<bool>());
  }
}

using Parts = std::vector<std::string_view>;

struct SplitCase {
  std::string_view name;
  std::string_view text;
  Parts parts;
};

TEST(CharactersTest, splitsAtWholeCharactersOnly) {
  const SplitCase cases[] = {
      {.name = "empty", .text = "", .parts = {""}},
      {.name = "none", .text = "a", .parts = {"a"}},
      {.name = "separatorOnly", .text = "/", .parts = {"", ""}},
      {.name = "path", .text = "a/bc/d", .parts = {"a", "bc", "d"}},
      {.name = "atBothEnds", .text = "/a/", .parts = {"", "a", ""}},
      {.name = "doubled", .text = "a//b", .parts = {"a", "", "b"}},
      {.name = "withMark", .text = "a/\u0301b/c", .parts = {"a/\u0301b", "c"}},
      {.name = "withMarkAtEnd", .text = "a/\u0301", .parts = {"a/\u0301"}},
      {.name = "secondWithMark", .text = "a//\u0301b", .parts = {"a", "/\u0301b"}},
      {.name = "withJoiner", .text = "a/\u200db", .parts = {"a/\u200db"}},
      {.name = "withSelector", .text = "a/\ufe0fb", .parts = {"a/\ufe0fb"}},
      {.name = "prepended", .text = "a\u0600/b/c", .parts = {"a\u0600/b", "c"}},
      {.name = "prependedFirst", .text = "\u0600/", .parts = {"\u0600/"}},
      {.name = "markOnPrepended", .text = "\u0600\u0301/", .parts = {"\u0600\u0301", ""}},
      {.name = "afterMark", .text = "e\u0301/\u00e9", .parts = {"e\u0301", "\u00e9"}},
      {.name = "afterEmoji",
       .text = "\U0001F600/\U0001F600",
       .parts = {"\U0001F600", "\U0001F600"}},
      {.name = "afterCR", .text = "a\r/\nb", .parts = {"a\r", "\nb"}},
      {.name = "afterByteNotUTF8", .text = "\xFF/\xFE", .parts = {"\xFF", "\xFE"}},
      {.name = "afterHalfOfPrepended", .text = "\xD8/a", .parts = {"\xD8", "a"}},
      {.name = "likeASeparator", .text = "a\u2215b\uff0fc", .parts = {"a\u2215b\uff0fc"}},
  };
  for (const SplitCase& row : cases) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(splitAtCharacter(row.text, '/'), row.parts);
  }
}

TEST(CharactersTest, answersTheSplitCases) {
  const std::vector<AnsweredCase> cases = readAnsweredCases("text/split.jsonl");
  EXPECT_EQ(cases.size(), 4U);
  for (const AnsweredCase& row : cases) {
    SCOPED_TRACE(row.name);
    const Parts parts = splitAtCharacter(row.input, '/');
    const std::vector<std::string> owned(parts.begin(), parts.end());
    EXPECT_EQ(owned, row.expect<std::vector<std::string>>());
  }
}

TEST(CharactersTest, splitsAtAnyASCIICharacter) {
  EXPECT_EQ(splitAtCharacter("a.b.\u0301c", '.'), (Parts{"a", "b.\u0301c"}));
  EXPECT_EQ(splitAtCharacter({"a\0\u0301", 4}, '\0'), (Parts{"a", "\u0301"}));
  EXPECT_EQ(splitAtCharacter("\u0600\tb", '\t'), (Parts{"\u0600", "b"}));
}

struct BoundaryCase {
  std::string_view name;
  std::string_view text;
  bool isBoundary;
};

constexpr BoundaryCase boundaryCases[] = {
    {.name = "end", .text = "/", .isBoundary = true},
    {.name = "ascii", .text = "/a", .isBoundary = true},
    {.name = "letter", .text = "/\u00e9", .isBoundary = true},
    {.name = "mark", .text = "/\u0301", .isBoundary = false},
    {.name = "spacingMark", .text = "/\u0903", .isBoundary = false},
    {.name = "joiner", .text = "/\u200d", .isBoundary = false},
    {.name = "selector", .text = "/\ufe0f", .isBoundary = false},
    {.name = "prepended", .text = "/\u0600", .isBoundary = true},
    {.name = "regionalIndicator", .text = "/\U0001F1E6", .isBoundary = true},
    {.name = "finalJamo", .text = "/\u11ab", .isBoundary = true},
    {.name = "byteNotUTF8", .text = "/\xCC", .isBoundary = true},
    {.name = "markAfterControl", .text = "\n\u0301", .isBoundary = true},
    {.name = "markAfterCR", .text = "\r\u0301", .isBoundary = true},
    {.name = "crlf", .text = "\r\n", .isBoundary = false},
    {.name = "lflf", .text = "\n\n", .isBoundary = true},
    {.name = "crcr", .text = "\r\r", .isBoundary = true},
};

TEST(CharactersTest, knowsWhetherASCIIEndsItsCharacter) {
  for (const BoundaryCase& row : boundaryCases) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(isCharacterBoundaryAfterASCII(row.text, 1), row.isBoundary);
  }
}

class RandomTexts {
 public:
  std::string next() {
    static constexpr std::string_view pieces[] = {
        "a",      "/",      "\r",         "\n",     "\t",         "\u00e9",     "e\u0301",
        "\u0301", "\u0323", "\u200d",     "\ufe0f", "\u0600",     "\u1112",     "\u1161",
        "\u11ab", "\ud558", "\U0001F1E6", "\u2764", "\U0001F468", "\U0001F3FD", "\u0903",
        "\u65e5", "\u212a", "\xFF",       "\xE6",   "\x97",
    };
    std::string text;
    for (std::size_t length = upTo(9); length > 0; --length) {
      text += pieces[upTo(std::size(pieces) - 1)];
    }
    return text;
  }

 private:
  std::size_t upTo(std::size_t last) {
    return std::uniform_int_distribution<std::size_t>(0, last)(engine_);
  }

  std::mt19937_64 engine_{20231231};
};

std::string joined(const Parts& parts, char separator) {
  std::string text(parts.front());
  for (std::size_t index = 1; index < parts.size(); ++index) {
    text += separator;
    text += parts[index];
  }
  return text;
}

// The beginnings of a text that are its prefixes are those that end where a character ends.
TEST(CharactersTest, countAndPrefixAgreeOnTheBoundaries) {
  RandomTexts texts;
  for (int round = 0; round < 5'000; ++round) {
    const std::string text = texts.next();
    SCOPED_TRACE(text);
    std::size_t boundaries = 0;
    for (std::size_t length = 1; length <= text.size(); ++length) {
      boundaries += hasCharacterPrefix(text, text.substr(0, length)) ? 1U : 0U;
    }
    EXPECT_EQ(boundaries, characterCount(text));
  }
}

TEST(CharactersTest, countAndPrefixDoNotDependOnTheNormalForm) {
  RandomTexts texts;
  for (int round = 0; round < 5'000; ++round) {
    const std::string text = texts.next();
    const std::string normalized = normalizedNFC(text);
    SCOPED_TRACE(text);
    EXPECT_EQ(characterCount(text), characterCount(normalized));
    EXPECT_TRUE(hasCharacterPrefix(text, normalized));
    EXPECT_TRUE(hasCharacterPrefix(normalized, text));
    EXPECT_TRUE(hasCharacterPrefix(text + "\t" + texts.next(), normalized));
  }
}

TEST(CharactersTest, joiningThePartsGivesTheTextBack) {
  RandomTexts texts;
  for (int round = 0; round < 5'000; ++round) {
    const std::string text = texts.next();
    SCOPED_TRACE(text);
    const Parts parts = splitAtCharacter(text, '/');
    EXPECT_EQ(joined(parts, '/'), text);
    std::size_t characters = parts.size() - 1;
    for (const std::string_view part : parts) {
      characters += characterCount(part);
    }
    EXPECT_EQ(characters, characterCount(text));
  }
}

TEST(CharactersTest, longCharactersAreNotQuadratic) {
  std::string marks = "/a";
  std::string reversed = "/a";
  for (int count = 0; count < 100'000; ++count) {
    marks += "\u0301\u0323";
    reversed += "\u0323\u0301";
  }
  EXPECT_EQ(characterCount(marks), 2U);
  EXPECT_TRUE(hasCharacterPrefix(marks + "/b", reversed + "/"));
  EXPECT_FALSE(hasCharacterPrefix(marks, reversed + "\u0301"));
  EXPECT_EQ(splitAtCharacter(marks, '/').size(), 2U);
}

TEST(CharactersTest, longRowsOfFlagsAndSeparatorsAreNotQuadratic) {
  constexpr std::size_t count = 100'000;
  std::string flags;
  std::string slashes;
  for (std::size_t index = 0; index < count; ++index) {
    flags += "\U0001F1E6";
    slashes += "\u0600/";
  }
  EXPECT_EQ(characterCount(flags), count / 2);
  EXPECT_TRUE(hasCharacterPrefix(flags, flags));
  EXPECT_EQ(characterCount(slashes), count);
  EXPECT_EQ(splitAtCharacter(slashes, '/').size(), 1U);
}

}  // namespace
}  // namespace velmora

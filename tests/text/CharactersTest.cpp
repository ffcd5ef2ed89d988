#include "tests/support/AnsweredCases.h"
#include "tests/text/Answers.h"
#include "tests/text/RandomTexts.h"
#include "text/Characters.h"
#include "text/Text.h"
#include "text/UTF8.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace velmora::internal {
namespace {

struct CountCase {
  const char* name;
  std::size_t count;
  std::vector<std::string_view> texts;
};

const CountCase countCases[] = {
    {"nothing", 0, {""}},
    {"ascii", 8, {"/Users/a"}},
    {"NULAmongASCII", 3, {{"a\0b", 3}}},
    {"marks", 1, {"\u00e9", "e\u0301", "\u0301", "\u0915\u093e"}},
    {"markOnLastOfASCIIRun", 4, {"abc\u0301d"}},
    {"slashWithMark", 3, {"a/\u0301b"}},
    {"crlf", 1, {"\r\n"}},
    {"crlfTwice", 4, {"a\r\n\r\nb"}},
    {"otherLineEnds", 2, {"\n\r", "\r\r\n"}},
    {"markAfterControl", 2, {"\t\u0301", "\r\n\u0301"}},
    {"crlfAfterOther", 2, {"\u00e9\r\n", "\u0600\r\n"}},
    {"syllable", 1, {"\ud55c", "\u1112\u1161\u11ab"}},
    {"twoSyllablesOfJamo", 2, {"\u1112\u1161\u11ab\u1100\u1173\u11af"}},
    {"regionalIndicators", 1, {"\U0001F1E6", "\U0001F1E6\U0001F1E7"}},
    {"flagAndHalf", 2, {"\U0001F1E6\U0001F1E7\U0001F1E8"}},
    {"flagsAfterASCII", 3, {"a\U0001F1E6\U0001F1E7\U0001F1E8\U0001F1E9"}},
    {"family", 1, {"\U0001F468\u200d\U0001F469\u200d\U0001F467"}},
    {"emojiWithSkinToneOrSelector", 1, {"\U0001F44D\U0001F3FD", "\u2764\ufe0f"}},
    {"emojiJoinedWithSelector", 1, {"\u2764\ufe0f\u200d\U0001F525", "1\ufe0f\u20e3"}},
    {"joinerBetweenLetters", 2, {"a\u200db"}},
    {"prepended", 1, {"\u0600/"}},
    {"prependedAfterASCII", 3, {"a\u0600/b"}},
    {"notUTF8", 2, {"\xE2\x82", "\xFF\u0301", "\u0600\xFF"}},
    {"notUTF8AfterASCII", 3, {"a\xFF\xFE"}},
};

TEST(CharactersTest, countsWholeCharacters) {
  for (const CountCase& row : countCases) {
    SCOPED_TRACE(row.name);
    for (const std::string_view text : row.texts) {
      EXPECT_EQ(characterCount(text), row.count) << text;
    }
  }
  expectAnswers<std::int64_t>("text/count.jsonl", 5, [](const AnsweredCase& row) {
    return static_cast<std::int64_t>(characterCount(row.input));
  });
}

struct PrefixCase {
  std::string_view name;
  std::string_view text;
  std::string_view prefix;
  bool isPrefix;
};

constexpr PrefixCase prefixCases[] = {
    {"emptyOfEmpty", "", "", true},
    {"empty", "\u0301", "", true},
    {"itself", "/a/", "/a/", true},
    {"folder", "/a/b", "/a/", true},
    {"sibling", "/ab", "/a/", false},
    {"longer", "/a", "/a/", false},
    {"ofEmpty", "", "/", false},
    {"differentASCII", "/b/c", "/a/", false},
    {"case", "/A/b", "/a/", false},
    {"itselfEndingInOther", "/\u00e9", "/\u00e9", true},
    {"decomposedText", "/e\u0301/x", "/\u00e9/", true},
    {"decomposedPrefix", "/\u00e9/x", "/e\u0301/", true},
    {"longerThanEquivalentText", "\u00e9", "e\u0301/", false},
    {"sameBytesThenOther", "/\u00e9\u00e8", "/\u00e9", true},
    {"sameBytesThenMark", "/\u00e9\u0323", "/\u00e9", false},
    {"letterOfDecomposed", "e\u0301", "e", false},
    {"letterOfPrecomposed", "\u00e9", "e", false},
    {"halfOfTwoMarks", "\u1e69", "s\u0323", false},
    {"marksInEitherOrder", "q\u0307\u0323/", "q\u0323\u0307", true},
    {"kelvinSign", "\u212a/x", "K/", true},
    {"slashWithMark", "/a/\u0301b", "/a/", false},
    {"slashWithMarkAtEnd", "/a/\u0301", "/a/", false},
    {"slashWithJoiner", "/a/\u200dx", "/a/", false},
    {"slashWithSelector", "/a/\ufe0fx", "/a/", false},
    {"slashWithSpacingMark", "/a/\u0903", "/a/", false},
    {"slashBeforeLetter", "/a/\u00e9", "/a/", true},
    {"slashBeforePrepended", "/a/\u0600b", "/a/", true},
    {"prependedSlash", "/a\u0600/b", "/a\u0600/", true},
    {"prependedOfPrependedSlash", "\u0600/", "\u0600", false},
    {"crOfCRLF", "/a\r\n", "/a\r", false},
    {"crBeforeOther", "/a\rb", "/a\r", true},
    {"crBeforeMark", "/a\r\u0301", "/a\r", true},
    {"crlf", "/a\r\n/", "/a\r\n", true},
    {"lfBeforeLF", "\n\n", "\n", true},
    {"syllableOfSyllableWithFinal", "\ud55c", "\ud558", false},
    {"syllableBeforeFinal", "\ud558\u11ab", "\ud558", false},
    {"jamoOfSyllable", "\ud55c\uae00", "\u1112\u1161\u11ab", true},
    {"halfFlag", "\U0001F1E6\U0001F1E7", "\U0001F1E6", false},
    {"flag", "\U0001F1E6\U0001F1E7\U0001F1E8", "\U0001F1E6\U0001F1E7", true},
    {"oneOfFamily", "\U0001F468\u200d\U0001F469", "\U0001F468", false},
    {"bytesNotUTF8", "/\xFF/a", "/\xFF/", true},
    {"otherBytesNotUTF8", "/\xFF/a", "/\xFE/", false},
    {"halfCodePoint", "/\u65e5", "/\xE6\x97", false},
    {"wholeCodePointOfHalf", "/\xE6\x97", "/\u65e5", false},
    {"slashBeforeByteNotUTF8", "/a/\x80", "/a/", true},
    {"slashBeforeHalfOfAMark", "/\xCC", "/", true},
    {"slashBeforeRegionalIndicator", "/\U0001F1E6", "/", true},
    {"slashBeforeFinalJamo", "/\u11ab", "/", true},
    {"lfBeforeMark", "\n\u0301", "\n", true},
    {"crBeforeCR", "\r\r", "\r", true},
};

TEST(CharactersTest, prefixConsistsOfWholeCharacters) {
  for (const PrefixCase& row : prefixCases) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(hasCharacterPrefix(row.text, row.prefix), row.isPrefix);
    const bool endsInASCII = !row.prefix.empty() && isASCII(row.prefix.back());
    if (endsInASCII && row.text.starts_with(row.prefix)) {
      EXPECT_EQ(isCharacterBoundaryAfterASCII(row.text, row.prefix.size()), row.isPrefix);
    }
  }
  expectAnswers<bool>("text/hasPrefix.jsonl", 7, [](const AnsweredCase& row) {
    return hasCharacterPrefix(row.input, row.other);
  });
}

using Parts = std::vector<std::string_view>;

struct SplitCase {
  std::string_view name;
  std::string_view text;
  Parts parts;
};

TEST(CharactersTest, splitsAtWholeCharactersOnly) {
  const SplitCase cases[] = {
      {"empty", "", {""}},
      {"none", "a", {"a"}},
      {"separatorOnly", "/", {"", ""}},
      {"path", "a/bc/d", {"a", "bc", "d"}},
      {"atBothEnds", "/a/", {"", "a", ""}},
      {"doubled", "a//b", {"a", "", "b"}},
      {"withMark", "a/\u0301b/c", {"a/\u0301b", "c"}},
      {"withMarkAtEnd", "a/\u0301", {"a/\u0301"}},
      {"secondWithMark", "a//\u0301b", {"a", "/\u0301b"}},
      {"withJoiner", "a/\u200db", {"a/\u200db"}},
      {"withSelector", "a/\ufe0fb", {"a/\ufe0fb"}},
      {"prepended", "a\u0600/b/c", {"a\u0600/b", "c"}},
      {"prependedFirst", "\u0600/", {"\u0600/"}},
      {"markOnPrepended", "\u0600\u0301/", {"\u0600\u0301", ""}},
      {"afterMark", "e\u0301/\u00e9", {"e\u0301", "\u00e9"}},
      {"afterEmoji", "\U0001F600/\U0001F600", {"\U0001F600", "\U0001F600"}},
      {"afterCR", "a\r/\nb", {"a\r", "\nb"}},
      {"afterByteNotUTF8", "\xFF/\xFE", {"\xFF", "\xFE"}},
      {"afterHalfOfPrepended", "\xD8/a", {"\xD8", "a"}},
      {"likeASeparator", "a\u2215b\uff0fc", {"a\u2215b\uff0fc"}},
  };
  for (const SplitCase& row : cases) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(splitAtCharacter(row.text, '/'), row.parts);
  }
  expectAnswers<std::vector<std::string>>("text/split.jsonl", 4, [](const AnsweredCase& row) {
    const Parts parts = splitAtCharacter(row.input, '/');
    return std::vector<std::string>(parts.begin(), parts.end());
  });
}

TEST(CharactersTest, splitsAtAnyASCIICharacter) {
  EXPECT_EQ(splitAtCharacter("a.b.\u0301c", '.'), (Parts{"a", "b.\u0301c"}));
  EXPECT_EQ(splitAtCharacter({"a\0\u0301", 4}, '\0'), (Parts{"a", "\u0301"}));
  EXPECT_EQ(splitAtCharacter("\u0600\tb", '\t'), (Parts{"\u0600", "b"}));
}

const std::vector<std::string> pieces = {
    "a",      "/",      "\r",         "\n",     "\t",         "\u00e9",     "e\u0301",
    "\u0301", "\u0323", "\u200d",     "\ufe0f", "\u0600",     "\u1112",     "\u1161",
    "\u11ab", "\ud558", "\U0001F1E6", "\u2764", "\U0001F468", "\U0001F3FD", "\u0903",
    "\u65e5", "\u212a", "\xFF",       "\xE6",   "\x97",
};

std::string joined(const Parts& parts, char separator) {
  std::string text(parts.front());
  for (std::size_t index = 1; index < parts.size(); ++index) {
    text += separator;
    text += parts[index];
  }
  return text;
}

TEST(CharactersTest, countPrefixAndPartsAgreeOnRandomTextsAndTheirNormalForms) {
  RandomTexts texts(pieces, 20231231);
  for (int round = 0; round < 5'000; ++round) {
    const std::string text = texts.next(9);
    SCOPED_TRACE(text);
    const std::size_t count = characterCount(text);
    // A beginning of a text is a prefix exactly if a character ends at its end.
    std::size_t boundaries = 0;
    for (std::size_t length = 1; length <= text.size(); ++length) {
      boundaries += hasCharacterPrefix(text, text.substr(0, length)) ? 1U : 0U;
    }
    EXPECT_EQ(boundaries, count);

    const std::string normalized = normalizedNFC(text);
    EXPECT_EQ(characterCount(normalized), count);
    EXPECT_TRUE(hasCharacterPrefix(text, normalized));
    EXPECT_TRUE(hasCharacterPrefix(normalized, text));
    EXPECT_TRUE(hasCharacterPrefix(text + "\t" + texts.next(9), normalized));

    const Parts parts = splitAtCharacter(text, '/');
    EXPECT_EQ(joined(parts, '/'), text);
    std::size_t characters = parts.size() - 1;
    for (const std::string_view part : parts) {
      characters += characterCount(part);
    }
    EXPECT_EQ(characters, count);
  }
}

TEST(CharactersTest, longCharactersAndTextsAreNotQuadratic) {
  constexpr std::size_t count = 100'000;
  std::string marks = "/a";
  std::string reversed = "/a";
  std::string flags;
  std::string slashes;
  for (std::size_t index = 0; index < count; ++index) {
    marks += "\u0301\u0323";
    reversed += "\u0323\u0301";
    flags += "\U0001F1E6";
    slashes += "\u0600/";
  }
  EXPECT_EQ(characterCount(marks), 2U);
  EXPECT_TRUE(hasCharacterPrefix(marks + "/b", reversed + "/"));
  EXPECT_FALSE(hasCharacterPrefix(marks, reversed + "\u0301"));
  EXPECT_EQ(splitAtCharacter(marks, '/').size(), 2U);
  EXPECT_EQ(characterCount(flags), count / 2);
  EXPECT_TRUE(hasCharacterPrefix(flags, flags));
  EXPECT_EQ(characterCount(slashes), count);
  EXPECT_EQ(splitAtCharacter(slashes, '/').size(), 1U);
}

}  // namespace
}  // namespace velmora::internal

#include "tests/support/AnsweredCases.h"
#include "text/Text.h"

#include <gtest/gtest.h>
#include <utf8proc.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <random>
#include <unordered_set>
#include <vector>

namespace velmora {
namespace {

constexpr std::int32_t codePointLimit = 0x110000;

bool isSurrogate(std::int32_t codePoint) { return codePoint >= 0xD800 && codePoint <= 0xDFFF; }

std::string encoded(std::int32_t codePoint) {
  std::array<utf8proc_uint8_t, 4> bytes{};
  const utf8proc_ssize_t length = utf8proc_encode_char(codePoint, bytes.data());
  return {bytes.begin(), bytes.begin() + length};
}

// utf8proc's own mapping, right (but slow) for everything here that holds no U+11A7.
std::string mapped(std::string_view text, int options) {
  utf8proc_uint8_t* bytes = nullptr;
  const utf8proc_ssize_t length =
      utf8proc_map(reinterpret_cast<const utf8proc_uint8_t*>(text.data()),
                   static_cast<utf8proc_ssize_t>(text.size()), &bytes,
                   static_cast<utf8proc_option_t>(options | UTF8PROC_STABLE));
  const std::unique_ptr<utf8proc_uint8_t, decltype(&std::free)> owner(bytes, &std::free);
  return {bytes, bytes + length};
}

std::string nfd(std::string_view text) { return mapped(text, UTF8PROC_DECOMPOSE); }
std::string nfc(std::string_view text) { return mapped(text, UTF8PROC_COMPOSE); }

// Few enough that random texts are often equivalent, and chosen so that each rule of normalization
// takes part: marks of equal and of different classes, syllables, singletons, exclusions, starters
// that compose with the starter before them, and what is inert.
constexpr std::array<std::int32_t, 30> lively = {
    'a',    'e',    'K',    ';',    '/',    '\n',  0xE9,  0x301,  0x300,   0x323,
    0x327,  0x345,  0x344,  0x1E69, 0x212A, 0x37E, 0x958, 0x93C,  0x915,   0x1112,
    0x1161, 0x11AB, 0xD558, 0xD55C, 0x9C7,  0x9BE, 0x9CB, 0x65E5, 0x1F600, 0x1D15E,
};

class RandomTexts {
 public:
  std::string next(std::size_t longest) {
    std::string text;
    for (std::size_t length = upTo(longest); length > 0; --length) {
      text += encoded(lively[upTo(lively.size() - 1)]);
    }
    return text;
  }

 private:
  std::size_t upTo(std::size_t last) {
    return std::uniform_int_distribution<std::size_t>(0, last)(engine_);
  }

  std::mt19937_64 engine_{20240229};
};

void expectOneTextInTwoForms(std::string_view a, std::string_view b) {
  EXPECT_TRUE(canonicallyEqual(a, b));
  EXPECT_TRUE(canonicallyEqual(b, a));
  EXPECT_TRUE(std::is_eq(canonicalOrder(a, b)));
  EXPECT_TRUE(std::is_eq(canonicalOrder(b, a)));
  EXPECT_EQ(canonicalHash(a), canonicalHash(b));
  EXPECT_EQ(normalizedNFC(a), normalizedNFC(b));
}

void expectTwoTexts(std::string_view a, std::string_view b) {
  EXPECT_FALSE(canonicallyEqual(a, b));
  EXPECT_FALSE(canonicallyEqual(b, a));
  EXPECT_FALSE(std::is_eq(canonicalOrder(a, b)));
  EXPECT_EQ(std::is_lt(canonicalOrder(a, b)), std::is_gt(canonicalOrder(b, a)));
  EXPECT_NE(canonicalHash(a), canonicalHash(b));
}

struct PairCase {
  std::string_view name;
  std::string_view a;
  std::string_view b;
};

constexpr PairCase equalCases[] = {
    {.name = "empty", .a = "", .b = ""},
    {.name = "ascii", .a = "/Users/a", .b = "/Users/a"},
    {.name = "nul", .a = {"a\0b", 3}, .b = {"a\0b", 3}},
    {.name = "accent", .a = "\u00e9", .b = "e\u0301"},
    {.name = "accentAtEnd", .a = "/caf\u00e9", .b = "/cafe\u0301"},
    {.name = "accentBeforeASCII", .a = "/\u00e9t\u00e9/x", .b = "/e\u0301te\u0301/x"},
    {.name = "twoAccentsInEitherOrder", .a = "q\u0307\u0323", .b = "q\u0323\u0307"},
    {.name = "twoAccentsHalfComposed", .a = "\u1e69", .b = "s\u0307\u0323"},
    {.name = "kelvinSign", .a = "\u212a", .b = "K"},
    {.name = "angstromSign", .a = "\u212b", .b = "A\u030a"},
    {.name = "greekQuestionMark", .a = "\u037e", .b = ";"},
    {.name = "enQuad", .a = "\u2000", .b = "\u2002"},
    {.name = "compatibilityIdeograph", .a = "\uf900", .b = "\u8c48"},
    {.name = "compositionExclusion", .a = "\u0958", .b = "\u0915\u093c"},
    {.name = "compositionExclusionBeyondBMP", .a = "\U0001D15E", .b = "\U0001D157\U0001D165"},
    {.name = "hangul", .a = "\ud55c", .b = "\u1112\u1161\u11ab"},
    {.name = "hangulHalfComposed", .a = "\ud55c", .b = "\ud558\u11ab"},
    {.name = "hangulWithoutFinal", .a = "\ud558", .b = "\u1112\u1161"},
    {.name = "kana", .a = "\u304c", .b = "\u304b\u3099"},
    {.name = "twoStartersCompose", .a = "\u09cb", .b = "\u09c7\u09be"},
    {.name = "fourCodePoints", .a = "\u1f82", .b = "\u03b1\u0313\u0300\u0345"},
    {.name = "beyondBMP", .a = "\U0001109A", .b = "\U00011099\U000110BA"},
};

constexpr PairCase differentCases[] = {
    {.name = "emptyAndNul", .a = "", .b = {"\0", 1}},
    {.name = "nulAtEnd", .a = "a", .b = {"a\0", 2}},
    {.name = "case", .a = "a", .b = "A"},
    {.name = "caseOfAccented", .a = "\u00e9", .b = "\u00c9"},
    {.name = "longer", .a = "/a", .b = "/a/"},
    {.name = "longerByAMark", .a = "e", .b = "e\u0301"},
    {.name = "longerByAMarkThatComposes", .a = "e", .b = "\u00e9"},
    {.name = "otherAccent", .a = "\u00e9", .b = "\u00e8"},
    {.name = "marksOfOneClassSwapped", .a = "a\u0300\u0301", .b = "a\u0301\u0300"},
    {.name = "markBeforeLetter", .a = "\u0301e", .b = "e\u0301"},
    {.name = "compatibilityOnly", .a = "\ufb01", .b = "fi"},
    {.name = "widthOnly", .a = "\uff21", .b = "A"},
    {.name = "sharpS", .a = "\u00df", .b = "ss"},
    {.name = "lineEnds", .a = "\r\n", .b = "\n"},
    {.name = "joinerOnly", .a = "a\u200d", .b = "a"},
    {.name = "starterBetweenSyllableParts", .a = "\uac00", .b = "\uac00\u11a7"},
    {.name = "vowelAfterJamo", .a = "\u1100\u1161", .b = "\u1100\u1161\u11a7"},
    {.name = "emoji", .a = "\U0001F600", .b = "\U0001F601"},
    {.name = "ideographs", .a = "\u65e5", .b = "\u6708"},
    {.name = "notUTF8AndReplacement", .a = "\xFF", .b = "\ufffd"},
};

TEST(TextTest, canonicallyEquivalentTextsAreEqual) {
  for (const PairCase& row : equalCases) {
    SCOPED_TRACE(row.name);
    expectOneTextInTwoForms(row.a, row.b);
  }
}

TEST(TextTest, otherTextsDiffer) {
  for (const PairCase& row : differentCases) {
    SCOPED_TRACE(row.name);
    expectTwoTexts(row.a, row.b);
  }
}

TEST(TextTest, answersTheEqualityCases) {
  const std::vector<AnsweredCase> cases = readAnsweredCases("text/equal.jsonl");
  EXPECT_EQ(cases.size(), 8U);
  for (const AnsweredCase& row : cases) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(canonicallyEqual(row.input, row.other), row.expect<bool>());
  }
}

TEST(TextTest, answersTheOrderCases) {
  const std::vector<AnsweredCase> cases = readAnsweredCases("text/less.jsonl");
  EXPECT_EQ(cases.size(), 13U);
  for (const AnsweredCase& row : cases) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(std::is_lt(canonicalOrder(row.input, row.other)), row.expect<bool>());
  }
}

constexpr PairCase orderedCases[] = {
    {.name = "prefixFirst", .a = "/a", .b = "/a/"},
    {.name = "emptyFirst", .a = "", .b = {"\0", 1}},
    {.name = "ascii", .a = "/a/b", .b = "/a/c"},
    {.name = "asciiBeforeOthers", .a = "z", .b = "\u00e9"},
    {.name = "composedAfterOtherLetter", .a = "f", .b = "e\u0301"},
    {.name = "composedAfterOtherLetterInPath", .a = "/f/x", .b = "/e\u0301/x"},
    {.name = "composedAfterItsLetter", .a = "ez", .b = "e\u0301"},
    {.name = "singletonAsWhatItMeans", .a = "\u212a", .b = "L"},
    {.name = "beyondBMPAfterBMP", .a = "\uffff", .b = "\U00010000"},
    {.name = "notUTF8ByBytes", .a = "\xFE", .b = "\xFF"},
};

TEST(TextTest, isOrderedByCodePointsOfTheComposedForm) {
  for (const PairCase& row : orderedCases) {
    SCOPED_TRACE(row.name);
    EXPECT_TRUE(std::is_lt(canonicalOrder(row.a, row.b)));
    EXPECT_TRUE(std::is_gt(canonicalOrder(row.b, row.a)));
  }
}

struct FormCase {
  std::string_view name;
  std::string_view text;
  std::string_view normalized;
};

constexpr FormCase formCases[] = {
    {.name = "empty", .text = "", .normalized = ""},
    {.name = "composes", .text = "/e\u0301/x", .normalized = "/\u00e9/x"},
    {.name = "staysComposed", .text = "/\u00e9/x", .normalized = "/\u00e9/x"},
    {.name = "ordersMarks", .text = "q\u0307\u0323", .normalized = "q\u0323\u0307"},
    {.name = "keepsOrderWithinOneClass",
     .text = "x\u0301\u0300\u0323",
     .normalized = "x\u0323\u0301\u0300"},
    {.name = "skipsBlockedMark",
     .text = "a\u0305\u0301",  // both above: the first keeps the second from the letter
     .normalized = "a\u0305\u0301"},
    {.name = "exclusion", .text = "\u0958", .normalized = "\u0915\u093c"},
    {.name = "singleton", .text = "\u212a", .normalized = "K"},
    {.name = "marksAlone", .text = "\u0307\u0323", .normalized = "\u0323\u0307"},
    {.name = "syllable", .text = "\u1112\u1161\u11ab", .normalized = "\ud55c"},
    {.name = "vowelThatComposesWithNothing",
     .text = "\u1100\u1161\u11a7\u11a7\u0323\u0301e\u0301",
     .normalized = "\uac00\u11a7\u11a7\u0323\u0301\u00e9"},
    {.name = "vowelFirst", .text = "\u11a7\u11a8", .normalized = "\u11a7\u11a8"},
    {.name = "beforeTheFirstFinal", .text = "\uac00\u11a8", .normalized = "\uac01"},
    {.name = "afterTheLastFinal", .text = "\uac00\u11c3", .normalized = "\uac00\u11c3"},
    {.name = "unassigned", .text = "\u0378e\u0301", .normalized = "\u0378\u00e9"},
    {.name = "noncharacter", .text = "\U0010FFFFe\u0301", .normalized = "\U0010FFFF\u00e9"},
    {.name = "notUTF8", .text = "e\u0301\xFF", .normalized = "e\u0301\xFF"},
    {.name = "notUTF8First",
     .text = "\xFF"
             "e\u0301",
     .normalized = "\xFF"
                   "e\u0301"},
};

TEST(TextTest, normalizesToNFC) {
  for (const FormCase& row : formCases) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(normalizedNFC(row.text), row.normalized);
    EXPECT_EQ(normalizedNFC(row.normalized), row.normalized);
  }
}

TEST(TextTest, everyCodePointNormalizesAsUnicodeSays) {
  for (std::int32_t codePoint = 0; codePoint < codePointLimit; ++codePoint) {
    if (isSurrogate(codePoint)) {
      continue;
    }
    const std::string text = encoded(codePoint);
    ASSERT_EQ(normalizedNFC(text), nfc(text)) << std::hex << codePoint;
  }
}

// Fails when a code point that composes with the one before it is taken for inert.
TEST(TextTest, everyCodePointComposesFromItsParts) {
  int decomposable = 0;
  for (std::int32_t codePoint = 0; codePoint < codePointLimit; ++codePoint) {
    if (isSurrogate(codePoint)) {
      continue;
    }
    const std::string text = encoded(codePoint);
    const std::string parts = nfd(text);
    if (parts != text) {
      ++decomposable;
      ASSERT_EQ(normalizedNFC(parts), normalizedNFC(text)) << std::hex << codePoint;
    }
  }
  EXPECT_GT(decomposable, 13'000);
}

std::vector<std::int32_t> marksOfEveryClass() {
  std::vector<std::int32_t> marks;
  for (std::int32_t codePoint = 0; codePoint < codePointLimit; ++codePoint) {
    if (utf8proc_get_property(codePoint)->combining_class != 0) {
      marks.push_back(codePoint);
    }
  }
  return marks;
}

// Fails when a range of marks is taken for inert and left in its place.
TEST(TextTest, marksOfEveryClassAreOrdered) {
  const std::vector<std::int32_t> marks = marksOfEveryClass();
  ASSERT_GT(marks.size(), 900U);
  constexpr std::size_t neighbours = 16;
  for (std::size_t later = 0; later < marks.size(); ++later) {
    for (std::size_t earlier = later - std::min(later, neighbours); earlier < later; ++earlier) {
      const std::string text = encoded(marks[later]) + encoded(marks[earlier]);
      ASSERT_EQ(normalizedNFC(text), nfc(text))
          << std::hex << marks[later] << ' ' << marks[earlier];
    }
  }
}

TEST(TextTest, randomTextsEqualTheirNormalForms) {
  RandomTexts texts;
  for (int round = 0; round < 5'000; ++round) {
    const std::string text = texts.next(10);
    SCOPED_TRACE(text);
    expectOneTextInTwoForms(text, nfd(text));
    expectOneTextInTwoForms(text, nfc(text));
    EXPECT_EQ(normalizedNFC(text), nfc(text));
  }
}

TEST(TextTest, randomTextsAreEqualExactlyWhenTheirNormalFormsAre) {
  RandomTexts texts;
  int equal = 0;
  for (int round = 0; round < 20'000; ++round) {
    const std::string a = texts.next(3);
    const std::string b = texts.next(3);
    SCOPED_TRACE(a + " | " + b);
    if (nfd(a) == nfd(b)) {
      ++equal;
      expectOneTextInTwoForms(a, b);
    } else {
      expectTwoTexts(a, b);
    }
    EXPECT_EQ(std::is_lt(canonicalOrder(a, b)), nfc(a) < nfc(b));
  }
  EXPECT_GT(equal, 100);
}

constexpr std::string_view notUTF8[] = {
    "\x80",
    "\xC0\xAF",
    "\xC3",
    "\xE0\x80\x80",
    "\xE2\x82",
    "\xED\xA0\x80",
    "\xED\xBF\xBF",
    "\xF0\x80\x80\x80",
    "\xF4\x90\x80\x80",
    "\xF8\x88\x80",
    "\xFF",
    "e\u0301\xFF",
    "\u00e9\xFF",
    "\xFF\u0301",
    "\u0301\xC3",
    "K\xFE",
    "\u212a\xFE",
};

TEST(TextTest, bytesThatAreNotUTF8EqualOnlyThemselves) {
  for (const std::string_view a : notUTF8) {
    EXPECT_FALSE(isUTF8(a));
    EXPECT_EQ(normalizedNFC(a), a);
    for (const std::string_view b : notUTF8) {
      a == b ? expectOneTextInTwoForms(a, b) : expectTwoTexts(a, b);
      EXPECT_EQ(std::is_lt(canonicalOrder(a, b)), a < b);
    }
  }
}

// Valid and other texts together: one strict weak order, in which equality is equivalence.
TEST(TextTest, orderIsTotalOverAllBytes) {
  RandomTexts texts;
  std::vector<std::string> all(std::begin(notUTF8), std::end(notUTF8));
  for (int count = 0; count < 60; ++count) {
    all.push_back(texts.next(3));
    all.push_back(texts.next(2) + "\xFF" + texts.next(2));
  }
  std::ranges::sort(all, [](const std::string& a, const std::string& b) {
    return std::is_lt(canonicalOrder(a, b));
  });
  for (std::size_t first = 0; first < all.size(); ++first) {
    for (std::size_t second = first; second < all.size(); ++second) {
      EXPECT_TRUE(std::is_lteq(canonicalOrder(all[first], all[second])));
      EXPECT_EQ(std::is_eq(canonicalOrder(all[first], all[second])),
                canonicallyEqual(all[first], all[second]));
    }
  }
}

TEST(TextTest, recognisesUTF8) {
  EXPECT_TRUE(isUTF8(""));
  EXPECT_TRUE(isUTF8({"a\0b", 3}));
  EXPECT_TRUE(isUTF8("0123456789\u00e9\u65e5\U0001F600"));
  EXPECT_TRUE(isUTF8("\uffff\U0010FFFF"));
  EXPECT_FALSE(isUTF8("0123456789\xE9"));
  EXPECT_FALSE(isUTF8("\u65e5\xE6\x97"));
}

std::string repeated(std::string_view text, int times) {
  std::string result;
  result.reserve(text.size() * static_cast<std::size_t>(times));
  for (; times > 0; --times) {
    result += text;
  }
  return result;
}

TEST(TextTest, longRunsOfMarksAreNotQuadratic) {
  constexpr int pairs = 100'000;
  const std::string alternating = "a" + repeated("\u0301\u0323", pairs);
  const std::string ordered = "a" + repeated("\u0323", pairs) + repeated("\u0301", pairs);
  expectOneTextInTwoForms(alternating, ordered);
  EXPECT_EQ(normalizedNFC(alternating),
            "\u1ea1" + repeated("\u0323", pairs - 1) + repeated("\u0301", pairs));
  EXPECT_FALSE(canonicallyEqual(alternating, ordered + "\u0301"));
  EXPECT_FALSE(canonicallyEqual(alternating, "a" + repeated("\u0301\u0327", pairs)));
}

TEST(TextTest, marksOfOneClassKeepTheirOrderInLongRuns) {
  constexpr int count = 1'000;
  EXPECT_EQ(normalizedNFC("/" + repeated("\u0301\u0323\u0300", count)),
            "/" + repeated("\u0323", count) + repeated("\u0301\u0300", count));
}

TEST(TextTest, longRunsOfSyllablePartsAreNotQuadratic) {
  constexpr int count = 100'000;
  expectOneTextInTwoForms(repeated("\u1100\u1161\u11a7", count), repeated("\uac00\u11a7", count));
}

TEST(TextTest, ownedTextKeepsItsBytesAndComparesItsMeaning) {
  const Text composed("/\u00e9");
  const Text decomposed(std::string("/e\u0301"));
  EXPECT_EQ(decomposed.utf8(), "/e\u0301");
  EXPECT_EQ(decomposed.view(), "/e\u0301");
  EXPECT_EQ(composed, decomposed);
  EXPECT_NE(composed, Text("/e"));
  EXPECT_LT(Text("/e"), decomposed);
  EXPECT_GT(composed, Text(std::string_view("/f")));
  EXPECT_TRUE(Text().empty());
  EXPECT_FALSE(composed.empty());
}

TEST(TextTest, setHoldsEquivalentTextsOnce) {
  const std::unordered_set<Text> set = {"\u00e9", "e\u0301", "\u212a", "K", "e", "\xFF"};
  EXPECT_EQ(set.size(), 4U);
  EXPECT_TRUE(set.contains(Text("K")));
  EXPECT_FALSE(set.contains(Text("\xFE")));
}

TEST(TextTest, viewComparesAsTheTextOfItsBytes) {
  const std::string bytes = "/e\u0301";
  const TextView decomposed(bytes);
  const TextView composed("/\u00e9");
  EXPECT_EQ(decomposed.view().data(), bytes.data());
  EXPECT_EQ(decomposed, composed);
  EXPECT_NE(decomposed, TextView("/e"));
  EXPECT_LT(TextView("/e"), decomposed);
  EXPECT_GT(composed, TextView(std::string_view("/f")));
  EXPECT_EQ(std::hash<TextView>()(decomposed), std::hash<TextView>()(composed));
  EXPECT_TRUE(TextView().empty());
  EXPECT_FALSE(composed.empty());
}

TEST(TextTest, textsAndViewsCompareWithEachOther) {
  const Text text("/\u00e9");
  const TextView same = text;
  EXPECT_EQ(same.view().data(), text.view().data());
  EXPECT_EQ(text, TextView("/e\u0301"));
  EXPECT_EQ(TextView("/e\u0301"), text);
  EXPECT_NE(text, TextView("/e"));
  EXPECT_LT(TextView("/e"), text);
  EXPECT_GT(text, TextView("/f"));
  EXPECT_EQ(std::hash<TextView>()(same), std::hash<Text>()(text));
  EXPECT_EQ(Text(same).utf8(), "/\u00e9");
}

}  // namespace
}  // namespace velmora

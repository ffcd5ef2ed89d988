#include "tests/support/AnsweredCases.h"
#include "tests/text/Answers.h"
#include "tests/text/NotUTF8.h"
#include "tests/text/RandomTexts.h"
#include "tests/text/TextPairs.h"
#include "text/Text.h"

#include <gtest/gtest.h>
#include <utf8proc.h>

#include <algorithm>
#include <array>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace velmora::internal {
namespace {

constexpr std::int32_t codePointLimit = 0x110000;

bool isSurrogate(std::int32_t codePoint) { return codePoint >= 0xD800 && codePoint <= 0xDFFF; }

std::string encoded(std::int32_t codePoint) {
  std::array<utf8proc_uint8_t, 4> bytes{};
  const utf8proc_ssize_t length = utf8proc_encode_char(codePoint, bytes.data());
  return {bytes.begin(), bytes.begin() + length};
}

// utf8proc's own mapping. It is slow, and right for every text here without U+11A7.
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

// A small set, so that random texts are often equivalent. Each rule of normalization has code
// points: marks of equal and of different classes, syllables, singletons, exclusions, starters that
// compose with an earlier starter, and inert code points.
constexpr std::array<std::int32_t, 30> lively = {
    'a',    'e',    'K',    ';',    '/',    '\n',  0xE9,  0x301,  0x300,   0x323,
    0x327,  0x345,  0x344,  0x1E69, 0x212A, 0x37E, 0x958, 0x93C,  0x915,   0x1112,
    0x1161, 0x11AB, 0xD558, 0xD55C, 0x9C7,  0x9BE, 0x9CB, 0x65E5, 0x1F600, 0x1D15E,
};

RandomTexts livelyTexts() {
  std::vector<std::string> pieces;
  for (const std::int32_t codePoint : lively) {
    pieces.push_back(encoded(codePoint));
  }
  return {pieces, 20240229};
}

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

TEST(TextTest, canonicallyEquivalentTextsAreEqualAndOtherTextsDiffer) {
  for (const TextPair& row : textPairs) {
    SCOPED_TRACE(row.name);
    row.areEqual ? expectOneTextInTwoForms(row.a, row.b) : expectTwoTexts(row.a, row.b);
  }
  expectAnswers<bool>("text/equal.jsonl", 8, [](const AnsweredCase& row) {
    return canonicallyEqual(row.input, row.other);
  });
}

struct OrderCase {
  std::string_view name;
  std::string_view lesser;
  std::string_view greater;
};

constexpr OrderCase orderCases[] = {
    {"prefixFirst", "/a", "/a/"},
    {"emptyFirst", "", {"\0", 1}},
    {"ascii", "/a/b", "/a/c"},
    {"asciiBeforeOthers", "z", "\u00e9"},
    {"composedAfterOtherLetter", "f", "e\u0301"},
    {"composedAfterOtherLetterInPath", "/f/x", "/e\u0301/x"},
    {"composedAfterItsLetter", "ez", "e\u0301"},
    {"singletonAsWhatItMeans", "\u212a", "L"},
    {"beyondBMPAfterBMP", "\uffff", "\U00010000"},
    {"notUTF8ByBytes", "\xFE", "\xFF"},
};

TEST(TextTest, findsTheASCIICharactersWithAnotherSpelling) {
  std::string respelled;
  for (std::int32_t codePoint = 0x80; codePoint < codePointLimit; ++codePoint) {
    const std::string normalized = normalizedNFC(encoded(codePoint));
    if (normalized.size() == 1) {
      respelled += normalized;
    }
  }
  for (int code = 0; code < 0x80; ++code) {
    const char character = static_cast<char>(code);
    EXPECT_EQ(hasOneSpelling(std::string(1, character)),
              respelled.find(character) == respelled.npos)
        << code;
  }
  EXPECT_EQ(respelled.size(), 3);
  EXPECT_TRUE(hasOneSpelling(""));
  for (const char* text : {"aK", "\u00e9", "e\u0301", "\xff"}) {
    EXPECT_FALSE(hasOneSpelling(text)) << text;
  }
}

TEST(TextTest, isOrderedByCodePointsOfTheComposedForm) {
  for (const OrderCase& row : orderCases) {
    SCOPED_TRACE(row.name);
    EXPECT_TRUE(std::is_lt(canonicalOrder(row.lesser, row.greater)));
    EXPECT_TRUE(std::is_gt(canonicalOrder(row.greater, row.lesser)));
  }
  expectAnswers<bool>("text/less.jsonl", 13, [](const AnsweredCase& row) {
    return std::is_lt(canonicalOrder(row.input, row.other));
  });
}

struct FormCase {
  std::string_view name;
  std::string_view text;
  std::string_view normalized;
};

constexpr FormCase formCases[] = {
    {"empty", "", ""},
    {"composes", "/e\u0301/x", "/\u00e9/x"},
    {"staysComposed", "/\u00e9/x", "/\u00e9/x"},
    {"ordersMarks", "q\u0307\u0323", "q\u0323\u0307"},
    {"keepsOrderWithinOneClass", "x\u0301\u0300\u0323", "x\u0323\u0301\u0300"},
    {"skipsBlockedMark", "a\u0305\u0301",  // the first mark blocks the second one
     "a\u0305\u0301"},
    {"marksAlone", "\u0307\u0323", "\u0323\u0307"},
    {"syllable", "\u1112\u1161\u11ab", "\ud55c"},
    {"vowelThatComposesWithNothing", "\u1100\u1161\u11a7\u11a7\u0323\u0301e\u0301",
     "\uac00\u11a7\u11a7\u0323\u0301\u00e9"},
    {"vowelFirst", "\u11a7\u11a8", "\u11a7\u11a8"},
    {"beforeTheFirstFinal", "\uac00\u11a8", "\uac01"},
    {"afterTheLastFinal", "\uac00\u11c3", "\uac00\u11c3"},
    {"unassigned", "\u0378e\u0301", "\u0378\u00e9"},
    {"noncharacter", "\U0010FFFFe\u0301", "\U0010FFFF\u00e9"},
    {"notUTF8", "e\u0301\xFF", "e\u0301\xFF"},
    {"notUTF8First",
     "\xFF"
     "e\u0301",
     "\xFF"
     "e\u0301"},
};

TEST(TextTest, normalizesToNFC) {
  for (const FormCase& row : formCases) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(normalizedNFC(row.text), row.normalized);
    EXPECT_EQ(normalizedNFC(row.normalized), row.normalized);
  }
}

// Also fails when a code point that composes with an earlier one counts as inert.
TEST(TextTest, everyCodePointIsNormalizedAlsoFromItsParts) {
  int decomposable = 0;
  for (std::int32_t codePoint = 0; codePoint < codePointLimit; ++codePoint) {
    if (!isSurrogate(codePoint)) {
      const std::string text = encoded(codePoint);
      const std::string normalized = normalizedNFC(text);
      ASSERT_EQ(normalized, nfc(text)) << std::hex << codePoint;
      if (const std::string parts = nfd(text); parts != text) {
        ++decomposable;
        ASSERT_EQ(normalizedNFC(parts), normalized) << std::hex << codePoint;
      }
    }
  }
  EXPECT_GT(decomposable, 13'000);
}

// Fails when a range of marks counts as inert and is not reordered.
TEST(TextTest, marksOfEveryClassAreOrdered) {
  std::vector<std::int32_t> marks;
  for (std::int32_t codePoint = 0; codePoint < codePointLimit; ++codePoint) {
    if (utf8proc_get_property(codePoint)->combining_class != 0) {
      marks.push_back(codePoint);
    }
  }
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

TEST(TextTest, randomTextsAreEqualIfAndOnlyIfTheirNormalFormsAre) {
  RandomTexts texts = livelyTexts();
  for (int round = 0; round < 5'000; ++round) {
    const std::string text = texts.next(10);
    SCOPED_TRACE(text);
    expectOneTextInTwoForms(text, nfd(text));
    expectOneTextInTwoForms(text, nfc(text));
    EXPECT_EQ(normalizedNFC(text), nfc(text));
  }
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

std::vector<std::string> textsNotUTF8() {
  std::vector<std::string> texts = notUTF8;
  texts.insert(texts.end(), {"e\u0301\xFF", "\u00e9\xFF", "\u0301\xC3", "K\xFE", "\u212a\xFE"});
  return texts;
}

TEST(TextTest, bytesThatAreNotUTF8EqualOnlyThemselves) {
  const std::vector<std::string> texts = textsNotUTF8();
  for (const std::string& a : texts) {
    EXPECT_FALSE(isUTF8(a));
    EXPECT_EQ(normalizedNFC(a), a);
    for (const std::string& b : texts) {
      a == b ? expectOneTextInTwoForms(a, b) : expectTwoTexts(a, b);
      EXPECT_EQ(std::is_lt(canonicalOrder(a, b)), a < b);
    }
  }
}

// Valid and invalid UTF-8 together have one strict weak order, in which equality is equivalence.
TEST(TextTest, orderIsTotalOverAllBytes) {
  RandomTexts texts = livelyTexts();
  std::vector<std::string> all = textsNotUTF8();
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
  EXPECT_EQ(normalizedNFC("/" + repeated("\u0301\u0323\u0300", 1'000)),
            "/" + repeated("\u0323", 1'000) + repeated("\u0301\u0300", 1'000));
}

TEST(TextTest, longRunsOfSyllablePartsAreNotQuadratic) {
  expectOneTextInTwoForms(repeated("\u1100\u1161\u11a7", 100'000),
                          repeated("\uac00\u11a7", 100'000));
}

TEST(TextTest, setHoldsEquivalentTextsOnce) {
  const std::unordered_set<Text> set = {"\u00e9", "e\u0301", "\u212a", "K", "e", "\xFF"};
  EXPECT_EQ(set.size(), 4U);
  EXPECT_TRUE(set.contains(Text("K")));
  EXPECT_FALSE(set.contains(Text("\xFE")));
}

template <class A, class B>
void expectToCompareByMeaning() {
  const A composed("/\u00e9");
  const B decomposed("/e\u0301");
  EXPECT_EQ(composed, decomposed);
  EXPECT_NE(composed, B("/e"));
  EXPECT_LT(A("/e"), decomposed);
  EXPECT_GT(composed, B(std::string_view("/f")));
  EXPECT_EQ(std::hash<A>()(composed), std::hash<B>()(decomposed));
}

TEST(TextTest, textsAndViewsAreComparedCanonically) {
  expectToCompareByMeaning<Text, Text>();
  expectToCompareByMeaning<TextView, TextView>();
  expectToCompareByMeaning<Text, TextView>();
  expectToCompareByMeaning<TextView, Text>();
}

TEST(TextTest, ownedTextKeepsItsBytesAndViewRefersToThem) {
  const Text text(std::string("/e\u0301"));
  EXPECT_EQ(text.utf8(), "/e\u0301");
  EXPECT_EQ(text.view(), "/e\u0301");
  EXPECT_EQ(TextView(text).view().data(), text.view().data());
  EXPECT_EQ(TextView(text.utf8()).view().data(), text.view().data());
  EXPECT_EQ(Text(TextView(text)).utf8(), "/e\u0301");
  EXPECT_TRUE(Text().empty());
  EXPECT_FALSE(text.empty());
  EXPECT_TRUE(TextView().empty());
  EXPECT_FALSE(TextView(text).empty());
}

}  // namespace
}  // namespace velmora::internal

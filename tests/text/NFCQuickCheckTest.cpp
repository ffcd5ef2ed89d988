#include "text/NFCQuickCheck.h"

#include <gtest/gtest.h>
#include <utf8proc.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <iterator>
#include <map>
#include <optional>
#include <random>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace velmora::internal {
namespace {

using CodePoints = std::vector<utf8proc_int32_t>;

constexpr std::int32_t codePointLimit = 0x110000;

// utf8proc treats it as an absent final consonant of a syllable, and removes it.
constexpr std::int32_t droppedByUTF8Proc = 0x11A7;

CodePoints nfd(const CodePoints& text) {
  CodePoints all;
  for (const std::int32_t codePoint : text) {
    std::array<utf8proc_int32_t, 4> parts{};
    const utf8proc_ssize_t count = utf8proc_decompose_char(
        codePoint, parts.data(), std::ssize(parts), UTF8PROC_DECOMPOSE, nullptr);
    all.insert(all.end(), parts.begin(), parts.begin() + count);
  }
  const auto classOf = [](utf8proc_int32_t codePoint) {
    return utf8proc_get_property(codePoint)->combining_class;
  };
  for (std::size_t sorted = 1; sorted < all.size(); ++sorted) {
    for (std::size_t place = sorted;
         place > 0 && classOf(all[place]) != 0 && classOf(all[place]) < classOf(all[place - 1]);
         --place) {
      std::swap(all[place], all[place - 1]);
    }
  }
  return all;
}

CodePoints nfc(const CodePoints& text) {
  CodePoints all = nfd(text);
  const utf8proc_ssize_t count =
      utf8proc_normalize_utf32(all.data(), std::ssize(all),
                               static_cast<utf8proc_option_t>(UTF8PROC_COMPOSE | UTF8PROC_STABLE));
  all.resize(static_cast<std::size_t>(count));
  return all;
}

std::string encoded(const CodePoints& codePoints) {
  std::string text;
  for (const utf8proc_int32_t codePoint : codePoints) {
    std::array<utf8proc_uint8_t, 4> bytes{};
    text.append(bytes.begin(), bytes.begin() + utf8proc_encode_char(codePoint, bytes.data()));
  }
  return text;
}

// The property by its definition. A code point may compose with an earlier one if it is the last
// part of a composition, or if its own decomposition begins with such a part.
std::vector<NFCQuickCheck> quickChecksByTheirDefinition() {
  std::vector<NFCQuickCheck> checks(codePointLimit, NFCQuickCheck::yes);
  std::vector<CodePoints> compositions;
  for (std::int32_t codePoint = 0; codePoint < codePointLimit; ++codePoint) {
    if (nfc({codePoint}) != CodePoints{codePoint}) {
      checks[static_cast<std::size_t>(codePoint)] = NFCQuickCheck::no;
    } else if (CodePoints parts = nfd({codePoint}); parts.size() > 1) {
      checks[static_cast<std::size_t>(parts.back())] = NFCQuickCheck::maybe;
      parts.push_back(codePoint);
      compositions.push_back(std::move(parts));
    }
  }
  for (const CodePoints& composition : compositions) {
    if (checks[static_cast<std::size_t>(composition.front())] == NFCQuickCheck::maybe) {
      checks[static_cast<std::size_t>(composition.back())] = NFCQuickCheck::maybe;
    }
  }
  return checks;
}

TEST(NFCQuickCheckTest, everyCodePointHasThePropertiesOfItsNormalForms) {
  const std::vector<NFCQuickCheck> checks = quickChecksByTheirDefinition();
  std::map<NFCQuickCheck, int> counts;
  for (std::int32_t codePoint = 0; codePoint < codePointLimit; ++codePoint) {
    const NFCProperties properties = nfcProperties(codePoint);
    ++counts[properties.quickCheck];
    ASSERT_EQ(properties.quickCheck, checks[static_cast<std::size_t>(codePoint)])
        << std::hex << codePoint;
    ASSERT_EQ(properties.combiningClass, utf8proc_get_property(codePoint)->combining_class)
        << std::hex << codePoint;
  }
  // Too few of a kind would make the comparison weak.
  EXPECT_GT(counts[NFCQuickCheck::no], 1'100);
  EXPECT_GT(counts[NFCQuickCheck::maybe], 100);
}

struct PropertiesCase {
  NFCProperties properties;
  std::vector<std::int32_t> codePoints;
};

TEST(NFCQuickCheckTest, knowsTheKindsOfCodePoints) {
  using enum NFCQuickCheck;
  const PropertiesCase cases[] = {
      // Composed letters, and a letter that composes with the next one; syllables. Then parts of
      // syllables that compose with nothing before them: a consonant, an old vowel, the code point
      // before the finals, an old final.
      {{yes, 0}, {'a', 0xE9, 0x439, 0x9C7, 0x65E5, 0xD55C, 0x1F600, 0x1109A, 0x10FFFF}},
      {{yes, 0}, {0x1112, 0x1176, 0x11A7, 0x11C3}},
      // Marks that never compose, or only into excluded code points.
      {{yes, 230}, {0x305}},
      {{yes, 9}, {0x94D}},
      {{yes, 21}, {0x5BC}},
      {{yes, 216}, {0x1D165}},
      // A mark, vowels and finals that compose.
      {{maybe, 230}, {0x301}},
      {{maybe, 0}, {0x9BE, 0x1161, 0x1175, 0x11A8, 0x11C2}},
      // Singletons, exclusions, a compatibility ideograph; then a decomposition into marks only.
      {{no, 0}, {0x212A, 0x212B, 0x958, 0x1D15E, 0xF900}},
      {{no, 230}, {0x344}},
  };
  for (const auto& [properties, codePoints] : cases) {
    for (const std::int32_t codePoint : codePoints) {
      EXPECT_EQ(nfcProperties(codePoint), properties) << std::hex << codePoint;
    }
  }
}

struct PieceCase {
  std::string_view name;
  std::string_view before;
  std::string_view piece;  // empty when the whole text is in `before`
  std::string_view after;
};

constexpr PieceCase pieceCases[] = {
    {"empty", "", "", ""},
    {"ascii", "/Users/a", "", ""},
    {"composed", "/\u00e9\u0439\u65e5\ud55c/x", "", ""},
    {"marksInOrder", "/x\u0316\u0305/\u0915\u094d", "", ""},
    {"vowelBeforeFinals", "\uac00\u11a7", "", ""},
    {"notUTF8", "\xFF\xC3/", "", ""},
    {"accent", "/caf", "e\u0301", "/x"},
    {"accentFirst", "", "\u0301", "e\u0301"},
    {"accentOfOtherScript", "/\u043a\u0440\u0430", "\u0438\u0306", "\u0439\u0438\u0306"},
    {"marksOutOfOrder", "/a", "x\u0305\u0316\u0334", "y"},
    {"accentAfterMarkInOrder", "", "x\u0316\u0301", "\xFF"},
    {"exclusion", "\u0915", "\u0916\u0958", "\u0915"},
    {"singletonAfterNotUTF8", "", "\xFF\u212a", "/"},
    {"syllable", "\ud55c", "\u1112\u1161\u11ab", "\u1100"},
    {"halfSyllable", "", "\ud558\u11ab", "\u11a7"},
};

TEST(NFCQuickCheckTest, pieceHoldsOnlyWhatNormalizesTogether) {
  for (const PieceCase& row : pieceCases) {
    SCOPED_TRACE(row.name);
    const std::string text = std::string(row.before).append(row.piece).append(row.after);
    const std::optional<TextPiece> piece = findPieceNotInNFC(text, 0);
    EXPECT_EQ(piece.has_value(), !row.piece.empty());
    if (piece) {
      EXPECT_EQ(piece->begin, row.before.size());
      EXPECT_EQ(text.substr(piece->begin, piece->end - piece->begin), row.piece);
    }
  }
}

TEST(NFCQuickCheckTest, continuesAfterAPiece) {
  const std::string text = "/e\u0301/\u00e9/o\u0308";
  const std::optional<TextPiece> first = findPieceNotInNFC(text, 0);
  ASSERT_TRUE(first);
  const std::optional<TextPiece> second = findPieceNotInNFC(text, first->end);
  ASSERT_TRUE(second);
  EXPECT_EQ(text.substr(second->begin), "o\u0308");
  EXPECT_FALSE(findPieceNotInNFC(text, second->end));
}

// The algorithm of UAX #15: whether the quick check answers Yes for the text.
bool passesQuickCheck(const CodePoints& text) {
  std::uint8_t lastClass = 0;
  for (const std::int32_t codePoint : text) {
    const auto [check, combiningClass] = nfcProperties(codePoint);
    if (check != NFCQuickCheck::yes || (combiningClass != 0 && combiningClass < lastClass)) {
      return false;
    }
    lastClass = combiningClass;
  }
  return true;
}

// Code points with an effect on normalization: all that compose and their partners, a mark of each
// class, and one percent of those that are never in NFC.
CodePoints interestingCodePoints() {
  std::set<std::int32_t> chosen = {'a', '/', 0xE9, 0x65E5, 0xD55C, 0xD558, 0x11C3, 0x378};
  std::set<int> classes;
  int count = 0;
  for (std::int32_t codePoint = 0; codePoint < codePointLimit; ++codePoint) {
    const NFCProperties properties = nfcProperties(codePoint);
    if (properties.quickCheck == NFCQuickCheck::maybe ||
        classes.insert(properties.combiningClass).second ||
        (properties.quickCheck == NFCQuickCheck::no && ++count % 100 == 0)) {
      const CodePoints parts = nfd({codePoint});
      chosen.insert(codePoint);
      chosen.insert(parts.begin(), parts.end());
    }
  }
  for (std::int32_t codePoint = 0xC0; codePoint < codePointLimit; codePoint += 97) {
    chosen.insert(nfd({codePoint}).front());
  }
  chosen.erase(droppedByUTF8Proc);
  return {chosen.begin(), chosen.end()};
}

class RandomCodePoints {
 public:
  CodePoints next(std::size_t longest) {
    CodePoints text(1 + upTo(longest - 1));
    for (std::int32_t& codePoint : text) {
      // Half of the code points often compose with each other, which is rare among all code points.
      const CodePoints& source = upTo(1) == 0 ? all_ : lively_;
      codePoint = source[upTo(source.size() - 1)];
    }
    return text;
  }

 private:
  std::size_t upTo(std::size_t last) {
    return std::uniform_int_distribution<std::size_t>(0, last)(engine_);
  }

  std::mt19937_64 engine_{20240302};
  CodePoints all_ = interestingCodePoints();
  CodePoints lively_ = {'e',   0x301,  0x323,  0x305,  0x316,  0x334,  0x9C7, 0x9BE,
                        0x93C, 0x1112, 0x1161, 0x11AB, 0xD558, 0x3099, 0x304B};
};

void expectVerdictOf(const CodePoints& codePoints) {
  const std::string text = encoded(codePoints);
  const std::optional<TextPiece> piece = findPieceNotInNFC(text, 0);
  ASSERT_EQ(piece.has_value(), !passesQuickCheck(codePoints)) << testing::PrintToString(codePoints);
  if (!piece) {
    ASSERT_EQ(nfc(codePoints), codePoints) << testing::PrintToString(codePoints);
  }
}

TEST(NFCQuickCheckTest, pairsThatPassAreInNFC) {
  const CodePoints all = interestingCodePoints();
  CodePoints seconds;
  std::ranges::copy_if(all, std::back_inserter(seconds), [](std::int32_t codePoint) {
    return !nfcProperties(codePoint).beginsPiece();
  });
  ASSERT_GT(seconds.size(), 150U);
  for (const std::int32_t second : seconds) {
    for (std::size_t index = static_cast<std::size_t>(second) % 31; index < all.size();
         index += 31) {
      expectVerdictOf({all[index], second});
    }
    for (const std::int32_t other : seconds) {
      expectVerdictOf({other, second});
    }
  }
}

// The code points before, in and after the piece. The piece has positions in bytes.
std::array<CodePoints, 3> partsOf(const CodePoints& codePoints, TextPiece piece) {
  std::array<CodePoints, 3> parts;
  std::size_t position = 0;
  for (const std::int32_t codePoint : codePoints) {
    parts[position < piece.begin ? 0U : position < piece.end ? 1U : 2U].push_back(codePoint);
    position += encoded({codePoint}).size();
  }
  return parts;
}

TEST(NFCQuickCheckTest, randomTextsPassOrMayBeNormalizedInPieces) {
  RandomCodePoints random;
  int passed = 0;
  int passedWithMarks = 0;
  for (int round = 0; round < 50'000; ++round) {
    const CodePoints text = random.next(round % 5 < 3 ? 4 : 6);
    SCOPED_TRACE(testing::PrintToString(text));
    expectVerdictOf(text);
    const std::optional<TextPiece> piece = findPieceNotInNFC(encoded(text), 0);
    if (!piece) {
      ++passed;
      passedWithMarks += nfcProperties(text.back()).combiningClass != 0 ? 1 : 0;
      continue;
    }
    const auto [before, within, after] = partsOf(text, *piece);
    ASSERT_FALSE(within.empty());
    EXPECT_EQ(encoded(nfc(text)), encoded(before) + encoded(nfc(within)) + encoded(nfc(after)));
    // Only the first code point of a piece may begin a piece.
    EXPECT_TRUE(std::none_of(within.begin() + 1, within.end(), [](std::int32_t codePoint) {
      return nfcProperties(codePoint).beginsPiece();
    }));
  }
  EXPECT_GT(passed, 10'000);
  EXPECT_GT(passedWithMarks, 1'000);
  EXPECT_LT(passed, 40'000);
}

}  // namespace
}  // namespace velmora::internal

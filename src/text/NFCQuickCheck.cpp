// A text is certainly in NFC when every code point has the quick-check value "yes" and the
// combining classes of no run of marks decrease. The search remembers the last code point that
// begins a piece. At the first violation it returns the piece from there to the next beginning.
//
// A bitmap answers for the "settled" code points, which are most of those in names. utf8proc does
// not have the quick-check property of the others, so it is computed: a code point that decomposes
// is decomposed and composed again; any other is "maybe" if it can be the second part of a
// composition.
#include "text/NFCQuickCheck.h"

#include "text/UTF8.h"

#include <utf8proc.h>

#include <array>
#include <iterator>
#include <limits>

namespace velmora::internal {
namespace {

struct CodePointRange {
  std::int32_t first;
  std::int32_t last;
};

constexpr bool isInRange(std::int32_t codePoint, CodePointRange range) {
  return range.first <= codePoint && codePoint <= range.last;
}

/// Ranges in which each code point begins a piece. The list is not complete, but covers the scripts
/// of most names, so that these cost one bit test per code point. It holds for every later version
/// of Unicode: the normalization of assigned code points never changes (Unicode's normalization
/// stability policy), and none of these was unassigned in version 14.
constexpr std::array<CodePointRange, 27> settledRanges = {{
    {0x0000, 0x02FF},  // Latin
    {0x0388, 0x038A},  // Greek capitals with a mark
    {0x038E, 0x03A1},  // Greek
    {0x03A3, 0x03FF},  // Greek
    {0x0400, 0x0482},  // Cyrillic
    {0x048A, 0x052F},  // more Cyrillic
    {0x0531, 0x0556},  // Armenian capitals
    {0x0559, 0x058A},  // Armenian
    {0x05D0, 0x05EA},  // Hebrew letters
    {0x061B, 0x064A},  // Arabic letters
    {0x0671, 0x06D5},  // more Arabic letters
    {0x0904, 0x0939},  // Devanagari letters
    {0x093D, 0x094C},  // Devanagari vowels
    {0x0E01, 0x0E37},  // Thai letters and vowels
    {0x0E3F, 0x0E47},  // Thai vowels before a letter
    {0x10D0, 0x10FF},  // Georgian
    {0x1200, 0x1248},  // Ethiopic
    {0x1E00, 0x1EFF},  // Latin with two marks, as of Vietnamese
    {0x2002, 0x2064},  // punctuation, joiners
    {0x2190, 0x2328},  // arrows, mathematics, technical signs
    {0x2460, 0x2ADB},  // shapes, dingbats
    {0x3000, 0x3029},  // punctuation of East Asia
    {0x3041, 0x3096},  // Hiragana
    {0x309B, 0x30FF},  // Katakana
    {0x3220, 0x9FFF},  // Han
    {0xAC00, 0xD7A3},  // Hangul syllables
    {0xFE00, 0xFE0F},  // variation selectors
}};

class SettledCodePoints {
 public:
  constexpr SettledCodePoints() {
    for (const CodePointRange& range : settledRanges) {
      for (std::int32_t codePoint = range.first; codePoint <= range.last; ++codePoint) {
        words_[wordOf(codePoint)] |= bitOf(codePoint);
      }
    }
  }

  [[nodiscard]] constexpr bool contain(std::int32_t codePoint) const {
    return static_cast<std::uint32_t>(codePoint) < limit &&
           (words_[wordOf(codePoint)] & bitOf(codePoint)) != 0;
  }

 private:
  using Word = std::uint64_t;

  static constexpr std::uint32_t limit = 0x10000;
  static constexpr std::uint32_t bitsOfWord = std::numeric_limits<Word>::digits;

  static constexpr std::size_t wordOf(std::int32_t codePoint) {
    return static_cast<std::uint32_t>(codePoint) / bitsOfWord;
  }
  static constexpr Word bitOf(std::int32_t codePoint) {
    return Word{1} << static_cast<std::uint32_t>(codePoint) % bitsOfWord;
  }

  std::array<Word, limit / bitsOfWord> words_{};
};

constexpr SettledCodePoints settledCodePoints;

/// Hangul letters compose by arithmetic (Unicode, 3.12), not by utf8proc's data. U+11A7, between
/// the vowels and the final consonants, composes with nothing.
constexpr CodePointRange hangulLetters = {0x1100, 0x11FF};
constexpr CodePointRange hangulVowels = {0x1161, 0x1175};
constexpr CodePointRange hangulFinals = {0x11A8, 0x11C2};

/// Stems and flags of musical notes are second parts only of characters that are excluded from
/// composition. utf8proc's data do not show this exclusion.
constexpr CodePointRange stemsAndFlags = {0x1D165, 0x1D172};

/// Whether the code point can be the second part of a composition: some marks, and also the
/// starters that compose with the starter before them.
template <typename Property>
bool isSecondOfComposition(const Property& property) {
  if constexpr (requires { property.comb_issecond; }) {
    return property.comb_issecond != 0;
  } else if constexpr (requires { &Property::comb_index; }) {
    // A field of 16 bits is the index of either part of a composition; its top bit marks the
    // second.
    constexpr auto none = std::numeric_limits<utf8proc_uint16_t>::max();
    return property.comb_index >= 0x8000 && property.comb_index != none;
  } else {
    // With an unknown layout of the data, "maybe" is slow but always right.
    return true;
  }
}

bool mayComposeWithPrevious(std::int32_t codePoint, const utf8proc_property_t& property) {
  if (isInRange(codePoint, hangulLetters)) {
    return isInRange(codePoint, hangulVowels) || isInRange(codePoint, hangulFinals);
  }
  return isSecondOfComposition(property) && !isInRange(codePoint, stemsAndFlags);
}

/// The value of a code point that may decompose: decomposes it, and composes the parts again.
NFCQuickCheck quickCheckByNormalizing(std::int32_t codePoint) {
  // No canonical decomposition has more code points.
  std::array<utf8proc_int32_t, 4> parts{};
  const utf8proc_ssize_t decomposed = utf8proc_decompose_char(
      codePoint, parts.data(), std::ssize(parts), UTF8PROC_DECOMPOSE, nullptr);
  const utf8proc_int32_t first = parts.front();
  const utf8proc_ssize_t composed = utf8proc_normalize_utf32(
      parts.data(), decomposed, static_cast<utf8proc_option_t>(UTF8PROC_COMPOSE | UTF8PROC_STABLE));
  if (composed != 1 || parts.front() != codePoint) {
    return NFCQuickCheck::no;
  }
  return mayComposeWithPrevious(first, *utf8proc_get_property(first)) ? NFCQuickCheck::maybe
                                                                      : NFCQuickCheck::yes;
}

NFCQuickCheck quickCheck(std::int32_t codePoint, const utf8proc_property_t& property) {
  constexpr auto noDecomposition = std::numeric_limits<utf8proc_uint16_t>::max();
  if (property.decomp_seqindex != noDecomposition) {
    return quickCheckByNormalizing(codePoint);
  }
  return mayComposeWithPrevious(codePoint, property) ? NFCQuickCheck::maybe : NFCQuickCheck::yes;
}

/// Not inlined into the loops below, which nearly always meet settled code points.
[[gnu::noinline]] NFCProperties unsettledProperties(std::int32_t codePoint) {
  const utf8proc_property_t& property = *utf8proc_get_property(codePoint);
  return {.quickCheck = quickCheck(codePoint, property),
          .combiningClass = static_cast<std::uint8_t>(property.combining_class)};
}

NFCProperties propertiesOf(std::int32_t codePoint) {
  return settledCodePoints.contain(codePoint) ? NFCProperties{} : unsettledProperties(codePoint);
}

std::size_t pieceEnd(std::string_view text, std::size_t position) {
  while (position < text.size()) {
    const CodePoint step = codePointAt(text, position);
    if (!step.isUTF8() || propertiesOf(step.value).beginsPiece()) {
      break;
    }
    position += step.length;
  }
  return position;
}

}  // namespace

NFCProperties nfcProperties(std::int32_t codePoint) { return propertiesOf(codePoint); }

std::optional<TextPiece> findPieceNotInNFC(std::string_view text, std::size_t begin) {
  std::uint8_t lastClass = 0;
  std::size_t position = begin;
  while (position < text.size()) {
    if (isASCII(text[position])) {
      position += asciiPrefixLength(text.substr(position));
      begin = position - 1;
      lastClass = 0;
      continue;
    }
    const CodePoint step = codePointAt(text, position);
    const NFCProperties properties = step.isUTF8() ? propertiesOf(step.value) : NFCProperties{};
    if (properties.beginsPiece()) {
      begin = position;
    } else if (properties.quickCheck != NFCQuickCheck::yes ||
               properties.combiningClass < lastClass) {
      return TextPiece{.begin = begin, .end = pieceEnd(text, position + step.length)};
    }
    lastClass = properties.combiningClass;
    position += step.length;
  }
  return std::nullopt;
}

}  // namespace velmora::internal

#include "text/Text.h"

#include "text/UTF8.h"

#include <utf8proc.h>
#define XXH_INLINE_ALL
#include <xxhash.h>

#include <algorithm>
#include <array>
#include <iterator>
#include <optional>
#include <random>
#include <span>
#include <vector>

namespace velmora {
namespace {

using CodePoints = std::vector<utf8proc_int32_t>;

struct CodePointRange {
  std::int32_t first;
  std::int32_t last;
};

// Every code point here is NFC_Quick_Check=Yes with combining class 0: text of nothing else is its
// own NFC form. Not a complete list, but the scripts, symbols and emoji in which most names are
// written, so that these cost no normalization.
constexpr std::array<CodePointRange, 18> inertRanges = {{
    {0x0000, 0x02FF},    // Latin
    {0x3030, 0x3098},    // Hiragana
    {0x309B, 0x9FFF},    // Katakana, Han
    {0xAC00, 0xD7A3},    // Hangul syllables
    {0x0400, 0x0482},    // Cyrillic
    {0x1E00, 0x1EFF},    // Latin with two marks, as of Vietnamese
    {0x2002, 0x20CF},    // punctuation, joiners, currency
    {0x3000, 0x3029},    // punctuation of East Asia
    {0x0388, 0x03FF},    // Greek
    {0x0620, 0x064A},    // Arabic letters
    {0x0E01, 0x0E37},    // Thai letters and vowels
    {0x05D0, 0x05F4},    // Hebrew letters
    {0xFF01, 0xFF9F},    // wide Latin, narrow Katakana
    {0xFE00, 0xFE0F},    // variation selectors
    {0x1F000, 0x1FAFF},  // emoji
    {0x048A, 0x0588},    // more Cyrillic, Armenian
    {0x2150, 0x2328},    // arrows, mathematics
    {0x232B, 0x2ADB},    // technical signs, shapes, dingbats
}};

bool isInert(std::int32_t codePoint) {
  return std::ranges::any_of(inertRanges, [codePoint](const CodePointRange& range) {
    return range.first <= codePoint && codePoint <= range.last;
  });
}

// The first step through `text` beyond ASCII for which `predicate` holds.
template <typename Predicate>
std::optional<CodePoint> findBeyondASCII(std::string_view text, Predicate predicate) {
  text.remove_prefix(asciiPrefixLength(text));
  while (!text.empty()) {
    const CodePoint codePoint = codePointAt(text, 0);
    if (predicate(codePoint)) {
      return codePoint;
    }
    text.remove_prefix(codePoint.length);
    text.remove_prefix(asciiPrefixLength(text));
  }
  return std::nullopt;
}

// False only for text that is its own canonical form. What is not UTF-8 may yield either.
bool mayNeedNormalization(std::string_view text) {
  const std::optional<CodePoint> found = findBeyondASCII(
      text, [](const CodePoint& step) { return !step.isUTF8() || !isInert(step.value); });
  return found && found->isUTF8();
}

void appendDecomposed(CodePoints& codePoints, std::int32_t codePoint) {
  // No canonical decomposition is longer.
  std::array<utf8proc_int32_t, 4> parts{};
  const utf8proc_ssize_t count = utf8proc_decompose_char(codePoint, parts.data(), std::ssize(parts),
                                                         UTF8PROC_DECOMPOSE, nullptr);
  codePoints.insert(codePoints.end(), parts.begin(), parts.begin() + count);
}

// The parts of `text`, which is UTF-8. Marks are in the order of the text.
CodePoints canonicallyDecomposed(std::string_view text) {
  CodePoints codePoints;
  codePoints.reserve(text.size());
  while (!text.empty()) {
    const CodePoint codePoint = codePointAt(text, 0);
    appendDecomposed(codePoints, codePoint.value);
    text.remove_prefix(codePoint.length);
  }
  return codePoints;
}

utf8proc_propval_t combiningClass(utf8proc_int32_t codePoint) {
  return utf8proc_get_property(codePoint)->combining_class;
}

bool isStarter(utf8proc_int32_t codePoint) { return combiningClass(codePoint) == 0; }

// utf8proc's own mapping orders marks by exchanging neighbours: quadratic for a name that somebody
// made of marks alone.
void putMarksInCanonicalOrder(CodePoints& codePoints) {
  auto begin = codePoints.begin();
  while ((begin = std::find_if_not(begin, codePoints.end(), isStarter)) != codePoints.end()) {
    const auto end = std::find_if(begin, codePoints.end(), isStarter);
    std::ranges::stable_sort(begin, end, {}, combiningClass);
    begin = end;
  }
}

void appendUTF8(std::string& text, utf8proc_int32_t codePoint) {
  std::array<utf8proc_uint8_t, 4> bytes{};
  const utf8proc_ssize_t length = utf8proc_encode_char(codePoint, bytes.data());
  text.append(bytes.begin(), bytes.begin() + length);
}

void appendComposed(std::string& text, std::span<utf8proc_int32_t> decomposed) {
  const auto options = static_cast<utf8proc_option_t>(UTF8PROC_COMPOSE | UTF8PROC_STABLE);
  const utf8proc_ssize_t count =
      utf8proc_normalize_utf32(decomposed.data(), std::ssize(decomposed), options);
  for (const utf8proc_int32_t codePoint : decomposed.first(static_cast<std::size_t>(count))) {
    appendUTF8(text, codePoint);
  }
}

// utf8proc takes U+11A7, a vowel that composes with nothing, for the absent final consonant of a
// Hangul syllable and drops it. So the code points are composed in pieces that end before each.
constexpr utf8proc_int32_t vowelBeforeFinalConsonants = 0x11A7;

void appendAllComposed(std::string& text, std::span<utf8proc_int32_t> decomposed) {
  while (!decomposed.empty()) {
    const auto next =
        std::find(decomposed.begin() + 1, decomposed.end(), vowelBeforeFinalConsonants);
    const auto length = static_cast<std::size_t>(next - decomposed.begin());
    appendComposed(text, decomposed.first(length));
    decomposed = decomposed.subspan(length);
  }
}

// What is normalized together, so that a few accents in a long path do not cost the whole path:
// an ASCII character composes with nothing before it, so that each may begin a piece. These are the
// ones at the beginning of `text` that are their own normal form, whatever follows.
std::size_t asciiBeforeNextPiece(std::string_view text) {
  const std::size_t run = asciiPrefixLength(text);
  return run == text.size() || run == 0 ? run : run - 1;
}

std::size_t pieceLength(std::string_view text) {
  return static_cast<std::size_t>(std::find_if(text.begin() + 1, text.end(), isASCII) -
                                  text.begin());
}

void appendNormalizedPiece(std::string& text, std::string_view piece) {
  if (!mayNeedNormalization(piece)) {
    text += piece;
    return;
  }
  CodePoints codePoints = canonicallyDecomposed(piece);
  putMarksInCanonicalOrder(codePoints);
  appendAllComposed(text, codePoints);
}

// The bytes that stand for `text` in comparisons: its NFC form, or the text itself where it is not
// UTF-8. `storage` holds them when they are not those of `text`.
std::string_view canonicalForm(std::string_view text, std::string& storage) {
  if (!mayNeedNormalization(text)) {
    return text;
  }
  storage = normalizedNFC(text);
  return storage;
}

bool haveEqualCanonicalForms(std::string_view a, std::string_view b) {
  std::string storageOfA;
  std::string storageOfB;
  return canonicalForm(a, storageOfA) == canonicalForm(b, storageOfB);
}

}  // namespace

bool canonicallyEqual(std::string_view a, std::string_view b) {
  const std::size_t common = commonPrefixLength(a, b);
  // More code points never decompose to the same as fewer of them.
  if (common == a.size() || common == b.size()) {
    return a.size() == b.size();
  }
  // ASCII decomposes to itself, and no mark moves across it.
  if (isASCII(a[common]) && isASCII(b[common])) {
    return false;
  }
  return haveEqualCanonicalForms(a, b);
}

std::weak_ordering canonicalOrder(std::string_view a, std::string_view b) {
  const std::size_t common = commonPrefixLength(a, b);
  // The code point after the difference counts, too: a mark there composes with the one before it.
  if (isASCIIText(a.substr(0, common + 2)) && isASCIIText(b.substr(common, 2))) {
    return a.substr(common, 1) <=> b.substr(common, 1);
  }
  std::string storageOfA;
  std::string storageOfB;
  // The order of UTF-8 bytes is the order of code points.
  return canonicalForm(a, storageOfA) <=> canonicalForm(b, storageOfB);
}

std::size_t canonicalHash(std::string_view text) {
  // Names come from strangers' files: with a known seed, they could be made to fall into one bucket
  // and turn every look-up into a search through all of them.
  static const XXH64_hash_t seed = [] {
    std::random_device source;
    return std::uniform_int_distribution<XXH64_hash_t>()(source);
  }();
  std::string storage;
  const std::string_view form = canonicalForm(text, storage);
  return XXH3_64bits_withSeed(form.data(), form.size(), seed);
}

std::string normalizedNFC(std::string_view text) {
  if (!mayNeedNormalization(text) || !isUTF8(text)) {
    return std::string(text);
  }
  std::string normalized;
  normalized.reserve(text.size());
  while (!text.empty()) {
    const std::size_t run = asciiBeforeNextPiece(text);
    normalized += text.substr(0, run);
    text.remove_prefix(run);
    if (!text.empty()) {
      const std::size_t length = pieceLength(text);
      appendNormalizedPiece(normalized, text.substr(0, length));
      text.remove_prefix(length);
    }
  }
  return normalized;
}

bool isUTF8(std::string_view bytes) {
  return !findBeyondASCII(bytes, [](const CodePoint& step) { return !step.isUTF8(); });
}

}  // namespace velmora

// Comparisons work on the canonical form, which is the NFC form of a UTF-8 text. Most of them end
// early: identical bytes, or a first difference between two ASCII characters, decide at once.
// Otherwise the quick check (NFCQuickCheck.h) finds the pieces that may not be in NFC. Only these
// are normalized: decomposed, their marks sorted by combining class, and composed again.
#include "text/Text.h"

#include "text/NFCQuickCheck.h"
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

void appendDecomposed(CodePoints& codePoints, std::int32_t codePoint) {
  // No canonical decomposition has more code points.
  std::array<utf8proc_int32_t, 4> parts{};
  const utf8proc_ssize_t count = utf8proc_decompose_char(codePoint, parts.data(), std::ssize(parts),
                                                         UTF8PROC_DECOMPOSE, nullptr);
  codePoints.insert(codePoints.end(), parts.begin(), parts.begin() + count);
}

/// Replaces `codePoints` by the decomposition of `text`, which must be UTF-8. Marks keep the order
/// that they have in `text`.
void decomposeCanonically(std::string_view text, CodePoints& codePoints) {
  codePoints.clear();
  while (!text.empty()) {
    const internal::CodePoint codePoint = internal::codePointAt(text, 0);
    appendDecomposed(codePoints, codePoint.value);
    text.remove_prefix(codePoint.length);
  }
}

utf8proc_propval_t combiningClass(utf8proc_int32_t codePoint) {
  return utf8proc_get_property(codePoint)->combining_class;
}

bool isStarter(utf8proc_int32_t codePoint) { return combiningClass(codePoint) == 0; }

/// Replaces the sorting of utf8proc, which exchanges neighbours and therefore takes quadratic time
/// for a hostile name that consists of marks.
void putMarksInCanonicalOrder(CodePoints& codePoints) {
  auto begin = codePoints.begin();
  while ((begin = std::find_if_not(begin, codePoints.end(), isStarter)) != codePoints.end()) {
    const auto end = std::find_if(begin, codePoints.end(), isStarter);
    // Sorting allocates memory, and most runs are a single mark.
    if (!std::ranges::is_sorted(begin, end, {}, combiningClass)) {
      std::ranges::stable_sort(begin, end, {}, combiningClass);
    }
    begin = end;
  }
}

void appendUTF8(std::string& text, utf8proc_int32_t codePoint) {
  std::array<utf8proc_uint8_t, 4> bytes{};
  const utf8proc_ssize_t length = utf8proc_encode_char(codePoint, bytes.data());
  text.append(bytes.begin(), bytes.begin() + length);
}

/// utf8proc mistakes U+11A7, a vowel that composes with nothing, for the absent final consonant of
/// a Hangul syllable, and drops it. That cannot happen here, because U+11A7 begins a piece.
void appendComposed(std::string& text, std::span<utf8proc_int32_t> decomposed) {
  const auto options = static_cast<utf8proc_option_t>(UTF8PROC_COMPOSE | UTF8PROC_STABLE);
  const utf8proc_ssize_t count =
      utf8proc_normalize_utf32(decomposed.data(), std::ssize(decomposed), options);
  for (const utf8proc_int32_t codePoint : decomposed.first(static_cast<std::size_t>(count))) {
    appendUTF8(text, codePoint);
  }
}

/// The NFC form of `text`, which must be UTF-8. `piece` is its first piece that may not be in NFC.
/// Only such pieces are normalized, so that a few accents do not cost the whole of a long path.
std::string normalizedFrom(std::optional<internal::TextPiece> piece, std::string_view text) {
  std::string normalized;
  normalized.reserve(text.size());
  CodePoints codePoints;
  std::size_t done = 0;
  for (; piece; piece = internal::findPieceNotInNFC(text, done)) {
    normalized += text.substr(done, piece->begin - done);
    decomposeCanonically(text.substr(piece->begin, piece->end - piece->begin), codePoints);
    putMarksInCanonicalOrder(codePoints);
    appendComposed(normalized, codePoints);
    done = piece->end;
  }
  return normalized += text.substr(done);
}

/// The bytes that represent `text` in comparisons: its NFC form, or `text` itself when that is not
/// UTF-8. The result refers to `text` or, after a normalization, to `storage`.
std::string_view canonicalForm(std::string_view text, std::string& storage) {
  const std::size_t run = internal::asciiPrefixLength(text);
  if (run == text.size()) {
    return text;
  }
  // The last ASCII character may compose with what follows it.
  const std::optional<internal::TextPiece> piece =
      internal::findPieceNotInNFC(text, run - std::min<std::size_t>(run, 1));
  if (!piece || !isUTF8(text)) {
    return text;
  }
  storage = normalizedFrom(*piece, text);
  return storage;
}

bool haveEqualCanonicalForms(std::string_view a, std::string_view b) {
  std::string storageOfA;
  std::string storageOfB;
  return canonicalForm(a, storageOfA) == canonicalForm(b, storageOfB);
}

}  // namespace

bool hasOneSpelling(std::string_view text) {
  return std::ranges::all_of(text, [](char character) {
    return static_cast<unsigned char>(character) < 0x80 && character != 'K' && character != ';' &&
           character != '`';
  });
}

bool canonicallyEqual(std::string_view a, std::string_view b) {
  const std::size_t common = internal::commonPrefixLength(a, b);
  // One text begins with the other. Additional code points always change the decomposition.
  if (common == a.size() || common == b.size()) {
    return a.size() == b.size();
  }
  // ASCII characters decompose to themselves, and no mark moves across them.
  if (internal::isASCII(a[common]) && internal::isASCII(b[common])) {
    return false;
  }
  return haveEqualCanonicalForms(a, b);
}

std::weak_ordering canonicalOrder(std::string_view a, std::string_view b) {
  const std::size_t common = internal::commonPrefixLength(a, b);
  // The next character must be ASCII, too: a mark there composes with the differing character.
  if (internal::isASCIIText(a.substr(0, common + 2)) &&
      internal::isASCIIText(b.substr(common, 2))) {
    return a.substr(common, 1) <=> b.substr(common, 1);
  }
  std::string storageOfA;
  std::string storageOfB;
  // The order of UTF-8 bytes is the order of code points.
  return canonicalForm(a, storageOfA) <=> canonicalForm(b, storageOfB);
}

std::size_t canonicalHash(std::string_view text, std::uint64_t salt) {
  // Names come from untrusted files. With a known seed, an attacker could choose names that share
  // one bucket, so that each look-up searches all of them.
  static const XXH64_hash_t seed = [] {
    std::random_device source;
    return std::uniform_int_distribution<XXH64_hash_t>()(source);
  }();
  std::string storage;
  const std::string_view form = canonicalForm(text, storage);
  return XXH3_64bits_withSeed(form.data(), form.size(), seed + salt);
}

std::string normalizedNFC(std::string_view text) {
  std::string storage;
  const std::string_view form = canonicalForm(text, storage);
  if (storage.empty()) {
    storage = form;
  }
  return storage;
}

bool isUTF8(std::string_view bytes) {
  bytes.remove_prefix(internal::asciiPrefixLength(bytes));
  while (!bytes.empty()) {
    const internal::CodePoint step = internal::codePointAt(bytes, 0);
    if (!step.isUTF8()) {
      return false;
    }
    bytes.remove_prefix(step.length);
    if (!bytes.empty() && internal::isASCII(bytes.front())) {
      bytes.remove_prefix(internal::asciiPrefixLength(bytes));
    }
  }
  return true;
}

}  // namespace velmora

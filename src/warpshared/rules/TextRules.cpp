// Sixteen bytes are tested at once. A fault of a path shows within four neighbouring bytes: a NUL,
// or a separator before a component that is empty, "." or "..". So each vector of bytes is compared
// together with the three vectors that begin one, two and three bytes later. A quicker first look
// passes over most paths, because a fault needs two neighbours that are dots or separators.
#include "warpshared/rules/TextRules.h"

#include "text/ByteVector.h"
#include "text/Characters.h"
#include "text/UTF8.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

namespace velmora::internal {

namespace {

constexpr char separator = '/';

/// Sixteen neighbouring bytes, and for each of them the next three.
struct Neighbourhood {
  ByteVector bytes;
  ByteVector next;
  ByteVector second;
  ByteVector third;
};

constexpr std::size_t lookAhead = 3;

Neighbourhood neighbourhoodAt(const char* bytes) {
  return {.bytes = byteVectorAt(bytes),
          .next = byteVectorAt(bytes + 1),
          .second = byteVectorAt(bytes + 2),
          .third = byteVectorAt(bytes + lookAhead)};
}

/// The last bytes of a text, as if a separator and a name followed them.
Neighbourhood neighbourhoodAtEnd(const char* bytes) {
  std::array<char, byteVectorSize + lookAhead> followed{};
  followed.fill('x');
  std::copy_n(bytes, byteVectorSize, followed.begin());
  followed[byteVectorSize] = separator;
  return neighbourhoodAt(followed.data());
}

ByteVector areSeparators(ByteVector bytes) { return areEqualTo(bytes, separator); }

ByteVector areDots(ByteVector bytes) { return areEqualTo(bytes, '.'); }

ByteVector areDotsOrSeparators(ByteVector bytes) {
  static_assert(('.' | 1) == separator);
  return areSeparators(bytes | std::uint8_t{1});
}

/// Marks each NUL, and each separator before a component that is empty, "." or "..".
ByteVector faultsAt(const Neighbourhood& at) {
  const ByteVector isUp = areDots(at.second) & areSeparators(at.third);
  const ByteVector isDotOrUp = areDots(at.next) & (areSeparators(at.second) | isUp);
  return areEqualTo(at.bytes, 0) | (areSeparators(at.bytes) & (areSeparators(at.next) | isDotOrUp));
}

/// `text` is at least two vectors long.
bool hasFault(std::string_view text) {
  const std::size_t last = text.size() - byteVectorSize;
  // The first two vectors may overlap, so that the last one ends with the text.
  ByteVector found = faultsAt(neighbourhoodAt(text.data()));
  for (std::size_t position = 1 + (last - 1) % byteVectorSize; position < last;
       position += byteVectorSize) {
    found |= faultsAt(neighbourhoodAt(text.data() + position));
  }
  return isAnySet(found | faultsAt(neighbourhoodAtEnd(text.data() + last)));
}

bool isDotOrSeparator(char byte) { return byte == '.' || byte == separator; }

/// Marks each NUL, and each dot or separator that another one follows.
ByteVector suspicionsAt(const char* bytes) {
  const ByteVector vector = byteVectorAt(bytes);
  return areEqualTo(vector, 0) |
         (areDotsOrSeparators(vector) & areDotsOrSeparators(byteVectorAt(bytes + 1)));
}

/// False only if there is no fault. `text` is longer than a vector.
bool isSuspicious(std::string_view text) {
  const std::size_t last = text.size() - byteVectorSize - 1;
  ByteVector found = suspicionsAt(text.data() + last);
  for (std::size_t position = 0; position < last; position += byteVectorSize) {
    found |= suspicionsAt(text.data() + position);
  }
  return isAnySet(found) || isDotOrSeparator(text.back()) || text.back() == '\0';
}

/// Whether `text`, as bytes, has no NUL and only names after its separators. The end counts as a
/// separator.
bool hasOnlyNamesAfterSeparators(std::string_view text) {
  constexpr std::size_t shortestLong = 2 * byteVectorSize;
  if (text.size() < shortestLong) {
    std::array<char, shortestLong + 1> padded{};
    padded.fill('x');
    *std::ranges::copy(text, padded.begin()).out = separator;
    return !hasFault({padded.data(), padded.size()});
  }
  // Few paths are suspicious, such as those of hidden files. The second look costs more.
  return !isSuspicious(text) || !hasFault(text);
}

bool isName(std::string_view component) {
  return !component.empty() && component != "." && component != "..";
}

bool beginsWithName(std::string_view text) {
  return !text.empty() && text.front() != separator &&
         (text.front() != '.' || isName(text.substr(0, text.find(separator))));
}

/// Whether the characters between whole separators are names. Rare, and therefore not inlined.
[[gnu::noinline]] bool isMadeOfNames(std::string_view key) {
  if (isASCIIText(key) || key.find('\0') != std::string_view::npos) {
    return false;
  }
  return std::ranges::all_of(splitAtCharacter(key, separator), isName);
}

constexpr std::uint8_t lowerCaseBit = 0x20;

struct AreBase64Digits {
  ByteVector operator()(ByteVector bytes) const {
    static_assert('/' + 1 == '0');
    return areInRange(bytes | lowerCaseBit, 'a', 'z') | areInRange(bytes, '/', '9') |
           areEqualTo(bytes, '+');
  }
};

struct AreHexDigits {
  ByteVector operator()(ByteVector bytes) const {
    return areInRange(bytes | lowerCaseBit, 'a', 'f') | areInRange(bytes, '0', '9');
  }
};

constexpr char digitOfBoth = '0';

std::string_view withoutPadding(std::string_view text) {
  for (int count = 0; count < 2 && text.ends_with('='); ++count) {
    text.remove_suffix(1);
  }
  return text;
}

}  // namespace

bool isCanonicalAbsolutePath(std::string_view path) {
  // No other code point is canonically equivalent to "/".
  if (!path.starts_with(separator) || !isCharacterBoundaryAfterASCII(path, 1)) {
    return false;
  }
  // Standardisation only removes components and separators. A text with fewer code points is never
  // canonically equal.
  return path.size() == 1 || hasOnlyNamesAfterSeparators(path);
}

bool isSafeRelativeObjectKey(std::string_view key) {
  // Components that are names remain names if a "/" between them separates nothing.
  return (beginsWithName(key) && hasOnlyNamesAfterSeparators(key)) || isMadeOfNames(key);
}

bool isStandardBase64(std::string_view text) {
  return text.size() % 4 == 0 &&
         holdsForEachByte(withoutPadding(text), digitOfBoth, AreBase64Digits{});
}

bool isSHA256Hex(std::string_view text) {
  constexpr std::size_t digitCount = 64;
  return text.size() == digitCount &&
         holdsForEachByte(text.substr(0, digitCount), digitOfBoth, AreHexDigits{});
}

}  // namespace velmora::internal

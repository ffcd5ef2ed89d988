#include "warpshared/rules/PathPredicates.h"

#include "text/ByteVector.h"
#include "text/Characters.h"
#include "text/UTF8.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace velmora::internal {
namespace {

constexpr char separator = '/';

// Sixteen bytes in a row, and for each of them the one to three that follow it.
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

// The last bytes of a text. What comes after them counts as a separator and a name.
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

// The NULs, and the separators before a component that is empty, "." or "..".
ByteVector faultsAt(const Neighbourhood& at) {
  const ByteVector isUp = areDots(at.second) & areSeparators(at.third);
  const ByteVector isDotOrUp = areDots(at.next) & (areSeparators(at.second) | isUp);
  return areEqualTo(at.bytes, 0) | (areSeparators(at.bytes) & (areSeparators(at.next) | isDotOrUp));
}

// `text` has two vectors at least.
bool hasFault(std::string_view text) {
  const std::size_t last = text.size() - byteVectorSize;
  // The first vectors may overlap, for the others to come out at the end.
  ByteVector found = faultsAt(neighbourhoodAt(text.data()));
  for (std::size_t position = 1 + (last - 1) % byteVectorSize; position < last;
       position += byteVectorSize) {
    found |= faultsAt(neighbourhoodAt(text.data() + position));
  }
  return isAnySet(found | faultsAt(neighbourhoodAtEnd(text.data() + last)));
}

bool isDotOrSeparator(char byte) { return byte == '.' || byte == separator; }

// Where a NUL is, or a dot or separator behind another one.
ByteVector suspicionsAt(const char* bytes) {
  const ByteVector vector = byteVectorAt(bytes);
  return areEqualTo(vector, 0) |
         (areDotsOrSeparators(vector) & areDotsOrSeparators(byteVectorAt(bytes + 1)));
}

// False only where there is no fault: none is without a NUL, or without two dots or separators in a
// row. `text` has more bytes than a vector.
bool isSuspicious(std::string_view text) {
  const std::size_t last = text.size() - byteVectorSize - 1;
  ByteVector found = suspicionsAt(text.data() + last);
  for (std::size_t position = 0; position < last; position += byteVectorSize) {
    found |= suspicionsAt(text.data() + position);
  }
  return isAnySet(found) || isDotOrSeparator(text.back()) || text.back() == '\0';
}

// Whether `text`, taken as bytes, holds no NUL, and only names after its separators. What comes
// after the end counts as a separator.
bool hasOnlyNamesAfterSeparators(std::string_view text) {
  constexpr std::size_t shortestLong = 2 * byteVectorSize;
  if (text.size() < shortestLong) {
    std::array<char, shortestLong + 1> padded{};
    padded.fill('x');
    *std::ranges::copy(text, padded.begin()).out = separator;
    return !hasFault({padded.data(), padded.size()});
  }
  // Few paths are suspicious, such as those of hidden files, and the second look costs twice as
  // much as the first.
  return !isSuspicious(text) || !hasFault(text);
}

bool isName(std::string_view component) {
  return !component.empty() && component != "." && component != "..";
}

bool beginsWithName(std::string_view text) {
  return !text.empty() && text.front() != separator &&
         (text.front() != '.' || isName(text.substr(0, text.find(separator))));
}

// Only a "/" that is a whole character separates. Rare, and kept out of what is asked for each
// entry.
[[gnu::noinline]] bool isMadeOfNames(std::string_view key) {
  if (isASCIIText(key) || key.find('\0') != std::string_view::npos) {
    return false;
  }
  return std::ranges::all_of(splitAtCharacter(key, separator), isName);
}

}  // namespace

bool isCanonicalAbsolutePath(std::string_view path) {
  // No other code point than "/" itself is canonically equivalent to it.
  if (!path.starts_with(separator) || !isCharacterBoundaryAfterASCII(path, 1)) {
    return false;
  }
  // Standardisation takes out whole components or separators, or nothing: what it changes has fewer
  // code points than before, and is not equal to it in any form.
  return path.size() == 1 || hasOnlyNamesAfterSeparators(path);
}

bool isSafeRelativeObjectKey(std::string_view key) {
  // Names stay names when a "/" between them is part of a larger character and separates nothing.
  return (beginsWithName(key) && hasOnlyNamesAfterSeparators(key)) || isMadeOfNames(key);
}

}  // namespace velmora::internal

#include "json/JSONString.h"

#include "text/Hexadecimal.h"
#include "text/UTF8.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>

namespace velmora::internal {

namespace {

using Block = std::uint64_t;

constexpr Block everyByte(unsigned char byte) { return 0x0101010101010101U * byte; }

/// Sets the top bit of every byte of `block` that is a backslash, and clears all other bits.
constexpr Block backslashes(Block block) {
  constexpr Block low = everyByte(0x7F);
  const Block difference = block ^ everyByte('\\');
  return ~(((difference & low) + low) | difference | low);
}

/// The number of bytes in memory before the first marked one; all of them when none is marked.
constexpr std::size_t bytesBefore(Block marks) {
  const int bits = std::endian::native == std::endian::little ? std::countr_zero(marks)
                                                              : std::countl_zero(marks);
  return static_cast<std::size_t>(bits) / 8;
}

/// The first `count` bytes in memory of `block`, followed by those of `other`.
constexpr Block joined(Block block, Block other, std::size_t count) {
  if (count == sizeof(Block)) {
    return block;
  }
  const Block high = std::endian::native == std::endian::little ? ~Block{0} << (8 * count)
                                                                : ~Block{0} >> (8 * count);
  return (block & ~high) | (other & high);
}

/// Moves the text before the next escape from `source` down to `target`.
void moveToEscape(char*& target, const char*& source, const char* end) {
  while (end - source >= static_cast<std::ptrdiff_t>(sizeof(Block))) {
    Block block = 0;
    Block there = 0;
    std::memcpy(&block, source, sizeof block);
    std::memcpy(&there, target, sizeof there);
    const std::size_t count = bytesBefore(backslashes(block));
    // The bytes after the escape may be unread source, so they keep their values.
    block = joined(block, there, count);
    std::memcpy(target, &block, sizeof block);
    source += count;
    target += count;
    if (count < sizeof block) {
      return;
    }
  }
  while (source != end && *source != '\\') {
    *target++ = *source++;
  }
}

/// Copies the text before the next escape from `source` to `target`, in whole vectors: bytes after
/// the text are overwritten, too.
void copyToEscape(char*& target, const char*& source, const char* end) {
  while (end - source >= static_cast<std::ptrdiff_t>(byteVectorSize)) {
    const ByteVector bytes = byteVectorAt(source);
    std::memcpy(target, &bytes, sizeof bytes);
    const std::size_t count = bytesBeforeFirst(areEqualTo(bytes, '\\'));
    source += count;
    target += count;
    if (count < byteVectorSize) {
      return;
    }
  }
  while (source != end && *source != '\\') {
    *target++ = *source++;
  }
}

/// Reads the four digits after "\u".
std::optional<char32_t> takeCodeUnit(const char*& source, const char* end) {
  constexpr std::ptrdiff_t digitCount = 4;
  if (end - source < digitCount) {
    return std::nullopt;
  }
  char32_t unit = 0;
  for (const char* const stop = source + digitCount; source != stop; ++source) {
    const std::optional<unsigned> digit = hexDigitValue(*source);
    if (!digit.has_value()) {
      return std::nullopt;
    }
    unit = unit << 4U | *digit;
  }
  return unit;
}

/// Reads what follows "\u": a code point, which takes another "\u" after a high surrogate.
std::optional<char32_t> takeCodePoint(const char*& source, const char* end) {
  const std::optional<char32_t> unit = takeCodeUnit(source, end);
  if (!unit.has_value() || !isSurrogate(*unit)) {
    return unit;
  }
  if (!isHighSurrogate(*unit) || end - source < 2 || source[0] != '\\' || source[1] != 'u') {
    return std::nullopt;
  }
  source += 2;
  const std::optional<char32_t> second = takeCodeUnit(source, end);
  if (!second.has_value() || !isLowSurrogate(*second)) {
    return std::nullopt;
  }
  return codePointOfPair(*unit, *second);
}

std::optional<char> simpleEscape(char character) {
  switch (character) {
    case '"':
    case '\\':
    case '/':
      return character;
    case 'b':
      return '\b';
    case 'f':
      return '\f';
    case 'n':
      return '\n';
    case 'r':
      return '\r';
    case 't':
      return '\t';
    default:
      return std::nullopt;
  }
}

/// Reads the escape at `source`.
bool takeEscape(char*& target, const char*& source, const char* end) {
  ++source;
  if (source == end) {
    return false;
  }
  const char selector = *source++;
  if (selector == 'u') {
    const std::optional<char32_t> codePoint = takeCodePoint(source, end);
    if (codePoint.has_value()) {
      target = writeUTF8(target, *codePoint);
    }
    return codePoint.has_value();
  }
  const std::optional<char> character = simpleEscape(selector);
  if (character.has_value()) {
    *target++ = *character;
  }
  return character.has_value();
}

}  // namespace

std::optional<std::size_t> resolveEscapes(std::span<char> content) {
  char* const begin = content.data();
  char* target = begin;
  const char* source = begin;
  const char* const end = begin + content.size();
  while (true) {
    moveToEscape(target, source, end);
    if (source == end) {
      break;
    }
    if (!takeEscape(target, source, end)) {
      return std::nullopt;
    }
  }
  const auto length = static_cast<std::size_t>(target - begin);
  std::memmove(begin + (content.size() - length), begin, length);
  return length;
}

std::optional<std::size_t> copyResolvingEscapes(std::string_view content, char* target) {
  const char* const begin = target;
  const char* source = content.data();
  const char* const end = source + content.size();
  while (true) {
    copyToEscape(target, source, end);
    if (source == end) {
      return static_cast<std::size_t>(target - begin);
    }
    // The most frequent escape, because a program that escapes "/" does so in every path.
    if (end - source >= 2 && source[1] == '/') {
      *target++ = '/';
      source += 2;
    } else if (!takeEscape(target, source, end)) {
      return std::nullopt;
    }
  }
}

}  // namespace velmora::internal

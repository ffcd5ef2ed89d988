#include "text/UTF8.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace velmora::internal {
namespace {

using Word = std::uint64_t;

constexpr Word beyondASCII = 0x8080808080808080U;

Word wordAt(std::string_view text, std::size_t position) {
  Word word = 0;
  std::memcpy(&word, text.data() + position, sizeof word);
  return word;
}

/// The number of bytes before the first one with a bit in `marks`, which must not be 0.
std::size_t bytesBefore(Word marks) {
  const int bits = std::endian::native == std::endian::little ? std::countr_zero(marks)
                                                              : std::countl_zero(marks);
  return static_cast<std::size_t>(bits) / 8;
}

/// The number of bytes before the first marked one, or `size` when there is none. `marksAt` returns
/// the marks of the word at a position. `isMarked` tests a single byte; it is called when `size` is
/// less than a word.
template <typename MarksAt, typename IsMarked>
std::size_t lengthBeforeMark(std::size_t size, MarksAt marksAt, IsMarked isMarked) {
  std::size_t position = 0;
  if (size < sizeof(Word)) {
    while (position < size && !isMarked(position)) {
      ++position;
    }
    return position;
  }
  while (size - position >= 2 * sizeof(Word) &&
         (marksAt(position) | marksAt(position + sizeof(Word))) == 0) {
    position += 2 * sizeof(Word);
  }
  // The last word may overlap bytes that are known to have no mark.
  const std::size_t last = size - sizeof(Word);
  while (position < last) {
    if (const Word marks = marksAt(position); marks != 0) {
      return position + bytesBefore(marks);
    }
    position += sizeof(Word);
  }
  const Word marks = marksAt(last);
  return marks != 0 ? last + bytesBefore(marks) : size;
}

}  // namespace

CodePoint codePointBefore(std::string_view text, std::size_t position) {
  const std::size_t earliest = position - std::min(position, maxCodePointLength);
  std::size_t begin = position - 1;
  while (begin > earliest && isContinuation(text[begin])) {
    --begin;
  }
  const CodePoint codePoint = codePointAt(text, begin);
  return begin + codePoint.length == position ? codePoint : CodePoint{};
}

char* writeUTF8(char* target, char32_t codePoint) {
  const auto write = [&target](char32_t byte) { *target++ = static_cast<char>(byte); };
  const auto writeContinuation = [&](unsigned shift) {
    write(0x80U | (codePoint >> shift & 0x3FU));
  };
  if (codePoint < 0x80) {
    write(codePoint);
  } else if (codePoint < 0x800) {
    write(0xC0U | codePoint >> 6U);
    writeContinuation(0);
  } else if (codePoint < 0x10000) {
    write(0xE0U | codePoint >> 12U);
    writeContinuation(6);
    writeContinuation(0);
  } else {
    write(0xF0U | codePoint >> 18U);
    writeContinuation(12);
    writeContinuation(6);
    writeContinuation(0);
  }
  return target;
}

std::size_t asciiPrefixLength(std::string_view text) {
  return lengthBeforeMark(
      text.size(), [text](std::size_t position) { return wordAt(text, position) & beyondASCII; },
      [text](std::size_t position) { return !isASCII(text[position]); });
}

std::size_t commonPrefixLength(std::string_view a, std::string_view b) {
  return lengthBeforeMark(
      std::min(a.size(), b.size()),
      [a, b](std::size_t position) { return wordAt(a, position) ^ wordAt(b, position); },
      [a, b](std::size_t position) { return a[position] != b[position]; });
}

}  // namespace velmora::internal

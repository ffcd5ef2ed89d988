#include "text/UTF8.h"

#include <utf8proc.h>

#include <algorithm>
#include <cstring>

namespace velmora {
namespace {

using Word = std::uint64_t;

constexpr std::size_t longestCodePoint = 4;

Word wordAt(std::string_view text, std::size_t position) {
  Word word = 0;
  std::memcpy(&word, text.data() + position, sizeof word);
  return word;
}

bool isASCIIWord(Word word) { return (word & 0x8080808080808080U) == 0; }

bool isContinuation(char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80; }

}  // namespace

CodePoint codePointAt(std::string_view text, std::size_t position) {
  const std::string_view rest = text.substr(position, longestCodePoint);
  if (isASCII(rest.front())) {
    return {.value = rest.front(), .length = 1};
  }
  utf8proc_int32_t value = 0;
  const utf8proc_ssize_t length =
      utf8proc_iterate(reinterpret_cast<const utf8proc_uint8_t*>(rest.data()),
                       static_cast<utf8proc_ssize_t>(rest.size()), &value);
  if (length <= 0) {
    return {};
  }
  return {.value = value, .length = static_cast<std::size_t>(length)};
}

CodePoint codePointBefore(std::string_view text, std::size_t position) {
  const std::size_t earliest = position - std::min(position, longestCodePoint);
  std::size_t begin = position - 1;
  while (begin > earliest && isContinuation(text[begin])) {
    --begin;
  }
  const CodePoint codePoint = codePointAt(text, begin);
  return begin + codePoint.length == position ? codePoint : CodePoint{};
}

std::size_t asciiPrefixLength(std::string_view text) {
  std::size_t length = 0;
  while (text.size() - length >= sizeof(Word) && isASCIIWord(wordAt(text, length))) {
    length += sizeof(Word);
  }
  while (length < text.size() && isASCII(text[length])) {
    ++length;
  }
  return length;
}

std::size_t commonPrefixLength(std::string_view a, std::string_view b) {
  const std::size_t limit = std::min(a.size(), b.size());
  std::size_t length = 0;
  while (limit - length >= sizeof(Word) && wordAt(a, length) == wordAt(b, length)) {
    length += sizeof(Word);
  }
  while (length < limit && a[length] == b[length]) {
    ++length;
  }
  return length;
}

}  // namespace velmora

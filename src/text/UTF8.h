// UTF-8 in memory: code points, ASCII prefixes, common prefixes. For code that parses bytes; other
// code uses Text.h and Characters.h.
//
// Bytes that are not UTF-8 are never refused: each one is a unit by itself.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace velmora::internal {

/// One step through a text: a code point with its length in bytes, or a single byte that begins no
/// well-formed code point (RFC 3629).
struct CodePoint {
  std::int32_t value = notUTF8;
  std::size_t length = 1;

  static constexpr std::int32_t notUTF8 = -1;

  [[nodiscard]] bool isUTF8() const { return value != notUTF8; }
};

// Surrogates of UTF-16 (RFC 2781). Escapes in JSON and in tables of strings write code points from
// U+10000 on as pairs of them.
[[nodiscard]] constexpr bool isHighSurrogate(char32_t unit) {
  return unit >= 0xD800 && unit <= 0xDBFF;
}

[[nodiscard]] constexpr bool isLowSurrogate(char32_t unit) {
  return unit >= 0xDC00 && unit <= 0xDFFF;
}

[[nodiscard]] constexpr bool isSurrogate(char32_t unit) {
  return isHighSurrogate(unit) || isLowSurrogate(unit);
}

/// The code point of a high surrogate and the low one that follows it.
[[nodiscard]] constexpr char32_t codePointOfPair(char32_t high, char32_t low) {
  return 0x10000 + ((high - 0xD800) << 10U) + (low - 0xDC00);
}

inline constexpr std::size_t maxCodePointLength = 4;

/// The step that ends at `position`, which must be inside of `text` and not at its beginning.
[[nodiscard]] CodePoint codePointBefore(std::string_view text, std::size_t position);

[[nodiscard]] constexpr bool isASCII(char byte) { return static_cast<unsigned char>(byte) < 0x80; }

/// Whether `byte` is a UTF-8 continuation byte.
[[nodiscard]] constexpr bool isContinuation(char byte) {
  return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80;
}

/// The step that begins at `position`, which must be inside of `text`.
[[nodiscard]] CodePoint codePointAt(std::string_view text, std::size_t position);

/// Writes the UTF-8 of `codePoint`, which is not a surrogate and at most U+10FFFF, to `target`,
/// where there is room for maxCodePointLength bytes. Returns the end of what was written.
char* writeUTF8(char* target, char32_t codePoint);

inline void appendUTF8(std::string& text, char32_t codePoint) {
  std::array<char, maxCodePointLength> bytes{};
  text.append(bytes.data(), writeUTF8(bytes.data(), codePoint));
}

/// The number of ASCII bytes at the beginning of `text`.
[[nodiscard]] std::size_t asciiPrefixLength(std::string_view text);

[[nodiscard]] inline bool isASCIIText(std::string_view text) {
  return asciiPrefixLength(text) == text.size();
}

/// The number of equal bytes at the beginning of `a` and `b`.
[[nodiscard]] std::size_t commonPrefixLength(std::string_view a, std::string_view b);

/// Inline, because the inner loops of nearly all operations on text call it.
inline CodePoint codePointAt(std::string_view text, std::size_t position) {
  // The bits that a continuation byte contributes.
  constexpr auto sixBits = [](char byte) -> std::int32_t {
    return static_cast<unsigned char>(byte) & 0x3F;
  };
  const char* const bytes = text.data() + position;
  const std::size_t left = text.size() - position;
  const std::int32_t first = static_cast<unsigned char>(bytes[0]);
  if (first < 0x80) {
    return {.value = first, .length = 1};
  }
  // RFC 3629, 3 and 4: no overlong form, no surrogate, and nothing above U+10FFFF.
  if (first < 0xC2 || left < 2 || !isContinuation(bytes[1])) {
    return {};
  }
  if (first < 0xE0) {
    return {.value = (first & 0x1F) * 0x40 + sixBits(bytes[1]), .length = 2};
  }
  if (left < 3 || !isContinuation(bytes[2])) {
    return {};
  }
  const std::int32_t afterFirst = sixBits(bytes[1]) * 0x40 + sixBits(bytes[2]);
  if (first < 0xF0) {
    const std::int32_t value = (first & 0x0F) * 0x1000 + afterFirst;
    return value < 0x800 || isSurrogate(static_cast<char32_t>(value))
               ? CodePoint{}
               : CodePoint{.value = value, .length = 3};
  }
  if (first > 0xF4 || left < 4 || !isContinuation(bytes[3])) {
    return {};
  }
  const std::int32_t value = (first & 0x07) * 0x40000 + afterFirst * 0x40 + sixBits(bytes[3]);
  const bool isInRange = value >= 0x10000 && value <= 0x10FFFF;
  return isInRange ? CodePoint{.value = value, .length = 4} : CodePoint{};
}

}  // namespace velmora::internal

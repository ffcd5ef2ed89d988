// UTF-8 as it lies in memory: code points, runs of ASCII, common beginnings. What the text
// functions of this folder share; the rest of the system uses Text.h and Characters.h.
//
// Bytes that are not UTF-8 are met everywhere and never refused: each one is a unit of its own.
#pragma once

#include "text/UTF16.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace velmora::internal {

/// One step through a text: a code point and the bytes that it takes, or one byte that begins no
/// well-formed code point (RFC 3629).
struct CodePoint {
  std::int32_t value = notUTF8;
  std::size_t length = 1;

  static constexpr std::int32_t notUTF8 = -1;

  [[nodiscard]] bool isUTF8() const { return value != notUTF8; }
};

inline constexpr std::size_t maxCodePointLength = 4;

/// The step that ends at `position`, which must lie inside `text` and not at its beginning.
[[nodiscard]] CodePoint codePointBefore(std::string_view text, std::size_t position);

[[nodiscard]] constexpr bool isASCII(char byte) { return static_cast<unsigned char>(byte) < 0x80; }

/// Whether `byte` can only be a later byte of a code point.
[[nodiscard]] constexpr bool isContinuation(char byte) {
  return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80;
}

/// The step that begins at `position`, which must lie inside `text`.
[[nodiscard]] CodePoint codePointAt(std::string_view text, std::size_t position);

/// Writes the UTF-8 of `codePoint`, which is not a surrogate and at most U+10FFFF, to `target`,
/// where there is room for maxCodePointLength bytes. Returns the end of what was written.
char* writeUTF8(char* target, char32_t codePoint);

inline void appendUTF8(std::string& text, char32_t codePoint) {
  std::array<char, maxCodePointLength> bytes{};
  text.append(bytes.data(), writeUTF8(bytes.data(), codePoint));
}

/// How many bytes at the beginning of `text` are ASCII.
[[nodiscard]] std::size_t asciiPrefixLength(std::string_view text);

[[nodiscard]] inline bool isASCIIText(std::string_view text) {
  return asciiPrefixLength(text) == text.size();
}

/// How many bytes at the beginning of `a` and `b` are the same.
[[nodiscard]] std::size_t commonPrefixLength(std::string_view a, std::string_view b);

// Here, as it is the innermost step of nearly all that is done with a text.
inline CodePoint codePointAt(std::string_view text, std::size_t position) {
  // What a byte behind the first one adds.
  constexpr auto sixBits = [](char byte) -> std::int32_t {
    return static_cast<unsigned char>(byte) & 0x3F;
  };
  const char* const bytes = text.data() + position;
  const std::size_t left = text.size() - position;
  const std::int32_t first = static_cast<unsigned char>(bytes[0]);
  if (first < 0x80) {
    return {.value = first, .length = 1};
  }
  // RFC 3629, 3 and 4: no longer form than is needed, no half of a surrogate pair, nothing beyond
  // the last code point.
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

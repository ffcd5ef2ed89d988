// UTF-8 as it lies in memory: code points, runs of ASCII, common beginnings. What the text
// functions of this folder share; the rest of the system uses Text.h and Characters.h.
//
// Bytes that are not UTF-8 are met everywhere and never refused: each one is a unit of its own.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace velmora {

/// One step through a text: a code point and the bytes that it takes, or one byte that begins no
/// well-formed code point (RFC 3629).
struct CodePoint {
  std::int32_t value = notUTF8;
  std::size_t length = 1;

  static constexpr std::int32_t notUTF8 = -1;

  [[nodiscard]] bool isUTF8() const { return value != notUTF8; }
};

/// The step that begins at `position`, which must lie inside `text`.
[[nodiscard]] CodePoint codePointAt(std::string_view text, std::size_t position);

/// The step that ends at `position`, which must lie inside `text` and not at its beginning.
[[nodiscard]] CodePoint codePointBefore(std::string_view text, std::size_t position);

[[nodiscard]] constexpr bool isASCII(char byte) { return static_cast<unsigned char>(byte) < 0x80; }

/// How many bytes at the beginning of `text` are ASCII.
[[nodiscard]] std::size_t asciiPrefixLength(std::string_view text);

[[nodiscard]] inline bool isASCIIText(std::string_view text) {
  return asciiPrefixLength(text) == text.size();
}

/// How many bytes at the beginning of `a` and `b` are the same.
[[nodiscard]] std::size_t commonPrefixLength(std::string_view a, std::string_view b);

}  // namespace velmora

// Surrogates of UTF-16 (RFC 2781), by which escapes in JSON and in tables of strings write the code
// points from U+10000 on.
#pragma once

namespace velmora::internal {

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

}  // namespace velmora::internal

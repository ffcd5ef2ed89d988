// Hexadecimal digits.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace velmora::internal {

/// The digits in the order of their values.
inline constexpr std::string_view lowerCaseHexDigits = "0123456789abcdef";
inline constexpr std::string_view upperCaseHexDigits = "0123456789ABCDEF";

/// The value of a digit of either case; none for any other character.
[[nodiscard]] constexpr std::optional<unsigned> hexDigitValue(char digit) {
  if (digit >= '0' && digit <= '9') {
    return static_cast<unsigned>(digit - '0');
  }
  if (digit >= 'a' && digit <= 'f') {
    return static_cast<unsigned>(digit - 'a' + 10);
  }
  if (digit >= 'A' && digit <= 'F') {
    return static_cast<unsigned>(digit - 'A' + 10);
  }
  return std::nullopt;
}

/// The byte of a percent-encoding, "%" and two digits, at the beginning of `text` (RFC 3986,
/// section 2.1); none when it is malformed.
[[nodiscard]] constexpr std::optional<char> percentDecodedByte(std::string_view text) {
  if (text.size() < 3) {
    return std::nullopt;
  }
  const std::optional<unsigned> high = hexDigitValue(text[1]);
  const std::optional<unsigned> low = hexDigitValue(text[2]);
  if (!high || !low) {
    return std::nullopt;
  }
  return static_cast<char>(*high * 16 + *low);
}

/// Appends the two digits of `byte`. `digits` is one of the two constants above.
inline void appendHexByte(std::string& text, std::uint8_t byte, std::string_view digits) {
  text += digits[byte >> 4U];
  text += digits[byte & 0x0FU];
}

}  // namespace velmora::internal

#include "common/DisplayText.h"

#include "text/UTF8.h"

#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>

namespace velmora {

namespace {

constexpr std::string_view replacementCharacter = "\xEF\xBF\xBD";

bool isBetween(std::int32_t value, std::int32_t first, std::int32_t last) {
  return first <= value && value <= last;
}

/// Whether a terminal may interpret this code point instead of showing it.
bool steersTerminal(std::int32_t value) {
  const bool isControl = value < 0x20 || isBetween(value, 0x7F, 0x9F);
  const bool isLineSeparator = isBetween(value, 0x2028, 0x2029);
  const bool isDirectionMark = value == 0x061C || isBetween(value, 0x200E, 0x200F) ||
                               isBetween(value, 0x202A, 0x202E) || isBetween(value, 0x2066, 0x2069);
  return isControl || isLineSeparator || isDirectionMark;
}

std::string hexadecimal(std::int32_t value) {
  std::array<char, 8> digits{};
  return {digits.data(), std::to_chars(digits.begin(), digits.end(), value, 16).ptr};
}

std::string escaped(std::int32_t value) {
  switch (value) {
    case '\n':
      return "\\n";
    case '\r':
      return "\\r";
    case '\t':
      return "\\t";
    case '\\':
      return "\\\\";
    default:
      return "\\u{" + hexadecimal(value) + "}";
  }
}

}  // namespace

std::string repairedUTF8(std::string_view bytes) {
  std::string text;
  for (std::size_t position = 0; position < bytes.size();) {
    const internal::CodePoint point = internal::codePointAt(bytes, position);
    text += point.isUTF8() ? bytes.substr(position, point.length) : replacementCharacter;
    position += point.length;
  }
  return text;
}

std::string displayText(std::string_view bytes) {
  std::string text;
  for (std::size_t position = 0; position < bytes.size();) {
    const internal::CodePoint point = internal::codePointAt(bytes, position);
    if (!point.isUTF8()) {
      text += "\\x" + hexadecimal(static_cast<unsigned char>(bytes[position]));
    } else if (point.value == '\\' || steersTerminal(point.value)) {
      text += escaped(point.value);
    } else {
      text += bytes.substr(position, point.length);
    }
    position += point.length;
  }
  return text;
}

}  // namespace velmora

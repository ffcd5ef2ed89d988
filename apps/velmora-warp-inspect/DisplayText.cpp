#include "DisplayText.h"

#include "text/UTF8.h"

#include <array>
#include <charconv>
#include <cstdint>

namespace velmora::inspect {

namespace {

constexpr std::string_view replacementCharacter = "\xEF\xBF\xBD";

bool isBetween(std::int32_t value, std::int32_t first, std::int32_t last) {
  return first <= value && value <= last;
}

/// Whether a terminal may do something else at this code point than show it in its place.
bool steersTerminal(std::int32_t value) {
  const bool isControl = value < 0x20 || isBetween(value, 0x7F, 0x9F);
  const bool isLineSeparator = isBetween(value, 0x2028, 0x2029);
  const bool isDirectionMark = value == 0x061C || isBetween(value, 0x200E, 0x200F) ||
                               isBetween(value, 0x202A, 0x202E) || isBetween(value, 0x2066, 0x2069);
  return isControl || isLineSeparator || isDirectionMark;
}

std::string escaped(std::int32_t value) {
  switch (value) {
    case '\n':
      return "\\n";
    case '\r':
      return "\\r";
    case '\t':
      return "\\t";
    default:
      break;
  }
  std::array<char, 8> digits{};
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value, 16).ptr;
  return std::string("\\u{").append(digits.data(), end).append("}");
}

/// Appends to `text` what `shown` makes of each code point of `bytes`.
template <class Show>
std::string repaired(std::string_view bytes, Show shown) {
  std::string text;
  for (std::size_t position = 0; position < bytes.size();) {
    const internal::CodePoint point = internal::codePointAt(bytes, position);
    if (point.isUTF8()) {
      text += shown(point.value, bytes.substr(position, point.length));
    } else {
      text += replacementCharacter;
    }
    position += point.length;
  }
  return text;
}

}  // namespace

std::string repairedUTF8(std::string_view bytes) {
  return repaired(bytes, [](std::int32_t, std::string_view piece) { return piece; });
}

std::string displayText(std::string_view bytes) {
  return repaired(bytes, [](std::int32_t value, std::string_view piece) {
    if (value == '\\') {
      return std::string("\\\\");
    }
    return steersTerminal(value) ? escaped(value) : std::string(piece);
  });
}

std::string counted(std::size_t count, std::string_view one, std::string_view many) {
  return std::to_string(count).append(" ").append(count == 1 ? one : many);
}

}  // namespace velmora::inspect

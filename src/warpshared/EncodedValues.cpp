#include "warpshared/EncodedValues.h"

#include <algorithm>
#include <cstddef>

namespace velmora {
namespace {

using Byte = unsigned char;

constexpr Byte lowerCase(Byte byte) { return byte | 0x20U; }

constexpr bool isInRange(Byte byte, Byte first, Byte last) {
  return static_cast<Byte>(byte - first) <= static_cast<Byte>(last - first);
}

// No operand has an effect, so that compilers need no branch and judge many bytes at a time.
struct Base64Digit {
  constexpr bool operator()(Byte byte) const {
    const bool isLetter = isInRange(lowerCase(byte), 'a', 'z');
    const bool isNumeral = isInRange(byte, '0', '9');
    return isLetter || isNumeral || byte == '+' || byte == '/';
  }
};

struct HexDigit {
  constexpr bool operator()(Byte byte) const {
    const bool isLetter = isInRange(lowerCase(byte), 'a', 'f');
    const bool isNumeral = isInRange(byte, '0', '9');
    return isLetter || isNumeral;
  }
};

template <typename Digit>
bool isMadeOf(std::string_view text, Digit isDigit) {
  // Both gcc and clang look for the greatest of sixteen bytes at a time; they do not agree on a
  // form of "or" for which they would.
  Byte fault = 0;
  for (const char byte : text) {
    fault = std::max(fault, isDigit(static_cast<Byte>(byte)) ? Byte{0} : Byte{1});
  }
  return fault == 0;
}

std::string_view withoutPadding(std::string_view text) {
  for (int count = 0; count < 2 && text.ends_with('='); ++count) {
    text.remove_suffix(1);
  }
  return text;
}

}  // namespace

bool isStandardBase64(std::string_view text) {
  return text.size() % 4 == 0 && isMadeOf(withoutPadding(text), Base64Digit{});
}

bool isSHA256Hex(std::string_view text) {
  constexpr std::size_t digitCount = 64;
  return text.size() == digitCount && isMadeOf(text.substr(0, digitCount), HexDigit{});
}

}  // namespace velmora

#include "warpshared/rules/TextEncodings.h"

#include "text/ByteVector.h"

#include <cstddef>

namespace velmora::internal {
namespace {

constexpr std::uint8_t lowerCaseBit = 0x20;

struct AreBase64Digits {
  ByteVector operator()(ByteVector bytes) const {
    static_assert('/' + 1 == '0');
    return areInRange(bytes | lowerCaseBit, 'a', 'z') | areInRange(bytes, '/', '9') |
           areEqualTo(bytes, '+');
  }
};

struct AreHexDigits {
  ByteVector operator()(ByteVector bytes) const {
    return areInRange(bytes | lowerCaseBit, 'a', 'f') | areInRange(bytes, '0', '9');
  }
};

constexpr char digitOfBoth = '0';

std::string_view withoutPadding(std::string_view text) {
  for (int count = 0; count < 2 && text.ends_with('='); ++count) {
    text.remove_suffix(1);
  }
  return text;
}

}  // namespace

bool isStandardBase64(std::string_view text) {
  return text.size() % 4 == 0 &&
         holdsForEachByte(withoutPadding(text), digitOfBoth, AreBase64Digits{});
}

bool isSHA256Hex(std::string_view text) {
  constexpr std::size_t digitCount = 64;
  return text.size() == digitCount &&
         holdsForEachByte(text.substr(0, digitCount), digitOfBoth, AreHexDigits{});
}

}  // namespace velmora::internal

// Checks of texts that encode bytes. The bytes are not decoded.
#pragma once

#include <string_view>

namespace velmora::internal {

/// Whether `text` is base64 (RFC 4648, section 4) with padding and no other byte. The unused bits
/// of the last digit may have any value. The empty text is base64.
[[nodiscard]] bool isStandardBase64(std::string_view text);

/// Whether `text` consists of 64 hexadecimal digits of either case.
[[nodiscard]] bool isSHA256Hex(std::string_view text);

}  // namespace velmora::internal

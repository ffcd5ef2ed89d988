// Texts that stand for bytes: only whether they do so correctly. Nobody here needs the bytes.
#pragma once

#include <string_view>

namespace velmora::internal {

/// Whether `text` is base64 as in RFC 4648, section 4: its alphabet and padding, no other byte.
/// What the bits that the padding leaves over say does not matter. The empty text is.
[[nodiscard]] bool isStandardBase64(std::string_view text);

/// Whether `text` is exactly 64 hexadecimal digits, each of either case.
[[nodiscard]] bool isSHA256Hex(std::string_view text);

}  // namespace velmora::internal

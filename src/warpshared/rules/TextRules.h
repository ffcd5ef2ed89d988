// The rules of single texts in the shared formats: paths, object keys, base64, checksums.
//
// They are tested for every entry of a manifest. Nearly every text is ASCII, and then costs one
// look at each byte.
#pragma once

#include <string_view>

namespace velmora::internal {

/// Whether `path` is absolute, has no NUL, and is canonically equal to its lexically standardised
/// form (LexicalPath.h). The "/" at the beginning must be a whole character. Reads no file.
[[nodiscard]] bool isCanonicalAbsolutePath(std::string_view path);

/// Whether `key` consists of components that are neither empty nor "." nor ".." (by canonical
/// equivalence), and has no NUL. Only a "/" that is a whole character separates components.
[[nodiscard]] bool isSafeRelativeObjectKey(std::string_view key);

/// Whether `text` is base64 (RFC 4648, section 4) with padding and no other byte. The unused bits
/// of the last digit may have any value. The empty text is base64.
[[nodiscard]] bool isStandardBase64(std::string_view text);

/// Whether `text` consists of 64 hexadecimal digits of either case.
[[nodiscard]] bool isSHA256Hex(std::string_view text);

}  // namespace velmora::internal

// Strings of JSON with their escapes (RFC 8259, section 7).
#pragma once

#include "text/ByteVector.h"

#include <cstddef>
#include <optional>
#include <span>
#include <string_view>

namespace velmora::internal {

/// Resolves in place the escapes of `content`, the bytes between the quotes of a string. Afterwards
/// the resolved text is at the end of `content`. It always fits, because no escape is shorter than
/// its text. Returns the length of the text; none for an escape that is not in RFC 8259, and for a
/// surrogate without its partner.
[[nodiscard]] std::optional<std::size_t> resolveEscapes(std::span<char> content);

/// The number of bytes that copyResolvingEscapes may write.
[[nodiscard]] constexpr std::size_t roomForResolved(std::string_view content) {
  return content.size() + byteVectorSize;
}

/// As resolveEscapes, but copies the text to `target`, which has roomForResolved(content) bytes and
/// does not overlap `content`.
[[nodiscard]] std::optional<std::size_t> copyResolvingEscapes(std::string_view content,
                                                              char* target);

}  // namespace velmora::internal

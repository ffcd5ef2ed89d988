// The strings of JSON as they lie in a document, escapes and all.
#pragma once

#include "text/ByteVector.h"

#include <cstddef>
#include <optional>
#include <span>
#include <string_view>

namespace velmora::internal {

/// Resolves the escapes of `content`, what stands between a string's quotes, in place: the text is
/// at the end of `content` afterwards, as the escapes only ever shorten it. Returns its length, or
/// none when an escape is none of RFC 8259, or half of a surrogate pair stands alone.
[[nodiscard]] std::optional<std::size_t> resolveEscapes(std::span<char> content);

/// How many bytes copyResolvingEscapes may write.
[[nodiscard]] constexpr std::size_t roomForResolved(std::string_view content) {
  return content.size() + byteVectorSize;
}

/// As resolveEscapes, but copies the text to `target`, which has room for it elsewhere.
[[nodiscard]] std::optional<std::size_t> copyResolvingEscapes(std::string_view content,
                                                              char* target);

}  // namespace velmora::internal

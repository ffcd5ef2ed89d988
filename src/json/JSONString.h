// The strings of JSON as they lie in a document, escapes and all.
#pragma once

#include <cstddef>
#include <optional>
#include <span>

namespace velmora {

/// Resolves the escapes of `content`, what stands between a string's quotes, in place: the text is
/// at the end of `content` afterwards, as the escapes only ever shorten it. Returns its length, or
/// none when an escape is none of RFC 8259, or half of a surrogate pair stands alone.
[[nodiscard]] std::optional<std::size_t> resolveEscapes(std::span<char> content);

}  // namespace velmora

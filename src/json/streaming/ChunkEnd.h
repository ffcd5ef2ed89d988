// Finds places in a document at which a chunk can end.
#pragma once

#include <cstddef>
#include <string_view>

namespace velmora::internal {

/// The last offset in `text` that is between two tokens, or in a string that has no end before it;
/// 0 when there is none. `text` begins between two tokens.
[[nodiscard]] std::size_t lastChunkEnd(std::string_view text);

/// The offset of the string that does not end in `text`.
[[nodiscard]] std::size_t unclosedStringOffset(std::string_view text);

/// The last offset in `text` that is not inside of an escape. `text` begins in a string.
[[nodiscard]] std::size_t lastOffsetOutsideOfEscapes(std::string_view text);

/// Whether a token can begin with `text`, which has no end of a token outside of strings. Only
/// strings and numbers are long; a short text may begin any token.
[[nodiscard]] bool mayBeginToken(std::string_view text);

}  // namespace velmora::internal

#include "json/streaming/TokenCursor.h"

#include "json/JSONString.h"

#include <algorithm>

namespace velmora::internal {

bool TokenCursor::takeNumber() {
  const bool isThere = isJSONNumber(tokenText());
  token_ += isThere ? 1 : 0;
  return isThere;
}

std::optional<ExactInteger> TokenCursor::takeExactInteger() {
  const std::string_view text = tokenText();
  return takeNumber() ? exactInteger(text) : std::nullopt;
}

bool TokenCursor::takeEscapes(std::uint32_t opening, std::uint32_t closing,
                              std::string_view& text) {
  if (nextBackslash_ < opening) {
    findBackslash(opening);
    if (nextBackslash_ > closing) {
      return true;
    }
  }
  char* const copy = arena_->allocate(roomForResolved(text));
  const std::optional<std::size_t> length = copyResolvingEscapes(text, copy);
  findBackslash(closing);
  if (!length.has_value()) {
    return false;
  }
  arena_->shrink(roomForResolved(text) - *length);
  text = {copy, *length};
  return true;
}

void TokenCursor::findBackslash(std::size_t from) {
  const void* const found = std::memchr(bytes_ + from, '\\', size_ - from);
  nextBackslash_ =
      found == nullptr ? size_ : static_cast<std::size_t>(static_cast<const char*>(found) - bytes_);
}

}  // namespace velmora::internal

#include "json/QuickTokens.h"

#include "json/JSONString.h"

#include <algorithm>

namespace velmora {

bool QuickTokens::takeEscapes(std::uint32_t opening, std::uint32_t closing,
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

bool QuickTokens::appendOneByOne(std::uint64_t& value, const char* digits, std::size_t count) {
  return std::all_of(digits, digits + count, [&value](char byte) {
    value = value * 10 + static_cast<std::uint64_t>(byte - '0');
    return byte >= '0' && byte <= '9';
  });
}

void QuickTokens::findBackslash(std::size_t from) {
  const void* const found = std::memchr(bytes_ + from, '\\', size_ - from);
  nextBackslash_ =
      found == nullptr ? size_ : static_cast<std::size_t>(static_cast<const char*>(found) - bytes_);
}

}  // namespace velmora

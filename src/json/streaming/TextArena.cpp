#include "json/streaming/TextArena.h"

namespace velmora::internal {

void TextArena::clear() {
  if (!blocks_.empty()) {
    blocks_.erase(blocks_.begin() + 1, blocks_.end());
    next_ = blocks_.front().bytes.get();
    free_ = blocks_.front().size;
  }
}

void TextArena::grow(std::size_t length) {
  constexpr std::size_t smallestBlock = std::size_t{16} << 10;
  const std::size_t size = std::max(length, smallestBlock);
  // Not std::make_unique, which would write to the whole block at once.
  blocks_.push_back({.bytes = std::unique_ptr<char[]>(new char[size]), .size = size});
  next_ = blocks_.back().bytes.get();
  free_ = size;
}

}  // namespace velmora::internal

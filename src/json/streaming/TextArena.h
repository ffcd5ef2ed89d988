// Memory for many short texts, which is freed all at once.
#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <string_view>
#include <vector>

namespace velmora::internal {

class TextArena {
 public:
  /// Allocates `length` bytes, which are valid until clear(). Throws std::bad_alloc.
  [[nodiscard]] char* allocate(std::size_t length) {
    if (length > free_) {
      grow(length);
    }
    char* const bytes = next_;
    next_ += length;
    free_ -= length;
    return bytes;
  }

  /// Frees the last `length` bytes of the last allocation.
  void shrink(std::size_t length) {
    next_ -= length;
    free_ += length;
  }

  [[nodiscard]] std::string_view copy(std::string_view text) {
    char* const bytes = allocate(text.size());
    std::ranges::copy(text, bytes);
    return {bytes, text.size()};
  }

  /// Frees all texts. Keeps the first block of memory for others.
  void clear();

 private:
  struct Block {
    std::unique_ptr<char[]> bytes;
    std::size_t size;
  };

  void grow(std::size_t length);

  std::vector<Block> blocks_;
  char* next_ = nullptr;
  std::size_t free_ = 0;
};

}  // namespace velmora::internal

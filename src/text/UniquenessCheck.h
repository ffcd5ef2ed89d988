// Checks whether many texts are pairwise different, without storing them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace velmora::internal {

/// Stores a hash of eight bytes per text. allDistinct() allocates about as much again, and keeps
/// that memory for its next call. Throws std::bad_alloc.
class UniquenessCheck {
 public:
  void add(std::string_view text);

  /// Whether no two of the added texts are canonically equal (Text.h). May also return false when
  /// the 64-bit hashes of different texts collide. Takes time in proportion to the number of texts.
  /// Removes all of them, unless memory runs out.
  [[nodiscard]] bool allDistinct();

  [[nodiscard]] std::size_t size() const { return hashes_.size(); }
  void clear() { hashes_.clear(); }

 private:
  std::vector<std::uint64_t> hashes_;
  std::vector<std::uint64_t> table_;
  std::vector<std::uint64_t> grouped_;
};

}  // namespace velmora::internal

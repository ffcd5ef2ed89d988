// Compares many texts with each other without storing them.
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
  /// Removes all texts. Hashes with another `salt` collide for other texts.
  void clear(std::uint64_t salt = 0) {
    hashes_.clear();
    salt_ = salt;
  }

  void add(std::string_view text);

  /// Whether each of the texts of `others`, which has the same salt, is canonically equal to one of
  /// the added texts. May also return true when 64-bit hashes collide. Uses memory of `others`.
  [[nodiscard]] bool includes(UniquenessCheck& others) const;

  /// Whether no two of the added texts are canonically equal (Text.h). May also return false when
  /// the 64-bit hashes of different texts collide. Takes time in proportion to the number of texts.
  /// Removes all of them, unless memory runs out.
  [[nodiscard]] bool allDistinct();

  [[nodiscard]] std::size_t size() const { return hashes_.size(); }

 private:
  std::uint64_t salt_ = 0;
  std::vector<std::uint64_t> hashes_;
  std::vector<std::uint64_t> table_;
  std::vector<std::uint64_t> grouped_;
};

}  // namespace velmora::internal

// Whether many texts are different from each other, without keeping them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace velmora::internal {

/// Takes eight bytes a text, twice that while it judges. Throws std::bad_alloc.
class UniquenessCheck {
 public:
  void add(std::string_view text);

  /// True if no two texts are canonically equal (Text.h). May return false for distinct texts whose
  /// 64-bit hashes collide. Takes time in proportion to their number. Clears the set.
  [[nodiscard]] bool allDistinct();

  [[nodiscard]] std::size_t size() const { return hashes_.size(); }
  void clear() { hashes_.clear(); }

 private:
  std::vector<std::uint64_t> hashes_;
  std::vector<std::uint64_t> table_;
  std::vector<std::uint64_t> grouped_;
};

}  // namespace velmora::internal

// Whether many texts are different from each other, without keeping them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace velmora {

/// Takes eight bytes a text, twice that while it judges. Throws std::bad_alloc.
class DistinctTexts {
 public:
  void add(std::string_view text);

  /// False where two texts are canonically equal (Text.h); but for one time in 2^64 or so, a pair
  /// of texts, true otherwise. Takes time in proportion to their number. There are none afterwards.
  [[nodiscard]] bool takeVerdict();

  [[nodiscard]] std::size_t size() const { return hashes_.size(); }
  void clear() { hashes_.clear(); }

 private:
  std::vector<std::uint64_t> hashes_;
  std::vector<std::uint64_t> table_;
  std::vector<std::uint64_t> grouped_;
};

}  // namespace velmora

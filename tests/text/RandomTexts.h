// Texts of random pieces, the same in each run.
#pragma once

#include <cstddef>
#include <cstdint>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace velmora::internal {

class RandomTexts {
 public:
  RandomTexts(std::vector<std::string> pieces, std::uint64_t seed)
      : pieces_(std::move(pieces)), engine_(seed) {}

  /// A text of at most `longest` pieces.
  std::string next(std::size_t longest) {
    std::string text;
    for (std::size_t length = upTo(longest); length > 0; --length) {
      text += pieces_[upTo(pieces_.size() - 1)];
    }
    return text;
  }

 private:
  std::size_t upTo(std::size_t last) {
    return std::uniform_int_distribution<std::size_t>(0, last)(engine_);
  }

  std::vector<std::string> pieces_;
  std::mt19937_64 engine_;
};

}  // namespace velmora::internal

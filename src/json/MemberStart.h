// What stands before the value of a member, kept for recognising it at a glance.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace velmora {

class MemberStart {
 public:
  /// How many bytes are looked at.
  static constexpr std::size_t glance = 48;

  /// What never stands anywhere.
  MemberStart() = default;

  /// From the comma, or the object's opening brace, to where the value begins. Never recognised
  /// when that is longer than a glance.
  explicit MemberStart(std::string_view text) {
    if (text.size() <= glance) {
      length_ = text.size();
      std::memcpy(bytes_.data(), text.data(), text.size());
      std::memset(mask_.data(), 0xFF, text.size());
    }
  }

  /// Not 0 but for what never stands anywhere.
  [[nodiscard]] std::size_t length() const { return length_; }

  /// Whether it stands at `text`, of which a glance can be read.
  [[nodiscard]] bool isAt(const char* text) const {
    const Block first = difference(text, 0) | difference(text, 1);
    return isZero(first) && (length_ <= 2 * sizeof(Block) || isZero(difference(text, 2)));
  }

 private:
  /// Sixteen bytes at a time.
  using Block [[gnu::vector_size(16)]] = std::uint64_t;

  [[nodiscard]] static bool isZero(Block block) { return (block[0] | block[1]) == 0; }

  [[nodiscard]] Block difference(const char* text, std::size_t block) const {
    Block there;
    std::memcpy(&there, text + block * sizeof there, sizeof there);
    return (there ^ bytes_[block]) & mask_[block];
  }

  std::array<Block, glance / sizeof(Block)> bytes_ = {};
  std::array<Block, glance / sizeof(Block)> mask_ = {};
  std::size_t length_ = 0;
};

}  // namespace velmora

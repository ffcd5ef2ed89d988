// Finds a text among the keys of a record in a few instructions.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace velmora::internal {

/// A perfect hash table of the keys of a record. The compiler searches for a multiplier without
/// collisions.
template <std::size_t count>
class KeyTable {
 public:
  static constexpr std::size_t none = count;

  /// `keys` are distinct and not empty.
  explicit consteval KeyTable(const std::array<std::string_view, count>& keys) : keys_(keys) {
    while (!fillPlaces()) {
      ++multiplier_;
    }
  }

  /// The index of `key` among the keys, or `none`. Compares bytes.
  [[nodiscard]] constexpr std::size_t find(std::string_view key) const {
    if (key.empty()) {
      return none;
    }
    const std::size_t index = places_[place(key)];
    return index != none && keys_[index] == key ? index : none;
  }

 private:
  /// A power of two that is large enough to find a multiplier quickly.
  static constexpr std::size_t placeCount = 512;
  static_assert(count < 64);

  [[nodiscard]] constexpr std::size_t place(std::string_view key) const {
    const auto byteAt = [key](std::size_t index) -> std::uint32_t {
      return static_cast<unsigned char>(key[index]);
    };
    const std::uint32_t mixed = byteAt(0) + (byteAt(key.size() / 2) << 8) +
                                (byteAt(key.size() - 1) << 16) +
                                (static_cast<std::uint32_t>(key.size()) << 24);
    return (mixed * multiplier_) >> 23;
  }

  consteval bool fillPlaces() {
    places_.fill(none);
    for (std::size_t index = 0; index < count; ++index) {
      std::uint8_t& taken = places_[place(keys_[index])];
      if (taken != none) {
        return false;
      }
      taken = static_cast<std::uint8_t>(index);
    }
    return true;
  }

  std::array<std::string_view, count> keys_;
  std::array<std::uint8_t, placeCount> places_ = {};
  std::uint32_t multiplier_ = 0x9E3779B1;
};

}  // namespace velmora::internal

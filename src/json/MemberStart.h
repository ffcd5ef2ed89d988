// What stands before the value of a member, kept for recognising it at a glance.
#pragma once

#include "text/ByteVector.h"

#include <array>
#include <cstddef>
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
    return !isAnySet(difference(text, 0) | difference(text, 1)) &&
           (length_ <= 2 * byteVectorSize || !isAnySet(difference(text, 2)));
  }

 private:
  using Vectors = std::array<ByteVector, glance / byteVectorSize>;

  [[nodiscard]] ByteVector difference(const char* text, std::size_t index) const {
    return (byteVectorAt(text + index * byteVectorSize) ^ bytes_[index]) & mask_[index];
  }

  Vectors bytes_ = {};
  Vectors mask_ = {};
  std::size_t length_ = 0;
};

}  // namespace velmora

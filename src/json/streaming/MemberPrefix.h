// The bytes before the value of a member, stored so that a few vector comparisons recognise them.
#pragma once

#include "text/ByteVector.h"

#include <array>
#include <cstddef>
#include <cstring>
#include <string_view>

namespace velmora::internal {

class MemberPrefix {
 public:
  /// The longest prefix that can be recognised, in bytes.
  static constexpr std::size_t maxLength = 48;

  /// A prefix that cannot be recognised.
  MemberPrefix() = default;

  /// `text` begins at the comma or the opening brace, and ends before the value.
  explicit MemberPrefix(std::string_view text) {
    if (text.size() <= maxLength) {
      length_ = text.size();
      std::memcpy(bytes_.data(), text.data(), text.size());
      std::memset(mask_.data(), 0xFF, text.size());
    }
  }

  /// 0 for a prefix that cannot be recognised.
  [[nodiscard]] std::size_t length() const { return length_; }

  /// Whether `text`, which has `maxLength` bytes or more, begins with the prefix.
  [[nodiscard]] bool isAt(const char* text) const {
    return !isAnySet(difference(text, 0) | difference(text, 1)) &&
           (length_ <= 2 * byteVectorSize || !isAnySet(difference(text, 2)));
  }

 private:
  using Vectors = std::array<ByteVector, maxLength / byteVectorSize>;

  [[nodiscard]] ByteVector difference(const char* text, std::size_t index) const {
    return (byteVectorAt(text + index * byteVectorSize) ^ bytes_[index]) & mask_[index];
  }

  Vectors bytes_ = {};
  Vectors mask_ = {};
  std::size_t length_ = 0;
};

}  // namespace velmora::internal

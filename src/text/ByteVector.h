// Sixteen bytes of a text at once, for rules that judge each byte alike: the vectors that gcc and
// clang have in common, which every processor that we build for has registers for.
//
// A comparison gives a vector, too: all bits of a byte are set where it holds, none where not. So
// what is wrong in a text is gathered without a branch, and asked for once at the end.
#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace velmora::internal {

using ByteVector = std::uint8_t __attribute__((vector_size(16)));

constexpr std::size_t byteVectorSize = sizeof(ByteVector);

/// The vector of the sixteen bytes from `bytes` on.
[[nodiscard]] inline ByteVector byteVectorAt(const char* bytes) {
  ByteVector vector{};
  std::memcpy(&vector, bytes, sizeof vector);
  return vector;
}

/// Whether any bit is set.
[[nodiscard]] inline bool isAnySet(ByteVector vector) {
  std::array<std::uint64_t, 2> halves{};
  std::memcpy(halves.data(), &vector, sizeof vector);
  return (halves[0] | halves[1]) != 0;
}

/// How many bytes come before the first one of which all bits are set; all where none is. The
/// others have no bit set.
[[nodiscard]] inline std::size_t bytesBeforeFirst(ByteVector marks) {
  std::array<std::uint64_t, 2> halves{};
  std::memcpy(halves.data(), &marks, sizeof marks);
  const auto bytesBefore = [](std::uint64_t half) {
    const int bits = std::endian::native == std::endian::little ? std::countr_zero(half)
                                                                : std::countl_zero(half);
    return static_cast<std::size_t>(bits) / 8;
  };
  return halves[0] != 0 ? bytesBefore(halves[0]) : sizeof(std::uint64_t) + bytesBefore(halves[1]);
}

[[nodiscard]] inline ByteVector areEqualTo(ByteVector vector, std::uint8_t byte) {
  return reinterpret_cast<ByteVector>(vector == byte);
}

/// Where the bytes lie from `first` to `last`, which are at most 127 apart.
[[nodiscard]] inline ByteVector areInRange(ByteVector vector, std::uint8_t first,
                                           std::uint8_t last) {
  // Moved to where the signed numbers begin, as not every processor compares unsigned ones.
  using SignedVector = std::int8_t __attribute__((vector_size(16)));
  constexpr int least = -128;
  const auto moved =
      reinterpret_cast<SignedVector>(vector + static_cast<std::uint8_t>(128 - first));
  return reinterpret_cast<ByteVector>(moved < static_cast<std::int8_t>(least + last - first + 1));
}

/// Whether `judge`, called with vectors that together are all bytes of `text`, sets every bit of
/// each. A text that is shorter than a vector is followed by `padding`. Reads nothing but the text.
/// `judge` should be a function object: not every compiler sees through a pointer.
template <typename Judge>
[[nodiscard]] bool holdsForEachByte(std::string_view text, char padding, Judge judge) {
  if (text.size() < byteVectorSize) {
    std::array<char, byteVectorSize> padded{};
    padded.fill(padding);
    std::ranges::copy(text, padded.begin());
    return !isAnySet(~judge(byteVectorAt(padded.data())));
  }
  const char* const last = text.data() + text.size() - byteVectorSize;
  // The last vector may overlap the one before.
  ByteVector verdict = judge(byteVectorAt(last));
  for (const char* bytes = text.data(); bytes < last; bytes += byteVectorSize) {
    verdict &= judge(byteVectorAt(bytes));
  }
  return !isAnySet(~verdict);
}

}  // namespace velmora::internal

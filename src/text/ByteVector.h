// Vectors of sixteen bytes, for checks that apply the same rule to every byte of a text. They use
// the vector extension that gcc and clang share; every supported processor has such registers.
//
// A comparison yields a vector, too: all bits of a byte are set where it holds, and none elsewhere.
// A check therefore collects errors without a branch, and tests for them once at the end.
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

/// Loads the sixteen bytes that begin at `bytes`; no alignment is needed.
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

/// The number of bytes before the first one with all bits set; `byteVectorSize` when there is none.
/// Each byte of `marks` must have all bits set or none.
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

/// Marks the bytes from `first` to `last`, which are at most 127 apart.
[[nodiscard]] inline ByteVector areInRange(ByteVector vector, std::uint8_t first,
                                           std::uint8_t last) {
  // Moves `first` to -128 for a signed comparison: not every processor compares unsigned bytes.
  using SignedVector = std::int8_t __attribute__((vector_size(16)));
  constexpr int least = -128;
  const auto moved =
      reinterpret_cast<SignedVector>(vector + static_cast<std::uint8_t>(128 - first));
  return reinterpret_cast<ByteVector>(moved < static_cast<std::int8_t>(least + last - first + 1));
}

/// Whether `judge` sets every bit of each vector that it gets. These vectors cover all bytes of
/// `text`, some of them twice. A text shorter than a vector is filled up with `padding`. Reads no
/// byte outside of the text. `judge` should be a function object: not every compiler inlines a call
/// through a pointer.
template <typename Judge>
[[nodiscard]] bool holdsForEachByte(std::string_view text, char padding, Judge judge) {
  if (text.size() < byteVectorSize) {
    std::array<char, byteVectorSize> padded{};
    padded.fill(padding);
    std::ranges::copy(text, padded.begin());
    return !isAnySet(~judge(byteVectorAt(padded.data())));
  }
  const char* const last = text.data() + text.size() - byteVectorSize;
  // The last vector may overlap the previous one.
  ByteVector verdict = judge(byteVectorAt(last));
  for (const char* bytes = text.data(); bytes < last; bytes += byteVectorSize) {
    verdict &= judge(byteVectorAt(bytes));
  }
  return !isAnySet(~verdict);
}

}  // namespace velmora::internal

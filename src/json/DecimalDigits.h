// The value of a row of decimal digits, eight at a time.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace velmora::internal {

struct DecimalValue {
  std::uint64_t value = 0;
  /// False where a byte is no digit, or the value takes more than 64 bits. `value` means nothing
  /// then.
  bool isValid = false;
};

inline constexpr std::size_t digitsInWord = 8;

/// The value of `count` digits, from 1 to 8, where 8 bytes can be read.
///
/// The bytes are loaded as one word. An exclusive or with eight '0' leaves the value of each digit;
/// a byte that is no digit has a bit in its upper half then, or gets one when 6 is added. A shift
/// drops the bytes after the digits, and puts zeros before them. Three multiplications join
/// neighbours: digits to pairs, pairs to fours, fours to the value.
[[nodiscard]] inline DecimalValue valueOfDigitsInWord(const char* digits, std::size_t count) {
  constexpr std::uint64_t each = 0x0101010101010101;
  std::uint64_t word = 0;
  std::memcpy(&word, digits, sizeof word);
  if constexpr (std::endian::native == std::endian::big) {
    word = __builtin_bswap64(word);
  }
  word = (word ^ each * '0') << (8 * (digitsInWord - count));
  const bool areDigits = ((word | (word + each * 6)) & each * 0xF0) == 0;
  word = word * (10 * 256 + 1) >> 8;
  word = (word & 0x00FF00FF00FF00FF) * (100 * 65536 + 1) >> 16;
  word = (word & 0x0000FFFF0000FFFF) * (10000 * (std::uint64_t{1} << 32) + 1) >> 32;
  return {.value = word, .isValid = areDigits};
}

/// The value of `count` digits, of which there may be any number. Reads nothing else. More
/// than 20 digits are not valid, nor are 20 with a leading zero.
[[nodiscard]] DecimalValue valueOfDigits(const char* digits, std::size_t count);

}  // namespace velmora::internal

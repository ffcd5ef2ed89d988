// The exact value of JSON numbers that are integers, without floating point.
#pragma once

#include <concepts>
#include <cstdint>
#include <limits>
#include <optional>
#include <string_view>

namespace velmora::internal {

/// An integer whose magnitude has at most 64 bits.
struct ExactInteger {
  bool isNegative = false;
  std::uint64_t magnitude = 0;

  bool operator==(const ExactInteger&) const = default;
};

/// Whether `text` is a number of RFC 8259.
[[nodiscard]] bool isJSONNumber(std::string_view text);

/// The exact value of `number`, which must be a number of RFC 8259 (4, 4.0, 40e-1; -0 is 0). None
/// when it has a fraction, or when its magnitude takes more than 64 bits. Takes time in proportion
/// to the digits, whatever the exponent is.
[[nodiscard]] std::optional<ExactInteger> exactInteger(std::string_view number);

/// The value as an `Integer`; none when the type cannot represent it.
template <std::integral Integer>
[[nodiscard]] constexpr std::optional<Integer> checkedCast(ExactInteger value) {
  constexpr auto largest = static_cast<std::uint64_t>(std::numeric_limits<Integer>::max());
  if (!value.isNegative) {
    return value.magnitude <= largest ? std::optional(static_cast<Integer>(value.magnitude))
                                      : std::nullopt;
  }
  if constexpr (std::signed_integral<Integer>) {
    if (value.magnitude <= largest + 1) {
      return static_cast<Integer>(-value.magnitude);
    }
  }
  return std::nullopt;
}

}  // namespace velmora::internal

// Integers as JSON writes them, without a detour through floating point.
#pragma once

#include <concepts>
#include <cstdint>
#include <limits>
#include <optional>
#include <string_view>

namespace velmora::internal {

/// A whole number that is not wider than 64 bits: its sign and its size.
struct ExactInteger {
  bool isNegative = false;
  std::uint64_t magnitude = 0;

  bool operator==(const ExactInteger&) const = default;
};

/// Whether `text` is a number of RFC 8259.
[[nodiscard]] bool isJSONNumber(std::string_view text);

/// The exact value of a number of RFC 8259, however written (4, 4.0, 40e-1; -0 is 0): none when it
/// has a fraction or its magnitude takes more than 64 bits. Time is linear in the digits, whatever
/// the exponent. `number` is known to be one.
[[nodiscard]] std::optional<ExactInteger> exactInteger(std::string_view number);

/// The value as an `Integer`, or none when that is too narrow or has no sign.
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

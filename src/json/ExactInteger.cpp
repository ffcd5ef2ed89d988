#include "json/ExactInteger.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <cstddef>
#include <cstring>
#include <string>

namespace velmora {

namespace {

constexpr bool isDigit(char character) { return character >= '0' && character <= '9'; }

/// Takes the digits at the beginning of `text` away from it and returns them.
std::string_view takeDigits(std::string_view& text) {
  const auto end = std::ranges::find_if_not(text, isDigit);
  const std::string_view digits(text.begin(), end);
  text.remove_prefix(digits.size());
  return digits;
}

bool take(std::string_view& text, char character) {
  if (!text.starts_with(character)) {
    return false;
  }
  text.remove_prefix(1);
  return true;
}

struct NumberParts {
  bool isNegative = false;
  std::string_view wholeDigits;
  std::string_view fractionDigits;
  bool hasNegativeExponent = false;
  std::string_view exponentDigits;
};

/// None when `text` is not a number.
std::optional<NumberParts> partsOf(std::string_view text) {
  NumberParts parts;
  parts.isNegative = take(text, '-');
  parts.wholeDigits = takeDigits(text);
  if (parts.wholeDigits.empty() ||
      (parts.wholeDigits.size() > 1 && parts.wholeDigits.front() == '0')) {
    return std::nullopt;
  }
  if (take(text, '.')) {
    parts.fractionDigits = takeDigits(text);
    if (parts.fractionDigits.empty()) {
      return std::nullopt;
    }
  }
  if (take(text, 'e') || take(text, 'E')) {
    parts.hasNegativeExponent = take(text, '-');
    if (!parts.hasNegativeExponent) {
      static_cast<void>(take(text, '+'));
    }
    parts.exponentDigits = takeDigits(text);
    if (parts.exponentDigits.empty()) {
      return std::nullopt;
    }
  }
  return text.empty() ? std::optional(parts) : std::nullopt;
}

/// Beyond this, an exponent is as good as any other: no text has so many digits.
constexpr std::int64_t maxExponent = std::int64_t{1} << 40;

std::int64_t exponentOf(const NumberParts& parts) {
  std::int64_t exponent = 0;
  for (const char digit : parts.exponentDigits) {
    exponent = std::min(exponent * 10 + (digit - '0'), maxExponent);
  }
  return parts.hasNegativeExponent ? -exponent : exponent;
}

constexpr std::size_t maxDigits = std::numeric_limits<std::uint64_t>::digits10 + 1;

std::optional<std::uint64_t> magnitudeOf(const std::string& digits) {
  std::uint64_t magnitude = 0;
  const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), magnitude);
  return result.ec == std::errc() ? std::optional(magnitude) : std::nullopt;
}

std::optional<std::uint64_t> scaledMagnitude(const NumberParts& parts) {
  std::string digits(parts.wholeDigits);
  digits += parts.fractionDigits;
  const std::size_t last = digits.find_last_not_of('0');
  if (last == std::string::npos) {
    return 0;
  }
  const auto droppedZeros = static_cast<std::int64_t>(digits.size() - 1 - last);
  const std::int64_t zeros =
      exponentOf(parts) + droppedZeros - static_cast<std::int64_t>(parts.fractionDigits.size());
  digits.erase(last + 1);
  digits.erase(0, digits.find_first_not_of('0'));
  if (zeros < 0 || zeros > static_cast<std::int64_t>(maxDigits)) {
    return std::nullopt;
  }
  digits.append(static_cast<std::size_t>(zeros), '0');
  return digits.size() <= maxDigits ? magnitudeOf(digits) : std::nullopt;
}

/// So many digits never take more than 64 bits.
constexpr std::size_t safeDigits = std::numeric_limits<std::uint64_t>::digits10;

/// The value of eight digits that begin at `text`; none when one of them is no digit.
std::optional<std::uint64_t> valueOfEightDigits(const char* text) {
  std::uint64_t bytes = 0;
  std::memcpy(&bytes, text, sizeof bytes);
  constexpr std::uint64_t zeros = 0x3030303030303030;
  // A digit has a high half of 3, also when 6 is added to it.
  constexpr std::uint64_t highHalves = 0xF0F0F0F0F0F0F0F0;
  if ((bytes & highHalves) != zeros || ((bytes + 0x0606060606060606) & highHalves) != zeros) {
    return std::nullopt;
  }
  // Neighbours are joined to two digits, these to four, these to eight, all at once.
  bytes -= zeros;
  bytes = (bytes * 10 + (bytes >> 8)) & 0x00FF00FF00FF00FF;
  bytes = (bytes * 100 + (bytes >> 16)) & 0x0000FFFF0000FFFF;
  return (bytes * 10000 + (bytes >> 32)) & 0x00000000FFFFFFFF;
}

/// The value of `text` when it is nothing but digits, and not too many of them.
std::optional<std::uint64_t> valueOfDigits(std::string_view text) {
  if (text.size() > safeDigits) {
    return std::nullopt;
  }
  std::uint64_t value = 0;
  if constexpr (std::endian::native == std::endian::little) {
    constexpr std::size_t step = 8;
    while (text.size() >= step) {
      const std::optional<std::uint64_t> eight = valueOfEightDigits(text.data());
      if (!eight.has_value()) {
        return std::nullopt;
      }
      value = value * 100'000'000 + *eight;
      text.remove_prefix(step);
    }
  }
  for (const char digit : text) {
    if (!isDigit(digit)) {
      return std::nullopt;
    }
    value = value * 10 + static_cast<std::uint64_t>(digit - '0');
  }
  return value;
}

}  // namespace

bool isJSONNumber(std::string_view text) {
  // Most numbers are nothing but digits.
  const auto end = std::ranges::find_if_not(text, isDigit);
  if (end == text.end() && !text.empty() && (text.front() != '0' || text.size() == 1)) {
    return true;
  }
  return partsOf(text).has_value();
}

std::optional<ExactInteger> exactInteger(std::string_view number) {
  const bool isNegative = number.starts_with('-');
  std::optional<std::uint64_t> magnitude = valueOfDigits(number.substr(isNegative ? 1 : 0));
  if (!magnitude.has_value()) {
    const std::optional<NumberParts> parts = partsOf(number);
    magnitude = parts.has_value() ? scaledMagnitude(*parts) : std::nullopt;
  }
  if (!magnitude.has_value()) {
    return std::nullopt;
  }
  return ExactInteger{.isNegative = isNegative && *magnitude != 0, .magnitude = *magnitude};
}

}  // namespace velmora

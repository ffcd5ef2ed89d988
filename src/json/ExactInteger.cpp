#include "json/ExactInteger.h"

#include "json/DecimalDigits.h"

#include <algorithm>
#include <cstddef>
#include <string>

namespace velmora::internal {

namespace {

constexpr bool isDigit(char character) { return character >= '0' && character <= '9'; }

/// Removes the digits at the beginning of `text` and returns them.
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

/// A larger exponent makes no difference, because no text has so many digits.
constexpr std::int64_t maxExponent = std::int64_t{1} << 40;

std::int64_t exponentOf(const NumberParts& parts) {
  std::int64_t exponent = 0;
  for (const char digit : parts.exponentDigits) {
    exponent = std::min(exponent * 10 + (digit - '0'), maxExponent);
  }
  return parts.hasNegativeExponent ? -exponent : exponent;
}

constexpr std::size_t maxDigits = std::numeric_limits<std::uint64_t>::digits10 + 1;

std::optional<std::uint64_t> magnitudeOf(std::string_view digits) {
  const DecimalValue magnitude = valueOfDigits(digits.data(), digits.size());
  return magnitude.isValid ? std::optional(magnitude.value) : std::nullopt;
}

/// The value of a number with a fraction or an exponent, which move its digits: 40e-1 is 4.
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
  return magnitudeOf(digits);
}

}  // namespace

bool isJSONNumber(std::string_view text) {
  // Most numbers consist of digits only.
  const auto end = std::ranges::find_if_not(text, isDigit);
  if (end == text.end() && !text.empty() && (text.front() != '0' || text.size() == 1)) {
    return true;
  }
  return partsOf(text).has_value();
}

std::optional<ExactInteger> exactInteger(std::string_view number) {
  const bool isNegative = number.starts_with('-');
  std::optional<std::uint64_t> magnitude = magnitudeOf(number.substr(isNegative ? 1 : 0));
  if (!magnitude.has_value()) {
    const std::optional<NumberParts> parts = partsOf(number);
    magnitude = parts.has_value() ? scaledMagnitude(*parts) : std::nullopt;
  }
  if (!magnitude.has_value()) {
    return std::nullopt;
  }
  return ExactInteger{.isNegative = isNegative && *magnitude != 0, .magnitude = *magnitude};
}

}  // namespace velmora::internal

#include "json/DecimalDigits.h"

#include <algorithm>
#include <array>

namespace velmora::internal {

namespace {

constexpr std::size_t maxDigits = 20;

DecimalValue followedByEight(DecimalValue high, const char* eightDigits) {
  const DecimalValue low = valueOfDigitsInWord(eightDigits, digitsInWord);
  return {.value = high.value * 100'000'000 + low.value, .isValid = high.isValid && low.isValid};
}

/// Up to 8 digits without a read beyond them.
DecimalValue valueOfFewDigits(const char* digits, std::size_t count) {
  std::array<char, digitsInWord> word{};
  std::copy_n(digits, count, word.begin());
  return valueOfDigitsInWord(word.data(), count);
}

}  // namespace

DecimalValue valueOfDigits(const char* digits, std::size_t count) {
  if (count == 0 || count > maxDigits) {
    return {};
  }
  if (count <= digitsInWord) {
    return valueOfFewDigits(digits, count);
  }
  const char* const last = digits + count - digitsInWord;
  if (count <= 2 * digitsInWord) {
    return followedByEight(valueOfDigitsInWord(digits, count - digitsInWord), last);
  }
  const char* const middle = last - digitsInWord;
  DecimalValue all = followedByEight(valueOfDigitsInWord(digits, count - 2 * digitsInWord), middle);
  all = followedByEight(all, last);
  // Twenty digits fit into 64 bits up to 18446744073709551615. A larger number begins with another
  // digit than 1, or has wrapped round to less than 10^19.
  constexpr std::uint64_t leastOfMaxDigits = 10'000'000'000'000'000'000U;
  const bool fits = count < maxDigits || (*digits == '1' && all.value >= leastOfMaxDigits);
  return {.value = all.value, .isValid = all.isValid && fits};
}

}  // namespace velmora::internal

#include "json/QuickTokens.h"

#include "json/JSONString.h"

#include <algorithm>

namespace velmora {

bool QuickTokens::takeEscapes(std::uint32_t opening, std::uint32_t closing,
                              std::string_view& text) {
  if (nextBackslash_ < opening) {
    findBackslash(opening);
    if (nextBackslash_ > closing) {
      return true;
    }
  }
  char* const copy = arena_->allocate(roomForResolved(text));
  const std::optional<std::size_t> length = copyResolvingEscapes(text, copy);
  findBackslash(closing);
  if (!length.has_value()) {
    return false;
  }
  arena_->shrink(roomForResolved(text) - *length);
  text = {copy, *length};
  return true;
}

QuickTokens::Magnitude QuickTokens::manyDigits(const char* digits, std::size_t count) const {
  static constexpr std::uint64_t powersOfTen[digitsAtOnce + 1] = {
      1, 10, 100, 1'000, 10'000, 100'000, 1'000'000, 10'000'000, 100'000'000};
  constexpr std::size_t mostDigits = 20;
  constexpr std::uint64_t leastOfMostDigits = 10'000'000'000'000'000'000U;
  if (count > mostDigits) {
    return {};
  }
  // What has most digits and does not fit begins with another one than 1, or comes out as less.
  const bool mayNotFit = count == mostDigits;
  const char first = *digits;
  Magnitude all{.isValid = true};
  while (count > 0) {
    const std::size_t some = std::min(count, digitsAtOnce);
    const Magnitude next = fewDigits(digits, some);
    all.value = all.value * powersOfTen[some] + next.value;
    all.isValid = all.isValid && next.isValid;
    digits += some;
    count -= some;
  }
  all.isValid = all.isValid && (!mayNotFit || (first == '1' && all.value >= leastOfMostDigits));
  return all;
}

QuickTokens::Magnitude QuickTokens::digitsOneByOne(const char* digits, std::size_t count) {
  Magnitude all{.isValid = true};
  for (const char digit : std::string_view(digits, count)) {
    all.value = all.value * 10 + static_cast<std::uint64_t>(digit - '0');
    all.isValid = all.isValid && digit >= '0' && digit <= '9';
  }
  return all;
}

void QuickTokens::findBackslash(std::size_t from) {
  const void* const found = std::memchr(bytes_ + from, '\\', size_ - from);
  nextBackslash_ =
      found == nullptr ? size_ : static_cast<std::size_t>(static_cast<const char*>(found) - bytes_);
}

}  // namespace velmora

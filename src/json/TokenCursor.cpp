#include "json/TokenCursor.h"

#include "json/JSONString.h"

#include <algorithm>

namespace velmora {

bool TokenCursor::takeEscapes(std::uint32_t opening, std::uint32_t closing,
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

TokenCursor::Magnitude TokenCursor::manyDigits(const char* digits, std::size_t count) {
  constexpr std::size_t maxDigits = 20;
  constexpr std::uint64_t leastOfMostDigits = 10'000'000'000'000'000'000U;
  if (count > maxDigits) {
    return {};
  }
  const auto followedByEight = [](Magnitude high, const char* eightDigits) {
    const Magnitude low = digitsInWord(eightDigits, digitsAtOnce);
    return Magnitude{.value = high.value * 100'000'000 + low.value,
                     .isValid = high.isValid && low.isValid};
  };
  const char* const last = digits + count - digitsAtOnce;
  if (count <= 2 * digitsAtOnce) {
    return followedByEight(digitsInWord(digits, count - digitsAtOnce), last);
  }
  const char* const middle = last - digitsAtOnce;
  Magnitude all = followedByEight(digitsInWord(digits, count - 2 * digitsAtOnce), middle);
  all = followedByEight(all, last);
  // What has most digits and does not fit begins with another one than 1, or comes out as less.
  const bool fits = count < maxDigits || (*digits == '1' && all.value >= leastOfMostDigits);
  return {.value = all.value, .isValid = all.isValid && fits};
}

TokenCursor::Magnitude TokenCursor::digitsOneByOne(const char* digits, std::size_t count) {
  Magnitude all{.isValid = true};
  for (const char digit : std::string_view(digits, count)) {
    all.value = all.value * 10 + static_cast<std::uint64_t>(digit - '0');
    all.isValid = all.isValid && digit >= '0' && digit <= '9';
  }
  return all;
}

void TokenCursor::findBackslash(std::size_t from) {
  const void* const found = std::memchr(bytes_ + from, '\\', size_ - from);
  nextBackslash_ =
      found == nullptr ? size_ : static_cast<std::size_t>(static_cast<const char*>(found) - bytes_);
}

}  // namespace velmora

// Takes the tokens of a document one by one.
#pragma once

#include "json/DecimalDigits.h"
#include "json/ExactInteger.h"
#include "json/TokenFinder.h"
#include "json/streaming/TextArena.h"
#include "text/ByteVector.h"
#include "text/Text.h"

#include <algorithm>
#include <array>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <optional>
#include <string_view>

namespace velmora::internal {

/// The bytes before the value of a member, stored so that a few vector comparisons recognise them.
class MemberPrefix {
 public:
  /// The longest prefix that can be recognised, in bytes.
  static constexpr std::size_t maxLength = 48;

  /// A prefix of length 0, for which isAt() must not be called.
  MemberPrefix() = default;

  /// `text` begins at the comma or the opening brace, and ends before the value.
  explicit MemberPrefix(std::string_view text) {
    if (text.size() <= maxLength) {
      length_ = text.size();
      std::memcpy(bytes_.data(), text.data(), text.size());
      std::memset(mask_.data(), 0xFF, text.size());
    }
  }

  /// 0 for a prefix that cannot be recognised.
  [[nodiscard]] std::size_t length() const { return length_; }

  /// Whether `text`, which has `maxLength` bytes or more, begins with the prefix.
  [[nodiscard]] bool isAt(const char* text) const {
    return !isAnySet(difference(text, 0) | difference(text, 1)) &&
           (length_ <= 2 * byteVectorSize || !isAnySet(difference(text, 2)));
  }

 private:
  using Vectors = std::array<ByteVector, maxLength / byteVectorSize>;

  [[nodiscard]] ByteVector difference(const char* text, std::size_t index) const {
    return (byteVectorAt(text + index * byteVectorSize) ^ bytes_[index]) & mask_[index];
  }

  Vectors bytes_ = {};
  Vectors mask_ = {};
  std::size_t length_ = 0;
};

/// Each `take` returns whether it took the token. A failed take of punctuation or of a member's
/// start leaves the cursor unchanged. After any other failed take the cursor is invalid, and only
/// `atEnd()` may be called.
class TokenCursor {
 public:
  /// `tokens` are those of `text` (TokenFinder.h), which a NUL follows. The texts that are taken
  /// refer to `text`, or to `arena` if they had escapes.
  TokenCursor(std::string_view text, const std::uint32_t* tokens, TextArena& arena)
      : bytes_(text.data()),
        size_(text.size()),
        endOfFullPrefixes_(text.size() - std::min(text.size(), MemberPrefix::maxLength - 1)),
        token_(tokens),
        arena_(&arena) {
    findBackslash(0);
  }

  [[nodiscard]] bool atEnd() const { return *token_ == size_; }

  /// Whether the next token begins with `byte`, which is not NUL.
  [[nodiscard]] bool isNext(char byte) const { return bytes_[*token_] == byte; }

  /// A place to which the cursor can go back.
  struct Position {
    const std::uint32_t* token;
    std::size_t nextBackslash;
  };
  [[nodiscard]] Position save() const { return {token_, nextBackslash_}; }
  void restore(const Position& position) {
    token_ = position.token;
    nextBackslash_ = position.nextBackslash;
  }

  /// The beginning of the next token, and the number of bytes from there to the end of the text.
  [[nodiscard]] const char* position() const { return bytes_ + *token_; }
  [[nodiscard]] std::size_t remaining() const { return size_ - *token_; }

  /// Takes the three tokens before the value of a member, if they are exactly `start`. May fail
  /// near the end of the text.
  bool take(const MemberPrefix& start) {
    const bool isThere = token_[3] - token_[0] == start.length() && *token_ < endOfFullPrefixes_ &&
                         start.isAt(position());
    token_ += isThere ? 3 : 0;
    return isThere;
  }

  bool take(char punctuation) {
    const bool isThere = isNext(punctuation);
    token_ += isThere ? 1 : 0;
    return isThere;
  }

  bool takeNull() { return takeLiteral("null"); }

  bool take(bool& boolean) {
    boolean = isNext('t');
    return boolean ? takeLiteral("true") : takeLiteral("false");
  }

  /// Takes a number of any value.
  bool takeNumber();

  template <std::integral Integer>
  bool take(Integer& integer) {
    const bool isNegative = isNext('-');
    const std::uint32_t* const number = token_;
    const DecimalValue magnitude = takeMagnitude(isNegative);
    if (!magnitude.isValid) {
      token_ = number;
      const std::optional<ExactInteger> exact = takeExactInteger();
      const auto fitting = exact.has_value() ? checkedCast<Integer>(*exact) : std::nullopt;
      integer = fitting.value_or(Integer());
      return fitting.has_value();
    }
    constexpr auto largest = static_cast<std::uint64_t>(std::numeric_limits<Integer>::max());
    if (isNegative) {
      constexpr std::uint64_t furthestBelowZero = std::signed_integral<Integer> ? largest + 1 : 0;
      integer = static_cast<Integer>(-magnitude.value);
      return magnitude.value <= furthestBelowZero;
    }
    integer = static_cast<Integer>(magnitude.value);
    return magnitude.value <= largest;
  }

  /// The text refers to the document or to the arena.
  bool take(std::string_view& text) {
    if (!isNext('"')) {
      return false;
    }
    const std::uint32_t opening = *token_;
    const std::uint32_t closing = endOfToken() - 1;
    text = {bytes_ + opening + 1, closing - opening - 1};
    ++token_;
    return nextBackslash_ > closing || takeEscapes(opening, closing, text);
  }

  bool take(TextView& text) {
    std::string_view bytes;
    const bool isTaken = take(bytes);
    text = TextView(bytes);
    return isTaken;
  }

  bool take(Text& text) {
    std::string_view bytes;
    const bool isTaken = take(bytes);
    text = isTaken ? Text(bytes) : Text();
    return isTaken;
  }

 private:
  [[nodiscard]] std::uint32_t endOfToken() const { return endOfJSONToken(bytes_, token_[1]); }

  /// Whether the next token is `length` bytes long.
  [[nodiscard]] bool hasLength(std::size_t length) const {
    // Most tokens are not followed by blanks.
    return token_[1] - *token_ == length || endOfToken() - *token_ == length;
  }

  template <std::size_t size>
  bool takeLiteral(const char (&literal)[size]) {
    constexpr std::size_t length = size - 1;
    const bool isThere =
        remaining() >= length && std::memcmp(position(), literal, length) == 0 && hasLength(length);
    token_ += isThere ? 1 : 0;
    return isThere;
  }

  /// The text of the next token.
  [[nodiscard]] std::string_view tokenText() const {
    return {position(), atEnd() ? 0 : endOfToken() - *token_};
  }

  /// Takes a number in any form. None if it is no integer. Not inlined, because it is rarely
  /// called.
  [[gnu::noinline]] std::optional<ExactInteger> takeExactInteger();

  DecimalValue takeMagnitude(bool isNegative) {
    if (atEnd()) {
      return {};
    }
    const char* const digits = position() + (isNegative ? 1 : 0);
    const auto count = static_cast<std::size_t>(bytes_ + endOfToken() - digits);
    if (count == 0 || (*digits == '0' && count > 1)) {
      return {};
    }
    ++token_;
    // Most numbers have few digits, and more bytes after them.
    const bool hasWord = bytes_ + size_ - digits >= static_cast<std::ptrdiff_t>(digitsInWord);
    return count <= digitsInWord && hasWord ? valueOfDigitsInWord(digits, count)
                                            : valueOfDigits(digits, count);
  }

  bool takeEscapes(std::uint32_t opening, std::uint32_t closing, std::string_view& text);
  void findBackslash(std::size_t from);

  const char* bytes_;
  std::size_t size_;
  /// MemberPrefix::maxLength bytes can be read at each smaller offset.
  std::size_t endOfFullPrefixes_;
  /// The next token.
  const std::uint32_t* token_;
  TextArena* arena_;
  /// The offset of the first backslash that is not known to have been passed.
  std::size_t nextBackslash_ = 0;
};

}  // namespace velmora::internal

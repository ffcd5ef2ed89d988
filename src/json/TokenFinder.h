// Where the tokens of JSON begin (RFC 8259): each brace, bracket, colon and comma outside of
// strings, each string's opening quote, and the first byte of each number and literal.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>

namespace velmora {

/// Why there are no tokens.
enum class TokenFault {
  none,
  /// There are none: nothing, or blanks only.
  empty,
  /// The bytes are not UTF-8 (RFC 3629).
  notUTF8,
  /// A string does not end, or holds a control character.
  brokenString,
};

/// How far a reader may look ahead at the end.
inline constexpr std::size_t tokenLookAhead = 4;

/// The tokens of a text, good until the next search.
struct FoundTokens {
  TokenFault fault = TokenFault::none;
  /// Where each begins, in order, and behind the last one `tokenLookAhead` times the length of the
  /// text. Nobody minds when they are overwritten.
  std::uint32_t* first = nullptr;
  std::size_t count = 0;
};

/// Searches one text after the other and keeps its memory between them, four bytes for each byte of
/// the longest text. One thread at a time.
class TokenFinder {
 public:
  TokenFinder();
  ~TokenFinder();
  TokenFinder(const TokenFinder&) = delete;
  TokenFinder& operator=(const TokenFinder&) = delete;
  TokenFinder(TokenFinder&&) noexcept;
  TokenFinder& operator=(TokenFinder&&) noexcept;

  /// Makes sure of UTF-8, too, and that every string ends and holds no control character; of
  /// nothing else. A backslash outside of strings belongs to a token that is none of JSON's, and
  /// the quote behind it begins no string. `text` has less than 4 GiB. Throws std::bad_alloc.
  [[nodiscard]] FoundTokens find(std::string_view text);

 private:
  class StageOne;

  std::unique_ptr<StageOne> stageOne_;
};

}  // namespace velmora

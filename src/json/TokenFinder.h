// Finds where the tokens of JSON begin (RFC 8259): each brace, bracket, colon and comma outside of
// strings, each string's opening quote, and the first byte of each number and literal.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>

namespace velmora::internal {

/// Why there are no tokens.
enum class TokenFault {
  none,
  /// The text is empty, or has blanks only.
  empty,
  /// The bytes are not UTF-8 (RFC 3629).
  notUTF8,
  /// A string does not end, or holds a control character.
  brokenString,
};

/// How many tokens a reader may look ahead.
inline constexpr std::size_t tokenLookAhead = 4;

/// The tokens of a text, valid until the next search.
struct FoundTokens {
  TokenFault fault = TokenFault::none;
  /// Offsets in order, followed by `tokenLookAhead` sentinels, each equal to `text.size()`. The
  /// caller may overwrite them.
  std::uint32_t* first = nullptr;
  std::size_t count = 0;
};

/// The offset of the end of a token, which is followed by blanks only up to the token at
/// `nextToken`.
[[nodiscard]] inline std::uint32_t endOfJSONToken(const char* bytes, std::uint32_t nextToken) {
  const auto isBlank = [](char byte) {
    // The first comparison mostly decides: outside of strings no other byte of JSON is that small.
    return static_cast<unsigned char>(byte) <= ' ' &&
           (byte == ' ' || byte == '\n' || byte == '\r' || byte == '\t');
  };
  std::uint32_t end = nextToken;
  while (isBlank(bytes[end - 1])) {
    --end;
  }
  return end;
}

/// Searches one text after the other. Keeps its memory between them: four bytes for each byte of
/// the longest text. One thread at a time.
class TokenFinder {
 public:
  TokenFinder();
  ~TokenFinder();
  TokenFinder(const TokenFinder&) = delete;
  TokenFinder& operator=(const TokenFinder&) = delete;
  TokenFinder(TokenFinder&&) noexcept;
  TokenFinder& operator=(TokenFinder&&) noexcept;

  /// Checks that the text is UTF-8, and that every string ends and has no control character;
  /// nothing else. A backslash outside of a string belongs to a token that JSON does not have, and
  /// the quote after it begins no string. `text` has less than 4 GiB. Throws std::bad_alloc.
  [[nodiscard]] FoundTokens find(std::string_view text);

 private:
  class StageOne;

  std::unique_ptr<StageOne> stageOne_;
};

}  // namespace velmora::internal

// Finds the tokens of JSON (RFC 8259). A token begins at each brace, bracket, colon and comma
// outside of strings, at the opening quote of each string, and at the first byte of each number and
// literal.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>

namespace velmora::internal {

/// May stand before a document, and means nothing.
inline constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

[[nodiscard]] constexpr bool isJSONBlank(char byte) {
  return byte == ' ' || byte == '\n' || byte == '\r' || byte == '\t';
}

/// Whether a document whose beginning is `text` may have the token `punctuation` first. True if the
/// beginning has only blanks.
[[nodiscard]] bool mayBeginWith(char punctuation, std::string_view text);

/// The reason why there are no tokens.
enum class TokenFault {
  none,
  /// The text is empty or consists of blanks.
  empty,
  /// The bytes are not UTF-8 (RFC 3629).
  notUTF8,
  /// A string does not end. Other faults may precede it.
  unclosedString,
  /// A string holds a control character.
  controlCharacter,
};

/// The longest document that is read, in bytes.
inline constexpr std::size_t maxJSONDocumentLength = (std::size_t{1} << 31) - 1;

/// The deepest nesting of arrays and objects.
inline constexpr std::size_t maxJSONNesting = 512;

/// The number of tokens that a reader may look ahead.
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
  std::uint32_t end = nextToken;
  // The first comparison mostly decides: outside of strings no other byte of JSON is that small.
  while (static_cast<unsigned char>(bytes[end - 1]) <= ' ' && isJSONBlank(bytes[end - 1])) {
    --end;
  }
  return end;
}

/// Searches one text after the other, and keeps its memory: four bytes for each byte of the longest
/// text, and up to twice that for texts below 64 MiB. Touches only as much of it as the most tokens
/// need. One thread at a time.
class TokenFinder {
 public:
  TokenFinder();
  ~TokenFinder();
  TokenFinder(const TokenFinder&) = delete;
  TokenFinder& operator=(const TokenFinder&) = delete;
  TokenFinder(TokenFinder&&) noexcept;
  TokenFinder& operator=(TokenFinder&&) noexcept;

  /// Checks only that the text is UTF-8, and that every string ends and has no control character. A
  /// backslash outside of a string is part of an invalid token, and a quote after it begins no
  /// string. `text` is shorter than 4 GiB. Throws std::bad_alloc.
  [[nodiscard]] FoundTokens find(std::string_view text);

 private:
  class StageOne;

  std::unique_ptr<StageOne> stageOne_;
};

}  // namespace velmora::internal

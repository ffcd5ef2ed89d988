// A text and its tokens, for tests of code that reads tokens.
#pragma once

#include "json/TokenFinder.h"
#include "json/streaming/TextArena.h"
#include "json/streaming/TokenCursor.h"

#include <cstdint>
#include <stdexcept>
#include <string>
#include <utility>

namespace velmora::internal {

class TokenizedText {
 public:
  /// Throws std::invalid_argument when the search finds no tokens.
  explicit TokenizedText(std::string text)
      : text_(std::move(text)), tokens_(text_, find(), arena_) {}
  TokenizedText(const TokenizedText&) = delete;
  TokenizedText& operator=(const TokenizedText&) = delete;

  [[nodiscard]] TokenCursor& tokens() { return tokens_; }

 private:
  const std::uint32_t* find() {
    const FoundTokens found = finder_.find(text_);
    if (found.first == nullptr) {
      throw std::invalid_argument("no tokens: " + text_);
    }
    return found.first;
  }

  std::string text_;
  TokenFinder finder_;
  TextArena arena_;
  TokenCursor tokens_;
};

}  // namespace velmora::internal

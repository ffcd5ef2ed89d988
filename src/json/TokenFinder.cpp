#include "json/TokenFinder.h"

#include <simdjson.h>

#include <algorithm>
#include <bit>
#include <new>

namespace velmora::internal {

namespace {

/// The capacity for a text. It is rounded up, so that texts of many lengths rarely allocate; but
/// not for a large text, because the indexes take four bytes for each byte.
std::size_t roomFor(std::size_t length) {
  constexpr std::size_t large = std::size_t{64} << 20;
  return length < large ? std::bit_ceil(length) : length;
}

TokenFault faultOf(simdjson::error_code error) {
  switch (error) {
    case simdjson::SUCCESS:
      return TokenFault::none;
    case simdjson::EMPTY:
      return TokenFault::empty;
    case simdjson::UTF8_ERROR:
      return TokenFault::notUTF8;
    case simdjson::UNCLOSED_STRING:
      return TokenFault::unclosedString;
    case simdjson::UNESCAPED_CHARS:
      return TokenFault::controlCharacter;
    default:
      throw std::bad_alloc();
  }
}

}  // namespace

bool mayBeginWith(char punctuation, std::string_view text) {
  if (text.starts_with(byteOrderMark)) {
    text.remove_prefix(byteOrderMark.size());
  }
  const auto* const first = std::ranges::find_if_not(text, isJSONBlank);
  return first == text.end() || *first == punctuation;
}

/// The stage of the library's parser that finds tokens.
class TokenFinder::StageOne {
 public:
  simdjson::internal::dom_parser_implementation& ensureCapacity(std::size_t length) {
    if (parser_ == nullptr || parser_->capacity() < length) {
      parser_.reset();
      // Not the library's active implementation, which a variable of the environment can replace.
      const simdjson::error_code error =
          simdjson::get_available_implementations()
              .detect_best_supported()
              ->create_dom_parser_implementation(roomFor(length), simdjson::DEFAULT_MAX_DEPTH,
                                                 parser_);
      if (error != simdjson::SUCCESS) {
        throw std::bad_alloc();
      }
    }
    return *parser_;
  }

 private:
  std::unique_ptr<simdjson::internal::dom_parser_implementation> parser_;
};

TokenFinder::TokenFinder() : stageOne_(std::make_unique<StageOne>()) {}

TokenFinder::~TokenFinder() = default;

TokenFinder::TokenFinder(TokenFinder&&) noexcept = default;

TokenFinder& TokenFinder::operator=(TokenFinder&&) noexcept = default;

FoundTokens TokenFinder::find(std::string_view text) {
  if (text.empty()) {
    return {.fault = TokenFault::empty};
  }
  // The library's array has one index for each byte of its capacity. The sentinels need four more.
  auto& parser = stageOne_->ensureCapacity(text.size() + tokenLookAhead);
  const TokenFault fault = faultOf(parser.stage1(reinterpret_cast<const std::uint8_t*>(text.data()),
                                                 text.size(), simdjson::stage1_mode::regular));
  if (fault != TokenFault::none) {
    return {.fault = fault};
  }
  std::uint32_t* const first = parser.structural_indexes.get();
  std::fill_n(first + parser.n_structural_indexes, tokenLookAhead,
              static_cast<std::uint32_t>(text.size()));
  return {.first = first, .count = parser.n_structural_indexes};
}

}  // namespace velmora::internal

// Two texts: their equality, order, hash and normal form must agree, and so must the functions for
// their characters.
#include "fuzz/Property.h"
#include "text/Characters.h"
#include "text/Text.h"

#include <string>

namespace velmora::internal {
namespace {

void requireOneNormalForm(std::string_view text) {
  const std::string normalized = normalizedNFC(text);
  require(normalizedNFC(normalized) == normalized);
  require(isUTF8(normalized) == isUTF8(text));
  require(isUTF8(text) || normalized == text);
  require(canonicallyEqual(text, normalized));
  require(canonicalHash(text) == canonicalHash(normalized));
  require(characterCount(text) == characterCount(normalized));
  require(hasCharacterPrefix(text, normalized));
  require(hasCharacterPrefix(normalized, text));
}

void requireOneMeaningOfEquality(std::string_view a, std::string_view b) {
  const bool areEqual = normalizedNFC(a) == normalizedNFC(b);
  require(canonicallyEqual(a, b) == areEqual);
  require(canonicallyEqual(b, a) == areEqual);
  require(std::is_eq(canonicalOrder(a, b)) == areEqual);
  require(std::is_lt(canonicalOrder(a, b)) == (normalizedNFC(a) < normalizedNFC(b)));
  require(std::is_lt(canonicalOrder(a, b)) == std::is_gt(canonicalOrder(b, a)));
  require(!areEqual || canonicalHash(a) == canonicalHash(b));
  require(!areEqual || (hasCharacterPrefix(a, b) && hasCharacterPrefix(b, a)));
}

void requireBoundariesAtCharacters(std::string_view text) {
  constexpr std::size_t longestTried = 128;  // the work grows with the square of the length
  if (text.size() > longestTried) {
    return;
  }
  std::size_t boundaries = 0;
  for (std::size_t length = 1; length <= text.size(); ++length) {
    boundaries += hasCharacterPrefix(text, text.substr(0, length)) ? 1U : 0U;
  }
  require(boundaries == characterCount(text));
}

void requirePrefixOfConcatenation(std::string_view a, std::string_view b) {
  // A control character is always a character of its own.
  std::string text(a);
  text.append("\t").append(b);
  require(hasCharacterPrefix(text, a));
  require(hasCharacterPrefix(text, normalizedNFC(a)));
  require(characterCount(text) == characterCount(a) + 1 + characterCount(b));
  require(!hasCharacterPrefix(a, text));
}

void requirePartsThatJoin(std::string_view text) {
  std::string joined;
  std::size_t characters = 0;
  for (const std::string_view part : splitAtCharacter(text, '/')) {
    joined.append(part).append("/");
    characters += characterCount(part) + 1;
  }
  joined.pop_back();
  require(joined == text);
  require(characters - 1 == characterCount(text));
}

}  // namespace
}  // namespace velmora::internal

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto [a, b] = velmora::halvesOf(velmora::textOf(data, size));
  velmora::internal::requireOneNormalForm(a);
  velmora::internal::requireOneNormalForm(b);
  velmora::internal::requireOneMeaningOfEquality(a, b);
  velmora::internal::requireBoundariesAtCharacters(a);
  velmora::internal::requirePrefixOfConcatenation(a, b);
  velmora::internal::requirePartsThatJoin(a);
  return 0;
}

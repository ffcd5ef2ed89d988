// Whole characters: extended grapheme clusters of Unicode UAX #29.
//
// A "/" followed by a combining mark is one character and not a "/". Prefix tests, splitting and
// lengths must never cut through a character. All functions here respect canonical equivalence
// (Text.h), and cost no more than operations on bytes for ASCII. A byte that is not part of
// well-formed UTF-8 is a character by itself.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace velmora {

/// Whether `text` begins with the characters of `prefix`, each canonically equal to its
/// counterpart. An empty prefix always matches.
[[nodiscard]] bool hasCharacterPrefix(std::string_view text, std::string_view prefix);

/// The length in characters. CR LF is one character.
[[nodiscard]] std::size_t characterCount(std::string_view text);

/// Splits `text` at the characters that are exactly `separator` (ASCII, not CR or LF). Empty parts
/// are included: n separators give n + 1 parts. The parts refer to the bytes of `text`.
[[nodiscard]] std::vector<std::string_view> splitAtCharacter(std::string_view text, char separator);

/// Whether a character ends directly before `position` in `text`, given that the code point before
/// `position` is ASCII. `position` may be the end of the text.
[[nodiscard]] bool isCharacterBoundaryAfterASCII(std::string_view text, std::size_t position);

}  // namespace velmora

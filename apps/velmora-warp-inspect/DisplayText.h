// Names and messages from outside, made fit to be shown: they may hold any bytes.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace velmora::inspect {

/// `bytes` as UTF-8: U+FFFD for each byte that is not part of well-formed UTF-8, all else as it
/// stands.
[[nodiscard]] std::string repairedUTF8(std::string_view bytes);

/// `bytes` in one line that steers no terminal: repaired; control characters, line separators and
/// the marks that change the direction of writing as "\n", "\t", "\r" or "\u{1b}", and a backslash
/// doubled.
[[nodiscard]] std::string displayText(std::string_view bytes);

/// "1 file", "2 files".
[[nodiscard]] std::string counted(std::size_t count, std::string_view one, std::string_view many);

}  // namespace velmora::inspect

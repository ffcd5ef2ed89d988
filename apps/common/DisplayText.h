// Untrusted text in messages and answers.
#pragma once

#include <string>
#include <string_view>

namespace velmora {

/// Returns `bytes` as UTF-8. Replaces each byte that is not part of well-formed UTF-8 by U+FFFD.
[[nodiscard]] std::string repairedUTF8(std::string_view bytes);

/// Returns `bytes` as one line of UTF-8 that cannot control the terminal. Escapes control
/// characters, line separators and direction marks, for example as "\n" or "\u{1b}", and each byte
/// that is not part of well-formed UTF-8, for example as "\xff". Doubles each backslash.
[[nodiscard]] std::string displayText(std::string_view bytes);

}  // namespace velmora

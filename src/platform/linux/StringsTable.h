// Reads a table of localized texts in the old-style strings format:
//
//     /* comment */  // comment
//     "key" = "value";
//
// in UTF-8, a leading byte-order mark ignored. Both texts are quoted and may run over lines; white
// space and comments may stand between any two tokens. Inside quotes a backslash begins one of
//
//     \" \\ \a \b \f \n \r \t \v     the character itself, or the control character as in C
//     \0 to \177                     an ASCII character by one to three octal digits
//     \Uxxxx                         a UTF-16 code unit by exactly four hexadecimal digits; what
//                                    lies beyond the first 65536 characters takes two in a row
//
// The format is shared with macOS, where the system reads it. What would be read differently there
// is a fault here: octal digits beyond ASCII, unquoted texts, "key"; without a value.
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace velmora {

using StringsTable = std::map<std::string, std::string, std::less<>>;

/// The whole table; of several values under one key the last. None when there is any fault in it.
[[nodiscard]] std::optional<StringsTable> parseStringsTable(std::string_view utf8);

}  // namespace velmora

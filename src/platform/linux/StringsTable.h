// Reads a table of localized texts in the old-style strings format:
//
//     /* comment */  // comment
//     "key" = "value";
//
// The encoding is UTF-8; a leading byte-order mark is ignored. Both texts are quoted and may
// contain line breaks. White space and comments may separate any two tokens. Inside quotes a
// backslash begins one of
//
//     \" \\ \a \b \f \n \r \t \v     the character itself, or the control character as in C
//     \0 to \177                     an ASCII character by one to three octal digits
//     \Uxxxx                         a UTF-16 code unit by exactly four hexadecimal digits; a
//                                    character above U+FFFF takes two in a row
//
// macOS reads the same files by its own parser. Input that macOS would read in another way is a
// fault here: octal digits beyond ASCII, unquoted texts, "key"; without a value.
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace velmora {

using StringsTable = std::map<std::string, std::string, std::less<>>;

/// The whole table; the last of several values under one key counts. None when the table has any
/// fault.
[[nodiscard]] std::optional<StringsTable> parseStringsTable(std::string_view utf8);

}  // namespace velmora

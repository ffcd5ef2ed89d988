// Writes strings of JSON (RFC 8259, section 7).
#pragma once

#include <string>
#include <string_view>

namespace velmora::internal {

enum class SlashStyle { plain, escaped };

/// Appends `text`, which must be UTF-8, as a string. Escapes control characters, quotes and
/// backslashes; "/" only if `slashes` says so; nothing else.
void appendJSONString(std::string& json, std::string_view text,
                      SlashStyle slashes = SlashStyle::plain);

}  // namespace velmora::internal

// Pieces of JSON text (RFC 8259).
#pragma once

#include <string>
#include <string_view>

namespace velmora::internal {

enum class SlashStyle { plain, escaped };

/// Appends `text`, which is UTF-8, as a string: control characters, quotes and backslashes escaped,
/// all else as it stands, but for "/" where `slashes` says so.
void appendJSONString(std::string& json, std::string_view text,
                      SlashStyle slashes = SlashStyle::plain);

}  // namespace velmora::internal

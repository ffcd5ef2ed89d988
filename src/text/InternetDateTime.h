// Instants in the internet date-time format (RFC 3339).
#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

namespace velmora::internal {

/// The instant of `text`: exactly "YYYY-MM-DDThh:mm:ss" and "Z" or "±hh:mm", in upper case. The day
/// is one of the (proleptic) Gregorian calendar from year 0000 to 9999. Offsets go up to 23:59.
/// None for any other text, and for a leap second.
[[nodiscard]] std::optional<std::chrono::sys_seconds> parseInternetDateTime(std::string_view text);

/// `instant` in the time zone with this offset, and "Z" where that is 0. Its year there is not
/// negative. A year after 9999 takes more than four digits, which RFC 3339 does not allow.
[[nodiscard]] std::string formatInternetDateTime(
    std::chrono::sys_seconds instant, std::chrono::minutes offset = std::chrono::minutes(0));

}  // namespace velmora::internal

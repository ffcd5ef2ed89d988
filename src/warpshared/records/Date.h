// Instants of time in files.
#pragma once

#include "json/EncodingError.h"

#include <compare>
#include <optional>
#include <string>
#include <string_view>

namespace velmora {

/// An instant, counted from 2001-01-01T00:00:00Z. Days have 86,400 seconds: no leap seconds.
struct Date {
  double secondsSinceReferenceDate = 0;

  friend bool operator==(const Date&, const Date&) = default;
  friend std::partial_ordering operator<=>(const Date& a, const Date& b) {
    return a.secondsSinceReferenceDate <=> b.secondsSinceReferenceDate;
  }
};

/// Whether `date` is neither infinite nor NaN.
[[nodiscard]] bool isFinite(const Date& date);

/// The instant of `text` in the internet date-time format (RFC 3339) without fractions: exactly
/// "YYYY-MM-DDThh:mm:ss" and "Z" or "±hh:mm", in upper case. The day is one of the (proleptic)
/// Gregorian calendar from year 0000 to 9999. Offsets go up to 23:59. None for any other text, and
/// for a leap second.
[[nodiscard]] std::optional<Date> parseInternetDateTime(std::string_view text);

/// `date` in the internet date-time format, in UTC with "Z". If its year in UTC is outside 0000 to
/// 9999, the offset is +23:59 or -23:59 instead, so that each text reads back as the same date.
///
/// Throws EncodingError for a date that no text reads back as: one that is
/// not finite, that has a fraction of a second, or that is before 0000-01-01T00:00:00+23:59 or
/// after 9999-12-31T23:59:59-23:59.
[[nodiscard]] std::string internetDateTime(const Date& date);

}  // namespace velmora

#include "warpshared/records/Date.h"

#include "text/InternetDateTime.h"

#include <chrono>
#include <cmath>

namespace velmora {

namespace {

using std::chrono::days;
using std::chrono::hours;
using std::chrono::minutes;
using std::chrono::seconds;
using std::chrono::sys_days;
using std::chrono::sys_seconds;

constexpr sys_days referenceDay = std::chrono::year(2001) / std::chrono::January / 1;

constexpr minutes maxOffset = hours(23) + minutes(59);

constexpr Date dateOf(sys_seconds instant) {
  return {static_cast<double>((instant - referenceDay).count())};
}

// The first and the last date that a text can have.
constexpr Date firstDate =
    dateOf(sys_days(std::chrono::year(0) / std::chrono::January / 1) - maxOffset);
constexpr Date lastDate =
    dateOf(sys_days(std::chrono::year(10000) / std::chrono::January / 1) - seconds(1) + maxOffset);

sys_seconds instantOf(const Date& date) {
  // The comparison also fails for NaN. Elsewhere the conversion to an integer would be undefined.
  if (!(firstDate <= date && date <= lastDate)) {
    throw EncodingError("The date is not in the years 0000 to 9999 of any time zone.");
  }
  const auto count = static_cast<seconds::rep>(date.secondsSinceReferenceDate);
  const sys_seconds instant = referenceDay + seconds(count);
  if (dateOf(instant) != date) {
    throw EncodingError("The date has a fraction of a second.");
  }
  return instant;
}

/// The offset in which the year has four digits.
minutes offsetFor(sys_seconds instant) {
  const int year =
      static_cast<int>(std::chrono::year_month_day(std::chrono::floor<days>(instant)).year());
  if (year < 0) {
    return maxOffset;
  }
  return year > 9999 ? -maxOffset : minutes(0);
}

}  // namespace

bool isFinite(const Date& date) { return std::isfinite(date.secondsSinceReferenceDate); }

std::optional<Date> parseInternetDateTime(std::string_view text) {
  const std::optional<sys_seconds> instant = internal::parseInternetDateTime(text);
  return instant.has_value() ? std::optional(dateOf(*instant)) : std::nullopt;
}

std::string internetDateTime(const Date& date) {
  const sys_seconds instant = instantOf(date);
  return internal::formatInternetDateTime(instant, offsetFor(instant));
}

}  // namespace velmora

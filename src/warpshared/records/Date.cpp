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
  if (!instant.has_value()) {
    return std::nullopt;
  }
  return Date{static_cast<double>((*instant - referenceDay).count())};
}

std::string internetDateTime(const Date& date) {
  const sys_seconds instant =
      referenceDay + seconds(static_cast<seconds::rep>(date.secondsSinceReferenceDate));
  return internal::formatInternetDateTime(instant, offsetFor(instant));
}

}  // namespace velmora

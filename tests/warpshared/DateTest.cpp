#include "warpshared/Date.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <random>

namespace velmora {
namespace {

struct InstantCase {
  std::string_view name;
  std::string_view text;
  double seconds;
  std::string_view written;
};

constexpr InstantCase instantCases[] = {
    {.name = "reference",
     .text = "2001-01-01T00:00:00Z",
     .seconds = 0,
     .written = "2001-01-01T00:00:00Z"},
    {.name = "before",
     .text = "2000-12-31T23:59:59Z",
     .seconds = -1,
     .written = "2000-12-31T23:59:59Z"},
    {.name = "today",
     .text = "2025-03-01T12:00:00Z",
     .seconds = 762523200,
     .written = "2025-03-01T12:00:00Z"},
    {.name = "east",
     .text = "2025-03-01T12:00:00+01:00",
     .seconds = 762519600,
     .written = "2025-03-01T11:00:00Z"},
    {.name = "west",
     .text = "2025-03-01T12:00:00-08:30",
     .seconds = 762553800,
     .written = "2025-03-01T20:30:00Z"},
    {.name = "noOffset",
     .text = "2001-01-01T00:00:00+00:00",
     .seconds = 0,
     .written = "2001-01-01T00:00:00Z"},
    {.name = "noOffsetFromTheWest",
     .text = "2001-01-01T00:00:00-00:00",
     .seconds = 0,
     .written = "2001-01-01T00:00:00Z"},
    {.name = "largestOffset",
     .text = "2001-01-01T23:59:00+23:59",
     .seconds = 0,
     .written = "2001-01-01T00:00:00Z"},
    {.name = "offsetIntoAnotherYear",
     .text = "2000-12-31T23:30:00-00:30",
     .seconds = 0,
     .written = "2001-01-01T00:00:00Z"},
    {.name = "lastSecondOfADay",
     .text = "2001-01-01T23:59:59Z",
     .seconds = 86399,
     .written = "2001-01-01T23:59:59Z"},
    {.name = "leapDay",
     .text = "2024-02-29T00:00:00Z",
     .seconds = 730857600,
     .written = "2024-02-29T00:00:00Z"},
    {.name = "leapDayOf2000",
     .text = "2000-02-29T00:00:00Z",
     .seconds = -26524800,
     .written = "2000-02-29T00:00:00Z"},
    {.name = "posixEpoch",
     .text = "1970-01-01T00:00:00Z",
     .seconds = -978307200,
     .written = "1970-01-01T00:00:00Z"},
    {.name = "dayThatTheGregorianCalendarLeftOut",
     .text = "1582-10-10T00:00:00Z",
     .seconds = -13198032000,
     .written = "1582-10-10T00:00:00Z"},
    {.name = "leapDayOfYear0",
     .text = "0000-02-29T00:00:00Z",
     .seconds = -63140428800,
     .written = "0000-02-29T00:00:00Z"},
    {.name = "firstOfUTC",
     .text = "0000-01-01T00:00:00Z",
     .seconds = -63145526400,
     .written = "0000-01-01T00:00:00Z"},
    {.name = "lastOfUTC",
     .text = "9999-12-31T23:59:59Z",
     .seconds = 252423993599,
     .written = "9999-12-31T23:59:59Z"},
    {.name = "beforeTheFirstOfUTC",
     .text = "0000-01-01T00:00:00+00:01",
     .seconds = -63145526460,
     .written = "0000-01-01T23:58:00+23:59"},
    {.name = "afterTheLastOfUTC",
     .text = "9999-12-31T23:59:59-00:01",
     .seconds = 252423993659,
     .written = "9999-12-31T00:01:59-23:59"},
    {.name = "first",
     .text = "0000-01-01T00:00:00+23:59",
     .seconds = -63145612740,
     .written = "0000-01-01T00:00:00+23:59"},
    {.name = "last",
     .text = "9999-12-31T23:59:59-23:59",
     .seconds = 252424079939,
     .written = "9999-12-31T23:59:59-23:59"},
};

struct RefusedCase {
  std::string_view name;
  std::string_view text;
};

constexpr RefusedCase refusedCases[] = {
    {.name = "empty", .text = ""},
    {.name = "dayOnly", .text = "2025-03-01"},
    {.name = "noOffset", .text = "2025-03-01T12:00:00"},
    {.name = "noSeconds", .text = "2025-03-01T12:00Z"},
    {.name = "fraction", .text = "2025-03-01T12:00:00.5Z"},
    {.name = "fractionWithComma", .text = "2025-03-01T12:00:00,5Z"},
    {.name = "lowerCaseT", .text = "2025-03-01t12:00:00Z"},
    {.name = "lowerCaseZ", .text = "2025-03-01T12:00:00z"},
    {.name = "space", .text = "2025-03-01 12:00:00Z"},
    {.name = "spaceBefore", .text = " 2025-03-01T12:00:00Z"},
    {.name = "spaceAfter", .text = "2025-03-01T12:00:00Z "},
    {.name = "lineFeedAfter", .text = "2025-03-01T12:00:00Z\n"},
    {.name = "nulAfter", .text = {"2025-03-01T12:00:00Z\0", 21}},
    {.name = "nulInside", .text = {"2025-03-01\0T12:00:00Z", 21}},
    {.name = "offsetAfterZ", .text = "2025-03-01T12:00:00Z+01:00"},
    {.name = "offsetOfHours", .text = "2025-03-01T12:00:00+01"},
    {.name = "offsetWithoutColon", .text = "2025-03-01T12:00:00+0100"},
    {.name = "offsetWithSeconds", .text = "2025-03-01T12:00:00+01:00:00"},
    {.name = "offsetOf24Hours", .text = "2025-03-01T12:00:00+24:00"},
    {.name = "offsetOf60Minutes", .text = "2025-03-01T12:00:00+01:60"},
    {.name = "minusSign", .text = "2025-03-01T12:00:00\u221201:00"},
    {.name = "compact", .text = "20250301T120000Z"},
    {.name = "shortYear", .text = "925-03-01T12:00:00Z"},
    {.name = "longYear", .text = "12025-03-01T12:00:00Z"},
    {.name = "signedYear", .text = "+2025-03-01T12:00:00Z"},
    {.name = "negativeYear", .text = "-001-03-01T12:00:00Z"},
    {.name = "shortMonth", .text = "2025-3-01T12:00:00Z"},
    {.name = "signedMonth", .text = "2025-+3-01T12:00:00Z"},
    {.name = "month0", .text = "2025-00-01T12:00:00Z"},
    {.name = "month13", .text = "2025-13-01T12:00:00Z"},
    {.name = "day0", .text = "2025-03-00T12:00:00Z"},
    {.name = "day32", .text = "2025-03-32T12:00:00Z"},
    {.name = "april31", .text = "2025-04-31T12:00:00Z"},
    {.name = "noLeapYear", .text = "2025-02-29T12:00:00Z"},
    {.name = "noLeapYear1900", .text = "1900-02-29T12:00:00Z"},
    {.name = "february30", .text = "2024-02-30T12:00:00Z"},
    {.name = "hour24", .text = "2025-03-01T24:00:00Z"},
    {.name = "minute60", .text = "2025-03-01T12:60:00Z"},
    {.name = "leapSecond", .text = "2016-12-31T23:59:60Z"},
    {.name = "otherDigits", .text = "\u0662\u0660\u0662\u0665-03-01T12:00:00Z"},
    {.name = "weekDate", .text = "2025-W09-6T12:00:00Z"},
    {.name = "letters", .text = "yyyy-MM-ddTHH:mm:ssZ"},
};

TEST(DateTest, readsAndWritesInstants) {
  for (const InstantCase& row : instantCases) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(parseInternetDateTime(row.text), Date{row.seconds});
    EXPECT_EQ(internetDateTime(Date{row.seconds}), row.written);
    EXPECT_EQ(parseInternetDateTime(row.written), Date{row.seconds});
  }
}

TEST(DateTest, readsNothingElse) {
  for (const RefusedCase& row : refusedCases) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(parseInternetDateTime(row.text), std::nullopt);
  }
}

TEST(DateTest, everyBeginningIsIncomplete) {
  constexpr std::string_view whole = "2025-03-01T12:00:00+01:00";
  ASSERT_NE(parseInternetDateTime(whole), std::nullopt);
  for (std::size_t length = 0; length < whole.size(); ++length) {
    EXPECT_EQ(parseInternetDateTime(whole.substr(0, length)), std::nullopt) << length;
  }
}

TEST(DateTest, noOtherByteSuits) {
  constexpr std::string_view whole = "2025-03-01T12:00:00+01:00";
  constexpr std::string_view numeralsAndSigns = "0123456789+-";
  for (std::size_t position = 0; position < whole.size(); ++position) {
    for (int byte = 0; byte <= std::numeric_limits<unsigned char>::max(); ++byte) {
      std::string text(whole);
      text[position] = static_cast<char>(byte);
      const bool mayBeRead = text[position] == whole[position] ||
                             numeralsAndSigns.find(text[position]) != std::string_view::npos;
      EXPECT_TRUE(mayBeRead || !parseInternetDateTime(text)) << text;
    }
  }
}

TEST(DateTest, whatIsWrittenReadsBack) {
  std::mt19937_64 engine(20240302);
  std::uniform_int_distribution<std::int64_t> anySecond(-63145612740, 252424079939);
  for (int count = 0; count < 50'000; ++count) {
    const Date date{static_cast<double>(anySecond(engine))};
    ASSERT_EQ(parseInternetDateTime(internetDateTime(date)), date) << internetDateTime(date);
  }
}

// Each month begins where the one before it ends: no leap year is forgotten.
TEST(DateTest, monthsFollowOneAnother) {
  constexpr int daysInMonth[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  constexpr double secondsInDay = 86'400;
  double seconds = -63145526400;
  const auto twoDigits = [](int number) {
    return std::string(number < 10 ? "0" : "") + std::to_string(number);
  };
  for (int year = 0; year <= 9999; ++year) {
    const bool isLeapYear = year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
    const std::string digits = std::to_string(year);
    const std::string paddedYear = std::string(4 - digits.size(), '0') + digits;
    for (int month = 1; month <= 12; ++month) {
      const int dayCount = daysInMonth[month - 1] + (month == 2 && isLeapYear ? 1 : 0);
      const std::string first = paddedYear + "-" + twoDigits(month) + "-01T00:00:00Z";
      ASSERT_EQ(parseInternetDateTime(first), Date{seconds}) << first;
      ASSERT_EQ(internetDateTime(Date{seconds}), first);
      const std::string beyond =
          paddedYear + "-" + twoDigits(month) + "-" + twoDigits(dayCount + 1) + "T00:00:00Z";
      ASSERT_EQ(parseInternetDateTime(beyond), std::nullopt) << beyond;
      seconds += dayCount * secondsInDay;
    }
  }
}

TEST(DateTest, isOrderedByTime) {
  EXPECT_LT(Date{-1}, Date{0});
  EXPECT_GT(Date{1.5}, Date{1});
  EXPECT_EQ(Date{0.0}, Date{-0.0});
  EXPECT_NE(Date{1}, Date{2});
}

TEST(DateTest, isFiniteOrNoInstantAtAll) {
  using Limits = std::numeric_limits<double>;
  EXPECT_TRUE(isFinite(Date{}));
  EXPECT_TRUE(isFinite(Date{Limits::max()}));
  EXPECT_FALSE(isFinite(Date{Limits::infinity()}));
  EXPECT_FALSE(isFinite(Date{-Limits::infinity()}));
  EXPECT_FALSE(isFinite(Date{Limits::quiet_NaN()}));
}

}  // namespace
}  // namespace velmora

#include "json/EncodingError.h"
#include "warpshared/records/Date.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <random>

namespace velmora::internal {
namespace {

struct InstantCase {
  const char* name;
  std::string_view text;
  double seconds;
  std::string_view written;
};

constexpr InstantCase instantCases[] = {
    {"reference", "2001-01-01T00:00:00Z", 0, "2001-01-01T00:00:00Z"},
    {"before", "2000-12-31T23:59:59Z", -1, "2000-12-31T23:59:59Z"},
    {"today", "2025-03-01T12:00:00Z", 762523200, "2025-03-01T12:00:00Z"},
    {"east", "2025-03-01T12:00:00+01:00", 762519600, "2025-03-01T11:00:00Z"},
    {"west", "2025-03-01T12:00:00-08:30", 762553800, "2025-03-01T20:30:00Z"},
    {"noOffset", "2001-01-01T00:00:00+00:00", 0, "2001-01-01T00:00:00Z"},
    {"noOffsetFromTheWest", "2001-01-01T00:00:00-00:00", 0, "2001-01-01T00:00:00Z"},
    {"maxOffset", "2001-01-01T23:59:00+23:59", 0, "2001-01-01T00:00:00Z"},
    {"offsetIntoAnotherYear", "2000-12-31T23:30:00-00:30", 0, "2001-01-01T00:00:00Z"},
    {"lastSecondOfADay", "2001-01-01T23:59:59Z", 86399, "2001-01-01T23:59:59Z"},
    {"leapDay", "2024-02-29T00:00:00Z", 730857600, "2024-02-29T00:00:00Z"},
    {"leapDayOf2000", "2000-02-29T00:00:00Z", -26524800, "2000-02-29T00:00:00Z"},
    {"posixEpoch", "1970-01-01T00:00:00Z", -978307200, "1970-01-01T00:00:00Z"},
    {"dayThatTheGregorianCalendarLeftOut", "1582-10-10T00:00:00Z", -13198032000,
     "1582-10-10T00:00:00Z"},
    {"leapDayOfYear0", "0000-02-29T00:00:00Z", -63140428800, "0000-02-29T00:00:00Z"},
    {"firstOfUTC", "0000-01-01T00:00:00Z", -63145526400, "0000-01-01T00:00:00Z"},
    {"lastOfUTC", "9999-12-31T23:59:59Z", 252423993599, "9999-12-31T23:59:59Z"},
    {"beforeTheFirstOfUTC", "0000-01-01T00:00:00+00:01", -63145526460, "0000-01-01T23:58:00+23:59"},
    {"afterTheLastOfUTC", "9999-12-31T23:59:59-00:01", 252423993659, "9999-12-31T00:01:59-23:59"},
    {"first", "0000-01-01T00:00:00+23:59", -63145612740, "0000-01-01T00:00:00+23:59"},
    {"last", "9999-12-31T23:59:59-23:59", 252424079939, "9999-12-31T23:59:59-23:59"},
};

struct RefusedCase {
  const char* name;
  std::string_view text;
};

constexpr RefusedCase refusedCases[] = {
    {"noSeconds", "2025-03-01T12:00Z"},
    {"fraction", "2025-03-01T12:00:00.5Z"},
    {"fractionWithComma", "2025-03-01T12:00:00,5Z"},
    {"lowerCaseZ", "2025-03-01T12:00:00z"},
    {"spaceAfter", "2025-03-01T12:00:00Z "},
    {"lineFeedAfter", "2025-03-01T12:00:00Z\n"},
    {"nulAfter", {"2025-03-01T12:00:00Z\0", 21}},
    {"nulInside", {"2025-03-01\0T12:00:00Z", 21}},
    {"offsetAfterZ", "2025-03-01T12:00:00Z+01:00"},
    {"offsetWithSeconds", "2025-03-01T12:00:00+01:00:00"},
    {"offsetOf24Hours", "2025-03-01T12:00:00+24:00"},
    {"minusSign", "2025-03-01T12:00:00\u221201:00"},
    {"compact", "20250301T120000Z"},
    {"shortYear", "925-03-01T12:00:00Z"},
    {"longYear", "12025-03-01T12:00:00Z"},
    {"signedYear", "+2025-03-01T12:00:00Z"},
    {"negativeYear", "-001-03-01T12:00:00Z"},
    {"shortMonth", "2025-3-01T12:00:00Z"},
    {"signedMonth", "2025-+3-01T12:00:00Z"},
    {"leapSecond", "2016-12-31T23:59:60Z"},
    {"otherDigits", "\u0662\u0660\u0662\u0665-03-01T12:00:00Z"},
    {"letters", "yyyy-MM-ddTHH:mm:ssZ"},
};

TEST(DateTest, readsAndWritesInstants) {
  for (const InstantCase& row : instantCases) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(parseInternetDateTime(row.text), Date{row.seconds});
    EXPECT_EQ(internetDateTime(Date{row.seconds}), row.written);
    EXPECT_EQ(parseInternetDateTime(row.written), Date{row.seconds});
  }
}

TEST(DateTest, refusesOtherTexts) {
  for (const RefusedCase& row : refusedCases) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(parseInternetDateTime(row.text), std::nullopt);
  }
}

std::string refusalOf(double seconds) {
  try {
    return internetDateTime(Date{seconds});
  } catch (const EncodingError& error) {
    return error.what();
  }
}

TEST(DateTest, writesNoDateThatNoTextReadsBackAs) {
  using Limits = std::numeric_limits<double>;
  constexpr double first = -63145612740;
  constexpr double last = 252424079939;
  for (const double seconds :
       {Limits::infinity(), -Limits::infinity(), Limits::quiet_NaN(), -Limits::quiet_NaN(),
        Limits::max(), Limits::lowest(), 0x1p63, -0x1p63, first - 1, last + 1,
        std::nextafter(first, -Limits::max()), std::nextafter(last, Limits::max())}) {
    EXPECT_EQ(refusalOf(seconds), "The date is not in the years 0000 to 9999 of any time zone.")
        << seconds;
  }
  for (const double seconds :
       {std::nextafter(first, 0), std::nextafter(last, 0), 0.5, -0.5, 1e-9, Limits::denorm_min()}) {
    EXPECT_EQ(refusalOf(seconds), "The date has a fraction of a second.") << seconds;
  }
  EXPECT_EQ(refusalOf(-0.0), "2001-01-01T00:00:00Z");
}

TEST(DateTest, everyPrefixIsRefused) {
  constexpr std::string_view whole = "2025-03-01T12:00:00+01:00";
  ASSERT_NE(parseInternetDateTime(whole), std::nullopt);
  for (std::size_t length = 0; length < whole.size(); ++length) {
    EXPECT_EQ(parseInternetDateTime(whole.substr(0, length)), std::nullopt) << length;
  }
}

TEST(DateTest, everyOtherByteIsRefused) {
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

TEST(DateTest, writtenDatesReadBack) {
  std::mt19937_64 engine(20240302);
  std::uniform_int_distribution<std::int64_t> anySecond(-63145612740, 252424079939);
  for (int count = 0; count < 50'000; ++count) {
    const Date date{static_cast<double>(anySecond(engine))};
    ASSERT_EQ(parseInternetDateTime(internetDateTime(date)), date) << internetDateTime(date);
  }
}

// Each month begins at the end of the earlier one, so every leap year counts.
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

TEST(DateTest, isFiniteOrNoInstant) {
  using Limits = std::numeric_limits<double>;
  EXPECT_TRUE(isFinite(Date{}));
  EXPECT_TRUE(isFinite(Date{Limits::max()}));
  EXPECT_FALSE(isFinite(Date{Limits::infinity()}));
  EXPECT_FALSE(isFinite(Date{-Limits::infinity()}));
  EXPECT_FALSE(isFinite(Date{Limits::quiet_NaN()}));
}

}  // namespace
}  // namespace velmora::internal

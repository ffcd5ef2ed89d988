#include "text/InternetDateTime.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>

namespace velmora::internal {
namespace {

using namespace std::chrono_literals;
using std::chrono::sys_days;
using std::chrono::sys_seconds;

struct Row {
  sys_seconds instant;
  std::chrono::minutes offset;
  std::string text;
};

const Row rows[] = {
    {sys_days(2026y / 3 / 1) + 9h + 15min + 42s, 0min, "2026-03-01T09:15:42Z"},
    {sys_seconds(0s), 0min, "1970-01-01T00:00:00Z"},
    {sys_seconds(-1s), 0min, "1969-12-31T23:59:59Z"},
    {sys_days(2024y / 2 / 29) + 23h + 59min + 59s, 0min, "2024-02-29T23:59:59Z"},
    {sys_days(2027y / 1 / 1) - 1s, 0min, "2026-12-31T23:59:59Z"},
    {sys_days(0y / 1 / 1), 0min, "0000-01-01T00:00:00Z"},
    {sys_days(9999y / 12 / 31) + 24h - 1s, 0min, "9999-12-31T23:59:59Z"},
    {sys_seconds(0s), 90min, "1970-01-01T01:30:00+01:30"},
    {sys_seconds(0s), -23h - 59min, "1969-12-31T00:01:00-23:59"},
};

TEST(InternetDateTime, isWrittenAsItIsRead) {
  for (const Row& row : rows) {
    EXPECT_EQ(formatInternetDateTime(row.instant, row.offset), row.text);
    EXPECT_EQ(parseInternetDateTime(row.text), row.instant) << row.text;
  }
}

TEST(InternetDateTime, takesMoreDigitsAfterTheYear9999) {
  EXPECT_EQ(formatInternetDateTime(sys_days(10000y / 1 / 1)), "10000-01-01T00:00:00Z");
  EXPECT_EQ(parseInternetDateTime("10000-01-01T00:00:00Z"), std::nullopt);
}

}  // namespace
}  // namespace velmora::internal

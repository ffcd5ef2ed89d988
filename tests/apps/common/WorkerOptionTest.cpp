#include "common/WorkerOption.h"

#include <gtest/gtest.h>

#include <string>

namespace velmora {
namespace {

using namespace std::string_literals;

TEST(WorkerOption, takesNumbersInItsRange) {
  EXPECT_EQ(workerCountIn("1"), 1U);
  EXPECT_EQ(workerCountIn("2"), 2U);
  EXPECT_EQ(workerCountIn("10"), 10U);
  EXPECT_EQ(workerCountIn("64"), 64U);
}

TEST(WorkerOption, takesNothingElse) {
  for (const std::string& value :
       {""s,       "0"s,   "00"s,  "01"s,  "65"s,  "100"s, "-1"s,  "+1"s,  " 1"s,
        "1 "s,     "1\n"s, "1\0"s, "1.0"s, "1e1"s, "0x1"s, "one"s, "1,2"s, "18446744073709551617"s,
        "\u0661"s, "\xff"s}) {
    EXPECT_EQ(workerCountIn(value), std::nullopt) << value;
  }
}

TEST(WorkerOption, isExplainedInOneLine) {
  EXPECT_EQ(workerOptionFault("0").message, "--workers takes a number from 1 to 64, not 0");
  EXPECT_EQ(workerOptionFault("a\nb").message, "--workers takes a number from 1 to 64, not a?b");
  EXPECT_EQ(workerOptionFault("").message, "--workers without a number");
}

TEST(WorkerOption, saysItsRangeInTheHelp) {
  EXPECT_NE(workerOptionHelp().find("1 to 64"), std::string::npos);
}

}  // namespace
}  // namespace velmora

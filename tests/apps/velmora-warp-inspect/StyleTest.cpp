#include "Style.h"
#include "platform/linux/Environment.h"

#include <gtest/gtest.h>

namespace velmora::inspect {
namespace {

TEST(Styles, alignWithAndWithoutColours) {
  EXPECT_EQ(Style(false).word("valid", Tone::good, 8), "valid   ");
  EXPECT_EQ(Style(true).word("valid", Tone::good, 8), "\x1b[32mvalid\x1b[0m   ");
  EXPECT_EQ(Style(true).word("note", Tone::doubtful, 4), "\x1b[33mnote\x1b[0m");
  EXPECT_EQ(Style(true).word("invalid", Tone::bad, 2), "\x1b[31minvalid\x1b[0m");
}

TEST(Terminals, areUsedAsTheEnvironmentSays) {
  const struct {
    Environment::Variables variables;
    bool wantsColour;
    bool canErase;
  } rows[] = {
      {{}, true, true},
      {{{"TERM", "xterm-256color"}}, true, true},
      {{{"TERM", "dumb"}}, false, false},
      {{{"NO_COLOR", "1"}}, false, true},
      {{{"NO_COLOR", ""}}, true, true},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(testing::PrintToString(row.variables));
    EXPECT_EQ(wantsColour(Environment(row.variables)), row.wantsColour);
    EXPECT_EQ(canErase(Environment(row.variables)), row.canErase);
  }
}

}  // namespace
}  // namespace velmora::inspect

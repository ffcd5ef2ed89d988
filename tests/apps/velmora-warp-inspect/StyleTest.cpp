#include "Style.h"
#include "platform/linux/Environment.h"
#include "tests/support/RowName.h"

#include <gtest/gtest.h>

namespace velmora::inspect {
namespace {

TEST(Styles, alignWithAndWithoutColours) {
  EXPECT_EQ(Style(false).word("valid", Tone::good, 8), "valid   ");
  EXPECT_EQ(Style(true).word("valid", Tone::good, 8), "\x1b[32mvalid\x1b[0m   ");
  EXPECT_EQ(Style(true).word("note", Tone::doubtful, 4), "\x1b[33mnote\x1b[0m");
  EXPECT_EQ(Style(true).word("invalid", Tone::bad, 2), "\x1b[31minvalid\x1b[0m");
}

struct TerminalCase {
  const char* name;
  Environment::Variables variables;
  bool wantsColour;
  bool canErase;
};

class Terminals : public testing::TestWithParam<TerminalCase> {};

TEST_P(Terminals, areUsedAsTheEnvironmentSays) {
  const Environment environment(GetParam().variables);
  EXPECT_EQ(wantsColour(environment), GetParam().wantsColour);
  EXPECT_EQ(canErase(environment), GetParam().canErase);
}

INSTANTIATE_TEST_SUITE_P(
    Environments, Terminals,
    testing::Values(TerminalCase{"empty", {}, true, true},
                    TerminalCase{"terminal", {{"TERM", "xterm-256color"}}, true, true},
                    TerminalCase{"dumb", {{"TERM", "dumb"}}, false, false},
                    TerminalCase{"noColour", {{"NO_COLOR", "1"}}, false, true},
                    TerminalCase{"emptyNoColour", {{"NO_COLOR", ""}}, true, true}),
    RowName());

}  // namespace
}  // namespace velmora::inspect

// velmora-warp-inspect: where its answers go, and how its command line is answered.

#include "tests/support/RowName.h"
#include "tests/fakes/WarpRecords.h"
#include "tests/process/InspectTest.h"

#include <algorithm>

namespace velmora::process {

namespace {

struct InspectUsageCase {
  const char* name;
  std::vector<std::string> arguments;
};

class InspectUsageTest : public InspectTest,
                         public ::testing::WithParamInterface<InspectUsageCase> {};

TEST_P(InspectUsageTest, isAnErrorOfOneLine) {
  const Outcome outcome = run(GetParam().arguments);
  EXPECT_EQ(outcome.exitStatus, 64);
  EXPECT_EQ(outcome.output, "");
  EXPECT_TRUE(outcome.error.starts_with("velmora-warp-inspect: ")) << outcome.error;
  EXPECT_EQ(std::ranges::count(outcome.error, '\n'), 1) << outcome.error;
  EXPECT_TRUE(outcome.error.ends_with('\n'));
}

INSTANTIATE_TEST_SUITE_P(
    Usage, InspectUsageTest,
    ::testing::Values(InspectUsageCase{"nothing", {}}, InspectUsageCase{"command", {"bogus"}},
                      InspectUsageCase{"commandWithALineBreak", {"bo\ngus\x1b[2J"}},
                      InspectUsageCase{"checkNothing", {"check"}},
                      InspectUsageCase{"checkUnknownOption", {"check", "--bogus", "a"}},
                      InspectUsageCase{"checkDash", {"check", "-dash"}},
                      InspectUsageCase{"checkKind", {"check", "--kind=\n", "a"}},
                      InspectUsageCase{"listOperand", {"list", "a\nb"}},
                      InspectUsageCase{"explainNoAction", {"explain", "a"}},
                      InspectUsageCase{"explainNothing", {"explain", "--warp"}},
                      InspectUsageCase{"doctorOperand", {"doctor", "a"}}),
    RowName());

class InspectOutputTest : public InspectTest {};

TEST_F(InspectOutputTest, helpAndVersionArePrinted) {
  EXPECT_EQ(inspect({"--version"}, 0).output, "velmora-warp-inspect " VELMORA_TEST_VERSION "\n");
  EXPECT_NE(inspect({"--help"}, 0).output.find("doctor"), std::string::npos);
  for (const char* subcommand : {"check", "list", "explain", "doctor"}) {
    const std::string help = inspect({subcommand, "--help"}, 0).output;
    EXPECT_NE(help.find(std::string("velmora-warp-inspect ") + subcommand), std::string::npos);
  }
}

TEST_F(InspectOutputTest, readerThatHasGoneEndsItQuietly) {
  makeWarpedFolder("a", "W1");
  command.standardOutput = StandardOutput::brokenPipe;
  for (const std::vector<std::string>& arguments : {std::vector<std::string>{"check", "a", "b"},
                                                    {"list"},
                                                    {"list", "--json"},
                                                    {"explain", "--warp", "a"},
                                                    {"doctor"},
                                                    {"--help"}}) {
    const Outcome outcome = run(arguments);
    EXPECT_EQ(outcome.exitStatus, 74) << arguments.front();
    EXPECT_EQ(outcome.signal, 0);
    EXPECT_EQ(outcome.error, "");
  }
}

TEST_F(InspectOutputTest, readerThatGoesMidwayEndsItSoon) {
  std::string files;
  for (int number = 0; number < 100'000; ++number) {
    files += "missing" + std::to_string(number) + '\0';
  }
  command.input = files;
  command.arguments = {"bash", "-c", R"("$0" "$@" | head -n 1; echo "${PIPESTATUS[0]}")",
                       VELMORA_TEST_INSPECT_PROGRAM};
  EXPECT_EQ(run({"check", "--files0-from=-"}).output, "invalid  manifest  missing0\n74\n");
}

TEST_F(InspectOutputTest, answerThatFindsNoRoomIsAnError) {
  command.arguments = {"sh", "-c", R"(exec "$0" "$@" >/dev/full)", VELMORA_TEST_INSPECT_PROGRAM};
  const Outcome outcome = run({"doctor"});
  EXPECT_EQ(outcome.exitStatus, 74);
  EXPECT_EQ(outcome.error,
            "velmora-warp-inspect: cannot write the answer: No space left on device\n");
}

TEST_F(InspectOutputTest, missingStreamsAreNoMatter) {
  command.arguments = {"sh", "-c", R"(exec "$0" "$@" <&- >&- 2>&-)", VELMORA_TEST_INSPECT_PROGRAM};
  EXPECT_EQ(run({"check", "missing"}).exitStatus, 1);
  EXPECT_EQ(run({"check", "--files0-from=-"}).exitStatus, 0);
}

struct ColourCase {
  const char* name;
  StandardOutput standardOutput;
  Environment variables;
  const char* output;
};

class InspectColourTest : public InspectTest, public ::testing::WithParamInterface<ColourCase> {};

TEST_P(InspectColourTest, isForTerminalsThatWantIt) {
  writeFile(home.path() / "m", markerJSON("W1"));
  command.standardOutput = GetParam().standardOutput;
  command.environment.insert(GetParam().variables.begin(), GetParam().variables.end());
  EXPECT_EQ(inspect({"check", "--kind=marker", "m"}, 0).output, GetParam().output);
}

constexpr const char* plainAnswer = "valid    marker    m\n         Warp W1\n";
constexpr const char* colouredAnswer = "\x1b[32mvalid\x1b[0m    marker    m\n         Warp W1\n";

INSTANTIATE_TEST_SUITE_P(
    Outputs, InspectColourTest,
    ::testing::Values(
        ColourCase{"terminal", StandardOutput::terminal, {{"TERM", "xterm"}}, colouredAnswer},
        ColourCase{"pipe", StandardOutput::pipe, {{"TERM", "xterm"}}, plainAnswer},
        ColourCase{"dumbTerminal", StandardOutput::terminal, {{"TERM", "dumb"}}, plainAnswer},
        ColourCase{"unwanted",
                   StandardOutput::terminal,
                   {{"TERM", "xterm"}, {"NO_COLOR", "1"}},
                   plainAnswer}),
    RowName());

TEST_F(InspectOutputTest, jsonIsNeverColoured) {
  command.standardOutput = StandardOutput::terminal;
  command.environment["TERM"] = "xterm";
  EXPECT_EQ(inspect({"check", "--json", "missing"}, 1).output.find('\x1b'), std::string::npos);
}

TEST_F(InspectOutputTest, shortRunShowsNoBar) {
  makeWarpedFolder("a", "W1");
  command.standardError = StandardError::terminal;
  command.environment["TERM"] = "xterm";
  inspect({"list"}, 0);
  inspect({"check", "missing"}, 1);
}

}  // namespace

}  // namespace velmora::process

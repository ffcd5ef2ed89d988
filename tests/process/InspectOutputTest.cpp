// velmora-warp-inspect: its output streams and its command line.

#include "tests/fakes/WarpRecords.h"
#include "tests/process/InspectTest.h"
#include "tests/process/Trace.h"

#include <algorithm>

namespace velmora::process {

namespace {

class InspectOutputTest : public InspectTest {};

TEST_F(InspectOutputTest, usageErrorsAreOneLine) {
  const std::vector<std::string> rows[] = {
      {}, {"bo\ngus\x1b[2J"}, {"check", "--kind=\n", "a"}, {"list", "a\nb"}};
  for (const std::vector<std::string>& arguments : rows) {
    SCOPED_TRACE(::testing::PrintToString(arguments));
    const Outcome outcome = run(arguments);
    expectCancelled(outcome, 64, outcome.error);
    EXPECT_TRUE(outcome.error.starts_with("velmora-warp-inspect: ")) << outcome.error;
    EXPECT_EQ(std::ranges::count(outcome.error, '\n'), 1) << outcome.error;
    EXPECT_TRUE(outcome.error.ends_with('\n'));
  }
}

TEST_F(InspectOutputTest, helpAndVersionArePrinted) {
  EXPECT_EQ(inspect({"--version"}, 0).output, "velmora-warp-inspect " VELMORA_TEST_VERSION "\n");
  EXPECT_NE(inspect({"--help"}, 0).output.find("doctor"), std::string::npos);
}

TEST_F(InspectOutputTest, closedOutputEndsItWithoutAMessage) {
  makeWarpedFolder("a", "W1");
  command.standardOutput = StandardOutput::brokenPipe;
  for (const std::vector<std::string>& arguments : {std::vector<std::string>{"check", "a", "b"},
                                                    {"list"},
                                                    {"list", "--json"},
                                                    {"explain", "--warp", "a"},
                                                    {"doctor"},
                                                    {"--help"}}) {
    inspect(arguments, 74);
  }
}

TEST_F(InspectOutputTest, outputClosedMidwayEndsItSoon) {
  std::string files;
  for (int number = 0; number < 100'000; ++number) {
    files += "missing" + std::to_string(number) + '\0';
  }
  command.input = files;
  command.arguments = {"bash", "-c", R"("$0" "$@" | head -n 1; echo "${PIPESTATUS[0]}")",
                       VELMORA_TEST_INSPECT_PROGRAM};
  EXPECT_EQ(run({"check", "--files0-from=-"}).output, "invalid  manifest  missing0\n74\n");
}

TEST_F(InspectOutputTest, outputToAFullDeviceIsAnError) {
  command.arguments = {"sh", "-c", R"(exec "$0" "$@" >/dev/full)", VELMORA_TEST_INSPECT_PROGRAM};
  for (const char* argument : {"doctor", "--help", "--version"}) {
    expectCancelled(run({argument}), 74,
                    "velmora-warp-inspect: cannot write the answer: No space left on device\n");
  }
}

TEST_F(InspectOutputTest, missingStreamIsAnErrorIfItIsUsed) {
  const auto runWithout = [this](const char* streams, const std::vector<std::string>& arguments) {
    command.arguments = {"sh", "-c", std::string(R"(exec "$0" "$@" )") + streams,
                         VELMORA_TEST_INSPECT_PROGRAM};
    return run(arguments);
  };
  expectCancelled(runWithout(">&-", {"list"}), 74,
                  "velmora-warp-inspect: cannot write the answer: Bad file descriptor\n");
  expectCancelled(runWithout("<&-", {"check", "--files0-from=-"}), 64,
                  "velmora-warp-inspect: cannot read standard input: Bad file descriptor\n");
  EXPECT_EQ(runWithout("<&- 2>&-", {"check", "missing"}).exitStatus, 1);
  EXPECT_EQ(runWithout("<&- >&- 2>&-", {"check", "missing"}).exitStatus, 74);
}

TEST_F(InspectOutputTest, coloursAreForTerminalsThatAcceptThem) {
  writeFile(home.path() / "m", markerJSON("W1"));
  const std::string plain = "valid    marker    m\n         Warp W1\n";
  const std::string coloured = "\x1b[32mvalid\x1b[0m    marker    m\n         Warp W1\n";
  const auto answer = [this](StandardOutput output, const char* terminal) {
    command.standardOutput = output;
    command.environment["TERM"] = terminal;
    return inspect({"check", "--kind=marker", "m"}, 0).output;
  };
  EXPECT_EQ(answer(StandardOutput::pipe, "xterm"), plain);
  EXPECT_EQ(answer(StandardOutput::terminal, "dumb"), plain);
  EXPECT_EQ(answer(StandardOutput::terminal, "xterm"), coloured);
  EXPECT_EQ(inspect({"check", "--json", "missing"}, 1).output.find('\x1b'), std::string::npos);
}

TEST_F(InspectOutputTest, shortRunShowsNoBar) {
  makeWarpedFolder("a", "W1");
  command.standardError = StandardError::terminal;
  command.environment["TERM"] = "xterm";
  inspect({"list"}, 0);
  inspect({"check", "missing"}, 1);
}

TEST_F(InspectOutputTest, barMovesWithinALargeFile) {
  VelmoraWarpSharedManifest manifest = manifestOf("/a", "W1");
  for (int number = 0; number < 1000; ++number) {
    manifest.entries.append(entryOf("/a/" + std::to_string(number)));
  }
  mirrorManifest(manifest, "W1.json");
  // The manifest is on a slow disk, so the second of its pieces comes after more than a second.
  command.arguments = tracingCommand(home.path() / "trace", "read", {"read:delay_exit=550000"});
  command.arguments.push_back("--trace-path=" + (mirror() / "W1.json").native());
  command.environment["ASAN_OPTIONS"] += ":detect_leaks=0";
  command.environment["TERM"] = "xterm";
  command.standardError = StandardError::terminal;
  for (const std::vector<std::string>& arguments :
       {std::vector<std::string>{"list"}, {"check", mirror() / "W1.json"}}) {
    std::vector<std::string> all = {VELMORA_TEST_INSPECT_PROGRAM};
    all.insert(all.end(), arguments.begin(), arguments.end());
    const std::string bars = run(all).error;
    EXPECT_TRUE(bars.starts_with("\r\x1b[K[")) << bars;
    EXPECT_GE(std::ranges::count(bars, '%'), 2) << bars;
    EXPECT_TRUE(bars.ends_with("\r\x1b[K")) << bars;
  }
}

}  // namespace

}  // namespace velmora::process

// velmora-warp-inspect explain: the same answers as the actions', with their reasons.

#include "tests/fakes/WarpRecords.h"
#include "tests/process/InspectTest.h"

namespace velmora::process {

namespace {

class InspectExplainTest : public InspectTest {
 protected:
  InspectExplainTest() {
    home.makeFolder("warped/inner");
    home.makeFolder("plain");
    home.makeFile("file");
    writeFile(home.makeFolder("stray") + "/.velmora-warped.json", markerJSON("W9"));
    makeWarpedFolder("warped", "W1");
    command.workingDirectory = home.path() / "folders";
  }

  std::string path(const std::string& name) const { return home.path() / "folders" / name; }

  static std::vector<std::string> reasons(const std::vector<JSONLine>& lines) {
    std::vector<std::string> result;
    for (const JSONLine& line : lines) {
      result.push_back(line.text("/reason"));
    }
    return result;
  }

  /// Whether the action itself takes the item.
  bool isTaken(const std::string& action, const std::string& item) {
    Command finderAction = command;
    finderAction.arguments = {VELMORA_TEST_PROGRAM, "--check"};
    if (action == "--restore") {
      finderAction.arguments.push_back(action);
    }
    finderAction.arguments.insert(finderAction.arguments.end(), {"--", item});
    return process::run(finderAction).exitStatus == 0;
  }
};

TEST_F(InspectExplainTest, warpTellsEveryReason) {
  const std::vector<JSONLine> lines =
      inspectAsJSON({"explain", "--warp", "plain", "file", "missing", "warped", "warped/inner"}, 1);
  EXPECT_EQ(reasons(lines), (std::vector<std::string>{"accepted", "notADirectory", "notADirectory",
                                                      "alreadyWarped", "insideWarpedFolder"}));
  ASSERT_EQ(lines.size(), 5U);
  EXPECT_EQ(lines[0].keys(), (std::vector<std::string>{"path", "accepted", "reason", "root"}));
  EXPECT_EQ(lines[0].text("/path"), path("plain"));
  EXPECT_TRUE(lines[0].flag("/accepted"));
  EXPECT_TRUE(lines[0].isNull("/root"));
  EXPECT_FALSE(lines[4].flag("/accepted"));
  EXPECT_EQ(lines[4].text("/root"), path("warped"));
}

TEST_F(InspectExplainTest, restoreTellsEveryReason) {
  writeFile(path("warped/inner/.velmora-warped.json"), markerJSON("W1"));
  const std::vector<JSONLine> lines =
      inspectAsJSON({"explain", "--restore", "warped", "plain", "stray", "warped/inner"}, 1);
  EXPECT_EQ(reasons(lines),
            (std::vector<std::string>{"accepted", "noMarker", "notWarped", "insideWarpedFolder"}));
}

TEST_F(InspectExplainTest, answersAreThoseOfTheActions) {
  for (const char* action : {"--warp", "--restore"}) {
    for (const char* item : {"plain", "file", "missing", "warped", "warped/inner", "stray",
                             "http://host/a", "", "file:///", "."}) {
      const bool isTakenByAction = isTaken(action, item);
      EXPECT_EQ(run({"explain", action, "--", item}).exitStatus, isTakenByAction ? 0 : 1)
          << action << " " << item;
    }
  }
}

TEST_F(InspectExplainTest, acceptedItemsOnlyAreAYes) {
  EXPECT_EQ(inspect({"explain", "--warp", "plain"}, 0).output,
            "accepted  " + path("plain") + "\n          accepted: is a folder and not warped\n");
}

TEST_F(InspectExplainTest, operandsThatNameNoFileAreTold) {
  const std::vector<JSONLine> lines = inspectAsJSON(
      {"explain", "--warp", "--", "https://a/b\n", "", "\xff", "file:///%00", "plain"}, 1);
  EXPECT_EQ(reasons(lines), (std::vector<std::string>{"notAFileURL", "notAFileURL", "notAFileURL",
                                                      "notAFileURL", "accepted"}));
  ASSERT_EQ(lines.size(), 5U);
  EXPECT_EQ(lines[0].text("/path"), "https://a/b\n");
  EXPECT_EQ(lines[2].text("/path"), "\uFFFD");
}

TEST_F(InspectExplainTest, decomposedNameIsTheWarpedFolder) {
  makeWarpedFolder("caf\u00e9", "W2");
  home.makeFolder("cafe\u0301");
  const std::vector<JSONLine> lines = inspectAsJSON({"explain", "--warp", "cafe\u0301"}, 1);
  ASSERT_EQ(lines.size(), 1U);
  EXPECT_EQ(lines[0].text("/reason"), "alreadyWarped");
  EXPECT_EQ(lines[0].text("/path"), path("cafe\u0301"));
  EXPECT_EQ(lines[0].text("/root"), path("caf\u00e9"));
}

TEST_F(InspectExplainTest, hostileNamesSteerNothing) {
  const std::string name = "a\n\x1b[2J";
  home.makeFolder(name);
  EXPECT_EQ(
      inspect({"explain", "--warp", name}, 0).output,
      "accepted  " + path("a\\n\\u{1b}[2J") + "\n          accepted: is a folder and not warped\n");
}

TEST_F(InspectExplainTest, itemsMayComeFromStandardInput) {
  command.input = std::string("plain\0warped\0", 13);
  EXPECT_EQ(reasons(inspectAsJSON({"explain", "--warp", "--files0-from=-"}, 1)),
            (std::vector<std::string>{"accepted", "alreadyWarped"}));
  command.input = "";
  EXPECT_TRUE(inspectAsJSON({"explain", "--restore", "--files0-from=-"}, 0).empty());
}

TEST_F(InspectExplainTest, whatTheAnswerLacksIsSaid) {
  std::filesystem::remove_all(mirror());
  writeFile(mirror(), "");
  writeFile(sharedRoot() / "destroyed-manifest-index.json", "[]");
  const Outcome outcome = run({"explain", "--warp", "warped"});
  EXPECT_EQ(outcome.exitStatus, 0);
  EXPECT_EQ(outcome.error.find("velmora-warp-inspect: the mirror cannot be listed: "), 0U)
      << outcome.error;
  EXPECT_NE(outcome.error.find("\nvelmora-warp-inspect: the index of destroyed manifests cannot "),
            std::string::npos)
      << outcome.error;
}

}  // namespace

}  // namespace velmora::process

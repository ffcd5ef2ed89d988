// velmora-warp-inspect explain: the answers of the actions, with their reasons.

#include "tests/fakes/WarpRecords.h"
#include "tests/process/InspectTest.h"

#include <optional>
#include <string_view>

namespace velmora::process {

namespace {

using Names = std::vector<std::string>;

class InspectExplainTest : public InspectTest {
 protected:
  InspectExplainTest() {
    home.makeFolder("plain");
    home.makeFile("file");
    writeFile(home.makeFolder("stray") + "/.velmora-warped.json", markerJSON("W9"));
    makeWarpedFolder("warped", "W1");
    writeFile(home.makeFolder("warped/inner") + "/.velmora-warped.json", markerJSON("W1"));
    command.workingDirectory = home.folders();
  }

  std::string path(const std::string& name) const { return home.folders() / name; }

  static Names reasons(const std::vector<JSONLine>& lines) {
    Names result;
    for (const JSONLine& line : lines) {
      result.push_back(line.text("/reason"));
    }
    return result;
  }
};

TEST_F(InspectExplainTest, everyReasonIsReported) {
  makeWarpedFolder("caf\u00e9", "W2");
  home.makeFolder("cafe\u0301");
  const std::vector<JSONLine> lines =
      inspectAsJSON({"explain", "--warp", "--", "plain", "file", "warped/inner", "cafe\u0301",
                     "https://a/b\n", "\xff"},
                    1);
  EXPECT_EQ(reasons(lines), (Names{"accepted", "notADirectory", "insideWarpedFolder",
                                   "alreadyWarped", "notAFileURL", "notAFileURL"}));
  EXPECT_EQ(lines.at(0).text("/path"), path("plain"));
  EXPECT_TRUE(lines.at(0).flag("/accepted"));
  EXPECT_TRUE(lines.at(0).isNull("/root"));
  EXPECT_FALSE(lines.at(2).flag("/accepted"));
  EXPECT_EQ(lines.at(2).text("/root"), path("warped"));
  EXPECT_EQ(lines.at(3).text("/path"), path("cafe\u0301"));
  EXPECT_EQ(lines.at(3).text("/root"), path("caf\u00e9"));
  EXPECT_EQ(lines.at(4).text("/path"), "https://a/b\n");
  EXPECT_EQ(lines.at(5).text("/path"), "\uFFFD");
  EXPECT_EQ(reasons(inspectAsJSON(
                {"explain", "--restore", "warped", "plain", "stray", "warped/inner"}, 1)),
            (Names{"accepted", "noMarker", "notWarped", "insideWarpedFolder"}));
}

TEST_F(InspectExplainTest, answersEqualThoseOfTheActions) {
  for (const char* action : {"--warp", "--restore"}) {
    for (const char* item : {"stray", "http://host/a", "", "file:///", "."}) {
      Command check = command;
      check.arguments = {VELMORA_TEST_PROGRAM, "--check"};
      if (action == std::string_view("--restore")) {
        check.arguments.push_back(action);
      }
      check.arguments.insert(check.arguments.end(), {"--", item});
      const std::optional<int> answer = process::run(check).exitStatus;
      EXPECT_TRUE(answer == 0 || answer == 1) << action << " " << item;
      EXPECT_EQ(run({"explain", action, "--", item}).exitStatus, answer) << action << " " << item;
    }
  }
}

TEST_F(InspectExplainTest, onlyAcceptedItemsGiveExitStatusZero) {
  const std::string name = "a\n\x1b[2J";
  home.makeFolder(name);
  EXPECT_EQ(
      inspect({"explain", "--warp", name}, 0).output,
      "accepted  " + path("a\\n\\u{1b}[2J") + "\n          accepted: is a folder and not warped\n");
}

TEST_F(InspectExplainTest, itemsMayComeFromStandardInput) {
  command.input = std::string("plain\0warped\0", 13);
  EXPECT_EQ(reasons(inspectAsJSON({"explain", "--warp", "--files0-from=-"}, 1)),
            (Names{"accepted", "alreadyWarped"}));
  command.input = "";
  EXPECT_TRUE(inspectAsJSON({"explain", "--restore", "--files0-from=-"}, 0).empty());
}

TEST_F(InspectExplainTest, itemThatMayNotBeLookedAtIsNotMissing) {
  home.makeFolder("locked/a");
  lockOut(home.folders() / "locked");
  for (const char* action : {"--warp", "--restore"}) {
    const JSONLine line = onlyLine({"explain", action, "locked/a"}, 1);
    EXPECT_EQ(line.text("/reason"), "unreadable") << action;
    EXPECT_EQ(line.text("/error/message"), "Permission denied") << action;
  }
}

TEST_F(InspectExplainTest, missingInformationIsReported) {
  std::filesystem::remove_all(mirror());
  writeFile(mirror(), "");
  writeFile(index(), "[]");
  const Outcome outcome = run({"explain", "--warp", "warped"});
  EXPECT_EQ(outcome.exitStatus, 0);
  EXPECT_EQ(outcome.error, "velmora-warp-inspect: index " + index().native() +
                               ": line 1, column 1: typeMismatch: Expected an object but found "
                               "an array.\nvelmora-warp-inspect: mirror " +
                               mirror().native() + ": unreadable: Not a directory\n");
}

}  // namespace

}  // namespace velmora::process

// velmora-warp-inspect list: the mirror on disk.

#include "tests/fakes/WarpRecords.h"
#include "tests/process/InspectTest.h"

#include <sys/stat.h>

namespace velmora::process {

namespace {

class InspectListTest : public InspectTest {
 protected:
  void writeIndex(std::string_view text) const {
    writeFile(sharedRoot() / "destroyed-manifest-index.json", text);
  }
};

TEST_F(InspectListTest, newestManifestIsFirst) {
  for (const int day : {2, 1, 3}) {
    VelmoraWarpSharedManifest manifest = manifestOf("/a", "W" + std::to_string(day));
    manifest.createdAt = *parseInternetDateTime("2025-01-0" + std::to_string(day) + "T00:00:00Z");
    mirrorManifest(manifest, std::to_string(day) + ".json");
  }
  const std::vector<JSONLine> lines = inspectAsJSON({"list"}, 0);
  ASSERT_EQ(lines.size(), 3U);
  EXPECT_EQ(lines[0].text("/manifest/createdAt"), "2025-01-03T00:00:00Z");
  EXPECT_EQ(lines[1].text("/manifest/createdAt"), "2025-01-02T00:00:00Z");
  EXPECT_EQ(lines[2].text("/manifest/createdAt"), "2025-01-01T00:00:00Z");
}

TEST_F(InspectListTest, everyVerdictIsTold) {
  makeWarpedFolder("1", "W1");
  makeWarpedFolder("2", "W2");
  const std::string destroyed = makeWarpedFolder("3", "W3");
  VelmoraWarpSharedManifest sameKey = manifestOf(destroyed, "W4");
  sameKey.manifestKey = "manifests/old.json";
  mirrorManifest(sameKey, "W4.json");
  auto oldKey = tombstoneOf(sameKey);
  oldKey.warpID = "W0";
  writeIndex(indexJSON({tombstoneOf(manifestOf(destroyed, "W3")), oldKey}));
  mirrorManifest(manifestOf(home.makeFolder("5"), "W5"), "W5.json");
  const std::string unreadable = makeWarpedFolder("6", "W6") + "/.velmora-warped.json";
  std::filesystem::remove(unreadable);
  ASSERT_EQ(::mkfifo(unreadable.c_str(), 0600), 0);
  writeFile(makeWarpedFolder("7", "W7") + "/.velmora-warped.json", "{\n\"warpID\":null}");
  writeFile(makeWarpedFolder("8", "W8") + "/.velmora-warped.json", markerJSON("W1"));
  const std::vector<JSONLine> lines = inspectAsJSON({"list"}, 0);
  std::vector<std::string> verdicts;
  for (const JSONLine& line : lines) {
    verdicts.push_back(line.text("/manifest/warpID") + " " + line.text("/verdict"));
  }
  EXPECT_EQ(verdicts, (std::vector<std::string>{"W1 confirmed", "W2 confirmed",
                                                "W3 destroyedByWarpID", "W4 destroyedByManifestKey",
                                                "W5 noMarker", "W6 unreadableMarker",
                                                "W7 malformedMarker", "W8 markerOfAnotherWarp"}));
  EXPECT_EQ(lines.at(0).keys(), (std::vector<std::string>{"file", "manifest", "verdict"}));
  EXPECT_EQ(lines.at(0).text("/file"), mirror() / "W1.json");
  EXPECT_EQ(lines.at(5).text("/error/message"), "Invalid argument");
  EXPECT_EQ(lines.at(6).text("/error/kind"), "valueNotFound");
  EXPECT_EQ(lines.at(6).number("/error/line"), 2U);
}

TEST_F(InspectListTest, refusedFilesComeLast) {
  writeFile(mirror() / "A.json", "{");
  makeWarpedFolder("a", "W1");
  std::filesystem::create_directory(mirror() / "directory.json");
  ASSERT_EQ(::mkfifo((mirror() / "fifo.json").c_str(), 0600), 0);
  writeFile(mirror() / "ignored.txt", "");
  const std::vector<JSONLine> lines = inspectAsJSON({"list"}, 0);
  ASSERT_EQ(lines.size(), 4U);
  EXPECT_EQ(lines[0].text("/verdict"), "confirmed");
  EXPECT_EQ(lines[1].text("/file"), mirror() / "A.json");
  EXPECT_EQ(lines[1].text("/verdict"), "invalid");
  EXPECT_EQ(lines[1].text("/error/kind"), "dataCorrupted");
  EXPECT_EQ(lines[2].text("/error/message"), "Is a directory");
  EXPECT_EQ(lines[3].text("/error/message"), "Invalid argument");
}

TEST_F(InspectListTest, hostileNamesSteerNothing) {
  writeFile(mirror() / "a\n\x1b[2J\xff.json", "");
  const std::string output = inspect({"list"}, 0).output;
  EXPECT_NE(output.find("/a\\n\\u{1b}[2J\uFFFD.json\n"), std::string::npos) << output;
  EXPECT_EQ(output.find('\x1b'), std::string::npos);
  EXPECT_EQ(inspectAsJSON({"list"}, 0).at(0).text("/file"),
            (mirror() / "a\n\x1b[2J\uFFFD.json").native());
}

TEST_F(InspectListTest, peopleGetTheFolderAndTheReason) {
  const std::string folder = makeWarpedFolder("a", "W1");
  EXPECT_EQ(inspect({"list"}, 0).output,
            "warped      " + folder +
                "\n"
                "            confirmed: the folder holds the marker of this Warp\n"
                "            2001-01-01T00:00:00Z, Warp W1, verified, 0 entries, 0 samples, key "
                "manifests/W1.json\n"
                "            " +
                (mirror() / "W1.json").native() + "\n1 file: 1 warped, 0 not warped, 0 invalid\n");
}

TEST_F(InspectListTest, unusableIndexIsToldAndNothingElseChanges) {
  makeWarpedFolder("a", "W1");
  writeIndex("{\"version\":2}");
  const std::vector<JSONLine> lines = inspectAsJSON({"list"}, 0);
  ASSERT_EQ(lines.size(), 2U);
  EXPECT_EQ(lines[0].text("/verdict"), "confirmed");
  EXPECT_EQ(lines[1].keys(), (std::vector<std::string>{"index", "error"}));
  EXPECT_EQ(lines[1].text("/index"), sharedRoot() / "destroyed-manifest-index.json");
  EXPECT_EQ(lines[1].text("/error/codingPath/0"), "version");
  EXPECT_EQ(lines[1].number("/error/column"), 12U);
}

TEST_F(InspectListTest, missingMirrorIsFine) {
  EXPECT_TRUE(inspectAsJSON({"list"}, 0).empty());
  EXPECT_EQ(inspect({"list"}, 0).output, "There is no mirror at " + mirror().native() + "\n");
}

TEST_F(InspectListTest, mirrorThatIsNoDirectoryCannotBeListed) {
  writeFile(mirror(), "");
  const std::vector<JSONLine> lines = inspectAsJSON({"list"}, 1);
  ASSERT_EQ(lines.size(), 1U);
  EXPECT_EQ(lines[0].keys(), (std::vector<std::string>{"mirror", "error"}));
  EXPECT_EQ(lines[0].text("/mirror"), mirror());
  EXPECT_EQ(lines[0].text("/error/message"), "Not a directory");
}

TEST_F(InspectListTest, mirrorThatMayNotBeReadCannotBeListed) {
  std::filesystem::create_directories(mirror());
  std::filesystem::permissions(mirror(), std::filesystem::perms::none);
  runWithoutPrivileges();
  EXPECT_EQ(jsonLines(run({"list", "--json"}).output).at(0).text("/error/message"),
            "Permission denied");
  // For whoever takes the home away.
  std::filesystem::permissions(mirror(), std::filesystem::perms::owner_all);
}

}  // namespace

}  // namespace velmora::process

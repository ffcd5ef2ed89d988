// velmora-warp-inspect list: the mirror on disk.

#include "tests/fakes/WarpRecords.h"
#include "tests/process/InspectTest.h"

#include <sys/stat.h>

namespace velmora::process {

namespace {

using Names = std::vector<std::string>;

class InspectListTest : public InspectTest {};

TEST_F(InspectListTest, newestManifestIsFirst) {
  Names moments = {"2025-01-02T00:00:00Z", "2025-01-01T00:00:00Z", "2025-01-03T00:00:00Z"};
  for (const std::string& moment : moments) {
    VelmoraWarpSharedManifest manifest = manifestOf("/a", moment);
    manifest.createdAt = *parseInternetDateTime(moment);
    mirrorManifest(manifest, moment.substr(0, 10) + ".json");
  }
  Names listed;
  for (const JSONLine& line : inspectAsJSON({"list"}, 0)) {
    listed.push_back(line.text("/manifest/createdAt"));
  }
  EXPECT_EQ(listed, (Names{moments[2], moments[0], moments[1]}));
}

TEST_F(InspectListTest, everyVerdictIsReported) {
  makeWarpedFolder("1", "W1");
  makeWarpedFolder("2", "W2");
  const std::string destroyed = makeWarpedFolder("3", "W3");
  VelmoraWarpSharedManifest sameKey = manifestOf(destroyed, "W4");
  sameKey.manifestKey = "manifests/old.json";
  mirrorManifest(sameKey, "W4.json");
  auto oldKey = tombstoneOf(sameKey);
  oldKey.warpID = "W0";
  writeFile(index(), indexJSON({tombstoneOf(manifestOf(destroyed, "W3")), oldKey}));
  mirrorManifest(manifestOf(home.makeFolder("5"), "W5"), "W5.json");
  const std::string unreadable = makeWarpedFolder("6", "W6") + "/.velmora-warped.json";
  std::filesystem::remove(unreadable);
  ASSERT_EQ(::mkfifo(unreadable.c_str(), 0600), 0);
  writeFile(makeWarpedFolder("7", "W7") + "/.velmora-warped.json", "{\n\"warpID\":null}");
  writeFile(makeWarpedFolder("8", "W8") + "/.velmora-warped.json", markerJSON("W1"));
  const std::vector<JSONLine> lines = inspectAsJSON({"list"}, 0);
  Names verdicts;
  for (const JSONLine& line : lines) {
    verdicts.push_back(line.text("/manifest/warpID") + " " + line.text("/verdict"));
  }
  EXPECT_EQ(verdicts, (Names{"W1 confirmed", "W2 confirmed", "W3 destroyedByWarpID",
                             "W4 destroyedByManifestKey", "W5 noMarker", "W6 unreadableMarker",
                             "W7 malformedMarker", "W8 markerOfAnotherWarp"}));
  EXPECT_EQ(lines.at(0).text("/file"), mirror() / "W1.json");
  EXPECT_EQ(lines.at(5).text("/error/message"), "Invalid argument");
  EXPECT_EQ(lines.at(6).text("/error/kind"), "valueNotFound");
  EXPECT_EQ(lines.at(6).number("/error/line"), 2U);
}

TEST_F(InspectListTest, refusedFilesComeLast) {
  writeFile(mirror() / "A\n\x1b[2J\xff.json", "{");
  makeWarpedFolder("a", "W1");
  std::filesystem::create_directory(mirror() / "directory.json");
  ASSERT_EQ(::mkfifo((mirror() / "fifo.json").c_str(), 0600), 0);
  writeFile(mirror() / "ignored.txt", "");
  const std::vector<JSONLine> lines = inspectAsJSON({"list"}, 0);
  ASSERT_EQ(lines.size(), 4U);
  EXPECT_EQ(lines[0].text("/verdict"), "confirmed");
  EXPECT_EQ(lines[1].text("/file"), mirror() / "A\n\x1b[2J\uFFFD.json");
  EXPECT_EQ(lines[1].text("/verdict"), "invalid");
  EXPECT_EQ(lines[1].text("/error/kind"), "dataCorrupted");
  EXPECT_EQ(lines[2].text("/error/message"), "Is a directory");
  EXPECT_EQ(lines[3].text("/error/message"), "Invalid argument");
  const std::string output = inspect({"list"}, 0).output;
  EXPECT_NE(output.find("/A\\n\\u{1b}[2J\\xff.json\n"), std::string::npos) << output;
}

TEST_F(InspectListTest, textHasTheFolderAndTheReason) {
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

TEST_F(InspectListTest, unusableIndexIsReportedAndNothingElseChanges) {
  makeWarpedFolder("a", "W1");
  writeFile(index(), "{\"version\":2}");
  const std::vector<JSONLine> lines = inspectAsJSON({"list"}, 0);
  ASSERT_EQ(lines.size(), 2U);
  EXPECT_EQ(lines[0].text("/verdict"), "confirmed");
  EXPECT_EQ(lines[1].text("/index"), index());
  EXPECT_EQ(lines[1].text("/error/codingPath/0"), "version");
  EXPECT_EQ(lines[1].number("/error/column"), 12U);
}

TEST_F(InspectListTest, mirrorMayBeMissingButMustBeAReadableDirectory) {
  const JSONLine missing = onlyLine({"list"}, 0);
  EXPECT_EQ(missing.text("/mirror"), mirror());
  EXPECT_FALSE(missing.flag("/exists"));
  EXPECT_EQ(inspect({"list"}, 0).output, "mirror      " + mirror().native() +
                                             "\n            does not exist: no folder is warped\n");
  writeFile(mirror(), "");
  const JSONLine line = onlyLine({"list"}, 1);
  EXPECT_EQ(line.text("/mirror"), mirror());
  EXPECT_EQ(line.text("/error/message"), "Not a directory");
  std::filesystem::remove(mirror());
  std::filesystem::create_directories(mirror());
  lockOut(mirror());
  EXPECT_EQ(jsonLines(run({"list", "--json"}).output).at(0).text("/error/message"),
            "Permission denied");
}

TEST_F(InspectListTest, markerThatMayNotBeLookedAtIsNotMissing) {
  makeWarpedFolder("locked/a", "W1");
  lockOut(home.folders() / "locked");
  const JSONLine line = onlyLine({"list"}, 0);
  EXPECT_EQ(line.text("/verdict"), "unreadableMarker");
  EXPECT_EQ(line.text("/error/message"), "Permission denied");
}

TEST_F(InspectListTest, placesThatMayNotBeLookedAtAreNotMissing) {
  std::filesystem::create_directories(mirror());
  lockOut(sharedRoot());
  EXPECT_EQ(inspect({"list"}, 1).output, "index       " + index().native() +
                                             "\n            unreadable: Permission denied\n" +
                                             "mirror      " + mirror().native() +
                                             "\n            unreadable: Permission denied\n");
}

}  // namespace

}  // namespace velmora::process

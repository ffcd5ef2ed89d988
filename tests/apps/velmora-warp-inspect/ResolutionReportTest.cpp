#include "ResolutionReport.h"
#include "platform/PlatformError.h"
#include "tests/fakes/RecordedWarps.h"
#include "tests/fakes/WarpRecords.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace velmora::inspect {
namespace {

constexpr const char* indexPath = "/C/Warp/destroyed-manifest-index.json";

class ResolutionReportTest : public testing::Test {
 protected:
  ResolutionReport report() {
    return reportOn(resolveWarpedFolders(fake.platform()), fake.platform());
  }

  static std::string inMirror(const std::string& name) { return "/C/Warp/ManifestMirror/" + name; }

  FakePlatform fake;
};

TEST_F(ResolutionReportTest, manifestsHaveTheirVerdicts) {
  using enum ManifestVerdict;
  recordWarp(fake, "/confirmed", "W1");
  mirror(fake, manifestOf("/unmarked", "W2"));
  mirror(fake, manifestOf("/other", "W3"));
  mark(fake, "/other", "W0");
  mirror(fake, manifestOf("/malformed", "W4"));
  fake.fileSystem.createDirectories("/malformed");
  fake.fileSystem.files["/malformed/.velmora-warped.json"] = "\n {}";
  recordWarp(fake, "/destroyed", "W5");
  fake.fileSystem.files[indexPath] = indexJSON({tombstoneOf(manifestOf("/destroyed", "W5"))});
  mirror(fake, manifestOf("/unreadable", "W6"));
  fake.fileSystem.createDirectories("/unreadable/.velmora-warped.json");
  const ResolutionReport resolution = report();
  std::vector<std::pair<std::string, ManifestVerdict>> verdicts;
  for (const ReportedManifest& judged : resolution.judged) {
    verdicts.emplace_back(judged.manifest.warpID.utf8(), judged.verdict);
  }
  ASSERT_EQ(verdicts, (decltype(verdicts){{"W1", confirmed},
                                          {"W2", noMarker},
                                          {"W3", markerOfAnotherWarp},
                                          {"W4", malformedMarker},
                                          {"W5", destroyedByWarpID},
                                          {"W6", unreadableMarker}}));
  EXPECT_EQ(resolution.judged[0].file, inMirror("W1.json"));
  EXPECT_EQ(resolution.judged[0].fault, std::nullopt);
  // The place of the fault is in the marker.
  EXPECT_EQ(resolution.judged[3].fault.value().place, (Place{2, 2}));
  EXPECT_EQ(resolution.judged[5].fault.value().kind, "unreadable");
  EXPECT_EQ(resolution.tombstoneCount, 1U);
  EXPECT_EQ(resolution.confirmedCount(), 1U);
}

TEST_F(ResolutionReportTest, unusableFilesHaveTheirFaultAndPlace) {
  recordWarp(fake, "/a", "W1");
  recordWarp(fake, "/b", "W2");
  fake.fileSystem.files[inMirror("bad.json")] = "{\"version\":\n[]}";
  fake.fileSystem.files[inMirror("notes.txt")] = "";
  fake.fileSystem.files[indexPath] = "\n{\"version\":2}";
  const ResolutionReport resolution = report();
  ASSERT_EQ(resolution.refused.size(), 1U);
  EXPECT_EQ(resolution.refused[0].file, inMirror("bad.json"));
  EXPECT_EQ(resolution.refused[0].fault.kind, "typeMismatch");
  EXPECT_EQ(resolution.refused[0].fault.place, (Place{2, 1}));
  EXPECT_EQ(resolution.indexFault.value().kind, "dataCorrupted");
  EXPECT_EQ(resolution.indexFault.value().place, (Place{2, 12}));
  EXPECT_EQ(resolution.confirmedCount(), 2U);
  EXPECT_TRUE(resolution.isComplete());
}

TEST_F(ResolutionReportTest, placesThatCannotBeLookedAtAreNotMissing) {
  fake.locations.groupContainers["group.io.tolvane.Velmora"] = "/C";
  EXPECT_TRUE(report().isMirrorMissing());
  EXPECT_EQ(report().indexExists, false);
  EXPECT_TRUE(placeFaultsIn(report()).empty());
  fake.fileSystem.readFailure = throwing(posixError(ELOOP));
  fake.fileSystem.entryNamesFailure = throwing(posixError(EACCES));
  const ResolutionReport resolution = report();
  EXPECT_FALSE(resolution.isMirrorMissing());
  EXPECT_EQ(resolution.mirrorExists, std::nullopt);
  EXPECT_EQ(resolution.indexExists, std::nullopt);
  const std::vector<PlaceFault> faults = placeFaultsIn(resolution);
  ASSERT_EQ(faults.size(), 2U);
  EXPECT_EQ(faults[0].name, "index");
  EXPECT_EQ(faults[0].path, Text(indexPath));
  EXPECT_EQ(faults[0].fault->message, "Too many levels of symbolic links");
  EXPECT_EQ(faults[1].name, "mirror");
  EXPECT_EQ(faults[1].fault->message, "Permission denied");
}

TEST(ManifestVerdicts, haveTheirNamesAndExplanations) {
  using enum ManifestVerdict;
  const struct {
    ManifestVerdict verdict;
    const char* name;
    const char* explanation;
  } rows[] = {
      {confirmed, "confirmed", "the folder holds the marker of this Warp"},
      {destroyedByWarpID, "destroyedByWarpID", "the index records this Warp as destroyed"},
      {destroyedByManifestKey, "destroyedByManifestKey",
       "the index records this object key as destroyed"},
      {noMarker, "noMarker", "the folder holds no marker"},
      {unreadableMarker, "unreadableMarker", "the folder's marker cannot be read"},
      {malformedMarker, "malformedMarker", "the folder's marker is not one"},
      {markerOfAnotherWarp, "markerOfAnotherWarp", "the folder's marker names another Warp"},
      {aroundNoItem, "aroundNoItem", "the folder is another one"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(name(row.verdict), row.name);
    EXPECT_EQ(explanationOf(row.verdict), row.explanation);
  }
}

TEST_F(ResolutionReportTest, placesAreThoseThatTheActionsUse) {
  fake.locations.groupContainers["group.io.tolvane.Velmora"] = "/C";
  const std::optional<SharedPlaces> places = report().places;
  ASSERT_TRUE(places.has_value());
  EXPECT_EQ(places->root, Text("/C/Warp"));
  EXPECT_EQ(places->rootParent, SharedWarpRootParent::groupContainer);
  EXPECT_EQ(places->mirror, Text("/C/Warp/ManifestMirror"));
  EXPECT_EQ(places->index, Text(indexPath));
  EXPECT_EQ(places->handoff, Text("/C/Warp/FinderHandoff"));
}

TEST_F(ResolutionReportTest, placesAreAbsentWithoutARoot) {
  EXPECT_FALSE(report().places.has_value());
}

}  // namespace
}  // namespace velmora::inspect

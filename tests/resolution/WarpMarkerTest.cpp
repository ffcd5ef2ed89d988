#include "json/DecodingError.h"
#include "json/JSONReader.h"
#include "resolution/WarpMarker.h"
#include "tests/support/RowName.h"
#include "tests/support/AnsweredDocuments.h"
#include "tests/fakes/RecordedWarps.h"
#include "tests/resolution/MirroredManifests.h"
#include "tests/resolution/RecordingObserver.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <exception>
#include <map>
#include <new>
#include <stdexcept>
#include <string>
#include <vector>

namespace velmora {
namespace {

using Paths = std::vector<std::string>;

/// A folder /a whose manifest is of the Warp "W".
class Markers : public testing::Test {
 protected:
  Markers() {
    manifests = {mirroredManifestOf("/a", "W")};
    fake.fileSystem.createDirectories("/a");
  }

  /// The folders of the confirmed manifests, in order.
  Paths confirmed() {
    Paths folders;
    for (const MirroredManifest& manifest : confirmedWarpManifests(
             manifests, recordedWarpRoot, fake.fileSystem, fake.paths, observer)) {
      folders.push_back(manifest.manifest.originalFolderPath.utf8());
    }
    return folders;
  }

  void recordTombstones(std::vector<VelmoraWarpSharedDestroyedManifestRecord> records) {
    fake.fileSystem.files[std::string(recordedWarpRoot) + "/destroyed-manifest-index.json"] =
        indexJSON(std::move(records));
  }

  FakePlatform fake;
  std::vector<MirroredManifest> manifests;
  RecordingObserver observer;
};

TEST_F(Markers, confirmTheirManifests) {
  mark(fake, "/a", "W");
  EXPECT_EQ(confirmed(), Paths{"/a"});
  EXPECT_EQ(observer.verdicts.at("/mirror/W.json"), ManifestVerdict::confirmed);
}

TEST_F(Markers, areMissingInRestoredFolders) {
  EXPECT_TRUE(confirmed().empty());
  EXPECT_EQ(observer.verdicts.at("/mirror/W.json"), ManifestVerdict::noMarker);
}

TEST_F(Markers, thatCannotBeReadConfirmNothing) {
  fake.fileSystem.createDirectories("/a/.velmora-warped.json");
  EXPECT_TRUE(confirmed().empty());
  EXPECT_EQ(observer.verdicts.at("/mirror/W.json"), ManifestVerdict::unreadableMarker);
  EXPECT_EQ(observer.markerErrors.at("/mirror/W.json"), "Is a directory");
}

TEST_F(Markers, areUnreadableOnlyWhereTheyAre) {
  fake.fileSystem.readFailure = throwing(posixError(EIO));
  EXPECT_TRUE(confirmed().empty());
  EXPECT_EQ(observer.verdicts.at("/mirror/W.json"), ManifestVerdict::noMarker);
  EXPECT_TRUE(observer.markerErrors.empty());
  mark(fake, "/a", "W");
  EXPECT_TRUE(confirmed().empty());
  EXPECT_EQ(observer.verdicts.at("/mirror/W.json"), ManifestVerdict::unreadableMarker);
  EXPECT_EQ(observer.markerErrors.at("/mirror/W.json"), "Input/output error");
}

TEST_F(Markers, areNotTakenForMissingWhenMemoryRunsOut) {
  mark(fake, "/a", "W");
  fake.fileSystem.readFailure = throwing(std::bad_alloc());
  EXPECT_THROW(static_cast<void>(confirmed()), std::bad_alloc);
}

/// Wants no more after the first verdict, and keeps it.
class ThrowingObserver final : public ResolutionObserver {
 public:
  std::vector<ManifestVerdict> verdicts;

  void didJudgeManifest(const MirroredManifest&, ManifestVerdict verdict,
                        const std::exception*) override {
    verdicts.push_back(verdict);
    throw std::runtime_error("enough");
  }
};

TEST_F(Markers, getOneVerdictFromAnObserverThatThrows) {
  mark(fake, "/a", "W");
  ThrowingObserver impatient;
  EXPECT_THROW(static_cast<void>(confirmedWarpManifests(manifests, recordedWarpRoot,
                                                        fake.fileSystem, fake.paths, impatient)),
               std::runtime_error);
  EXPECT_EQ(impatient.verdicts, std::vector<ManifestVerdict>{ManifestVerdict::confirmed});
}

TEST_F(Markers, keepTheOrderOfTheManifests) {
  manifests = {mirroredManifestOf("/c", "3"), mirroredManifestOf("/a", "1"),
               mirroredManifestOf("/b", "2")};
  mark(fake, "/a", "1");
  mark(fake, "/b", "other");
  mark(fake, "/c", "3");
  EXPECT_EQ(confirmed(), (Paths{"/c", "/a"}));
}

TEST_F(Markers, judgeEachManifestOfAFolderOnItsOwn) {
  manifests = {mirroredManifestOf("/a", "new"), mirroredManifestOf("/a", "old")};
  mark(fake, "/a", "old");
  EXPECT_EQ(confirmed(), Paths{"/a"});
  EXPECT_EQ(observer.verdicts.at("/mirror/new.json"), ManifestVerdict::markerOfAnotherWarp);
  EXPECT_EQ(observer.verdicts.at("/mirror/old.json"), ManifestVerdict::confirmed);
}

struct MarkerCase {
  const char* name;
  std::string content;
  ManifestVerdict verdict;
};

class MarkerContents : public Markers, public testing::WithParamInterface<MarkerCase> {};

TEST_P(MarkerContents, decideWhetherTheFolderIsWarped) {
  fake.fileSystem.files["/a/.velmora-warped.json"] = GetParam().content;
  EXPECT_EQ(confirmed().empty(), GetParam().verdict != ManifestVerdict::confirmed);
  EXPECT_EQ(observer.verdicts.at("/mirror/W.json"), GetParam().verdict);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, MarkerContents,
    testing::Values(
        MarkerCase{"plain", R"({"warpID":"W"})", ManifestVerdict::confirmed},
        MarkerCase{"withOtherKeys", R"({"version":1,"warpID":"W","x":[1e999]})",
                   ManifestVerdict::confirmed},
        MarkerCase{"withByteOrderMark", "\xEF\xBB\xBF{\"warpID\":\"W\"}",
                   ManifestVerdict::confirmed},
        MarkerCase{"otherWarp", R"({"warpID":"X"})", ManifestVerdict::markerOfAnotherWarp},
        MarkerCase{"otherLetterCase", R"({"warpID":"w"})", ManifestVerdict::markerOfAnotherWarp},
        MarkerCase{"withBlank", R"({"warpID":"W "})", ManifestVerdict::markerOfAnotherWarp},
        MarkerCase{"firstOfTwo", R"({"warpID":"X","warpID":"W"})",
                   ManifestVerdict::markerOfAnotherWarp},
        MarkerCase{"array", R"(["warpID","W"])", ManifestVerdict::malformedMarker},
        MarkerCase{"emptyObject", "{}", ManifestVerdict::malformedMarker},
        MarkerCase{"number", R"({"warpID":1})", ManifestVerdict::malformedMarker},
        MarkerCase{"null", R"({"warpID":null})", ManifestVerdict::malformedMarker},
        MarkerCase{"otherKey", R"({"warpid":"W"})", ManifestVerdict::malformedMarker},
        MarkerCase{"emptyFile", "", ManifestVerdict::malformedMarker},
        MarkerCase{"broken", R"({"warpID":"W",})", ManifestVerdict::malformedMarker}),
    RowName());

TEST_F(Markers, areComparedByCanonicalEquivalence) {
  manifests = {mirroredManifestOf("/a", "e\u0301")};
  mark(fake, "/a", "\u00e9");
  EXPECT_EQ(confirmed(), Paths{"/a"});
}

TEST_F(Markers, doNotCountForDestroyedWarps) {
  mark(fake, "/a", "W");
  recordTombstones({tombstoneOf(manifestOf("/elsewhere", "W"))});
  EXPECT_TRUE(confirmed().empty());
  EXPECT_EQ(observer.verdicts.at("/mirror/W.json"), ManifestVerdict::destroyedByWarpID);
  EXPECT_EQ(observer.tombstoneCounts, std::vector<std::size_t>{1});
}

TEST_F(Markers, doNotCountWhenOnlyTheManifestKeyIsDestroyed) {
  mark(fake, "/a", "W");
  VelmoraWarpSharedDestroyedManifestRecord tombstone = tombstoneOf(manifestOf("/a", "W"));
  tombstone.warpID = "another";
  recordTombstones({tombstone});
  EXPECT_TRUE(confirmed().empty());
  EXPECT_EQ(observer.verdicts.at("/mirror/W.json"), ManifestVerdict::destroyedByManifestKey);
}

TEST_F(Markers, countDespiteTombstonesOfOthers) {
  mark(fake, "/a", "W");
  VelmoraWarpSharedDestroyedManifestRecord swapped = tombstoneOf(manifestOf("/a", "other"));
  swapped.warpID = manifests[0].manifest.manifestKey;
  recordTombstones({swapped, tombstoneOf(manifestOf("/a", "w"))});
  EXPECT_EQ(confirmed(), Paths{"/a"});
}

TEST_F(Markers, countDespiteATombstoneInOtherLetterCaseButNotInOtherNormalForm) {
  manifests = {mirroredManifestOf("/a", "e\u0301")};
  mark(fake, "/a", "e\u0301");
  recordTombstones({tombstoneOf(manifestOf("/b", "\u00c9"))});
  EXPECT_EQ(confirmed(), Paths{"/a"});
  recordTombstones({tombstoneOf(manifestOf("/b", "\u00e9"))});
  EXPECT_TRUE(confirmed().empty());
}

TEST_F(Markers, countWhenTheTombstonesAreCorrupt) {
  mark(fake, "/a", "W");
  VelmoraWarpSharedDestroyedManifestRecord unsafe = tombstoneOf(manifestOf("/b", "x"));
  unsafe.manifestKey = "/unsafe";
  recordTombstones({tombstoneOf(manifestOf("/a", "W")), unsafe});
  EXPECT_EQ(confirmed(), Paths{"/a"});
  EXPECT_EQ(observer.tombstoneErrors, Paths{"The file isn\u2019t in the correct format."});
  EXPECT_TRUE(observer.tombstoneCounts.empty());
}

TEST(AnsweredMarkers, getTheirAnswers) {
  const auto documents = readAnsweredDocuments("warpshared/marker.jsonl");
  EXPECT_EQ(documents.size(), 64);
  JSONReader reader;
  for (const AnsweredDocument& document : documents) {
    std::string bytes = document.bytes;
    try {
      const WarpMarker marker = decodeWarpMarker(bytes, reader);
      ASSERT_NE(document.okJSON(), nullptr) << document.name;
      std::string answer;
      appendJSONString(answer, marker.warpID);
      EXPECT_EQ(answer, *document.okJSON()) << document.name;
    } catch (const DecodingError& error) {
      ASSERT_NE(document.error(), nullptr) << document.name << ": " << error.what();
      EXPECT_EQ(document.error()->kind, "notAMarker") << document.name;
    }
  }
}

}  // namespace
}  // namespace velmora

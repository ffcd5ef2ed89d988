#include "json/DecodingError.h"
#include "json/JSONReader.h"
#include "json/JSONWriting.h"
#include "platform/PlatformError.h"
#include "resolution/WarpMarker.h"
#include "tests/fakes/RecordedWarps.h"
#include "tests/fakes/WarpRecords.h"
#include "tests/resolution/LineObserver.h"
#include "tests/resolution/MirroredManifests.h"
#include "tests/resolution/RecordingObserver.h"
#include "tests/support/AnsweredDocuments.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <exception>
#include <new>
#include <set>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace velmora {
namespace {

using enum ManifestVerdict;
using Paths = std::vector<std::string>;

const std::string markerOfA = "/a/.velmora-warped.json";

/// A folder /a whose manifest is of the Warp "W".
class MarkedFolder {
 public:
  explicit MarkedFolder(std::string_view warpID = "W")
      : manifests{mirroredManifestOf("/a", warpID)} {
    fake.fileSystem.createDirectories("/a");
  }

  /// The folders of the confirmed manifests, in order.
  Paths confirmedFolders() {
    Paths folders;
    for (const MirroredManifest& manifest : confirmedWarpManifests(
             manifests, recordedWarpRoot, fake.fileSystem, fake.paths, observer)) {
      folders.push_back(manifest.manifest.originalFolderPath.utf8());
    }
    return folders;
  }

  /// The verdict on the only manifest. Expects it in the list exactly when it is confirmed.
  ManifestVerdict verdict() {
    const Paths folders = confirmedFolders();
    const ManifestVerdict verdict = observer.verdicts.at(manifests.at(0).filePath.utf8());
    EXPECT_EQ(folders, verdict == ManifestVerdict::confirmed ? Paths{"/a"} : Paths());
    return verdict;
  }

  void recordTombstones(std::vector<VelmoraWarpSharedDestroyedManifestRecord> records) {
    fake.fileSystem.files[std::string(recordedWarpRoot) + "/destroyed-manifest-index.json"] =
        indexJSON(std::move(records));
  }

  FakePlatform fake;
  std::vector<MirroredManifest> manifests;
  RecordingObserver observer;
};

class Markers : public MarkedFolder, public testing::Test {};

TEST(MarkerContents, decideWhetherTheFolderIsWarped) {
  struct Row {
    const char* name;
    const char* content;
    ManifestVerdict verdict;
  };
  const Row rows[] = {{"plain", R"({"warpID":"W"})", confirmed},
                      {"withOtherKeys", R"({"version":1,"warpID":"W","x":[1e999]})", confirmed},
                      {"withByteOrderMark", "\xEF\xBB\xBF{\"warpID\":\"W\"}", confirmed},
                      {"otherWarp", R"({"warpID":"X"})", markerOfAnotherWarp},
                      {"otherLetterCase", R"({"warpID":"w"})", markerOfAnotherWarp},
                      {"withBlank", R"({"warpID":"W "})", markerOfAnotherWarp},
                      {"firstOfTwo", R"({"warpID":"X","warpID":"W"})", markerOfAnotherWarp},
                      {"array", R"(["warpID","W"])", malformedMarker},
                      {"emptyObject", "{}", malformedMarker},
                      {"number", R"({"warpID":1})", malformedMarker},
                      {"null", R"({"warpID":null})", malformedMarker},
                      {"otherKey", R"({"warpid":"W"})", malformedMarker},
                      {"emptyFile", "", malformedMarker},
                      {"broken", R"({"warpID":"W",})", malformedMarker}};
  for (const Row& row : rows) {
    MarkedFolder folder;
    folder.fake.fileSystem.files[markerOfA] = row.content;
    EXPECT_EQ(folder.verdict(), row.verdict) << row.name;
  }
  // In the other normal form.
  MarkedFolder folder("e\u0301");
  mark(folder.fake, "/a", "\u00e9");
  EXPECT_EQ(folder.verdict(), confirmed);
}

TEST_F(Markers, confirmNothingWhereTheyCannotBeRead) {
  fake.fileSystem.createDirectories(markerOfA);
  EXPECT_EQ(verdict(), unreadableMarker);
  EXPECT_EQ(observer.markerErrors.at("/mirror/W.json"), "Is a directory");
}

TEST_F(Markers, areUnreadableOnlyWhereTheyAre) {
  EXPECT_EQ(verdict(), noMarker);
  fake.fileSystem.readFailure = throwing(posixError(EIO));
  EXPECT_EQ(verdict(), noMarker);
  EXPECT_TRUE(observer.markerErrors.empty());
  mark(fake, "/a", "W");
  EXPECT_EQ(verdict(), unreadableMarker);
  EXPECT_EQ(observer.markerErrors.at("/mirror/W.json"), "Input/output error");
}

TEST_F(Markers, areNotTakenForMissingWhenMemoryRunsOut) {
  mark(fake, "/a", "W");
  fake.fileSystem.readFailure = throwing(std::bad_alloc());
  EXPECT_THROW(static_cast<void>(confirmedFolders()), std::bad_alloc);
}

TEST_F(Markers, getOneVerdictFromAnObserverThatThrows) {
  mark(fake, "/a", "W");
  LineObserver throwing;
  // The first line is of the tombstones, the second one is the verdict.
  throwing.lineLimit = 2;
  EXPECT_THROW(static_cast<void>(confirmedWarpManifests(manifests, recordedWarpRoot,
                                                        fake.fileSystem, fake.paths, throwing)),
               std::runtime_error);
  EXPECT_EQ(throwing.told.size(), 2);
  EXPECT_EQ(throwing.verdicts, std::set{confirmed});
}

TEST_F(Markers, keepTheOrderOfTheManifests) {
  manifests = {mirroredManifestOf("/c", "3"), mirroredManifestOf("/a", "1"),
               mirroredManifestOf("/b", "2")};
  mark(fake, "/a", "1");
  mark(fake, "/b", "other");
  mark(fake, "/c", "3");
  EXPECT_EQ(confirmedFolders(), (Paths{"/c", "/a"}));
}

TEST_F(Markers, judgeEachManifestOfAFolderOnItsOwn) {
  manifests = {mirroredManifestOf("/a", "new"), mirroredManifestOf("/a", "old")};
  mark(fake, "/a", "old");
  EXPECT_EQ(confirmedFolders(), Paths{"/a"});
  EXPECT_EQ(observer.verdicts.at("/mirror/new.json"), markerOfAnotherWarp);
  EXPECT_EQ(observer.verdicts.at("/mirror/old.json"), confirmed);
}

TEST(Tombstones, takeTheFolderFromItsWarp) {
  struct Row {
    const char* warpID;
    /// For each tombstone, the Warp that it names and the Warp whose manifest key it names.
    std::vector<std::pair<std::string, std::string>> tombstones;
    ManifestVerdict verdict;
  };
  const Row rows[] = {{"W", {{"W", "W"}}, destroyedByWarpID},
                      {"W", {{"another", "W"}}, destroyedByManifestKey},
                      {"W", {{"manifests/W.json", "other"}, {"w", "w"}}, confirmed},
                      {"e\u0301", {{"\u00c9", "\u00c9"}}, confirmed},
                      {"e\u0301", {{"\u00e9", "\u00e9"}}, destroyedByWarpID}};
  for (const Row& row : rows) {
    SCOPED_TRACE(row.warpID + (" but for " + row.tombstones[0].first));
    MarkedFolder folder(row.warpID);
    mark(folder.fake, "/a", row.warpID);
    std::vector<VelmoraWarpSharedDestroyedManifestRecord> records;
    for (const auto& [warpID, keyID] : row.tombstones) {
      records.push_back(tombstoneOf(manifestOf("/elsewhere", keyID)));
      records.back().warpID = warpID;
    }
    folder.recordTombstones(records);
    EXPECT_EQ(folder.verdict(), row.verdict);
    EXPECT_EQ(folder.observer.tombstoneCounts, std::vector<std::size_t>{records.size()});
  }
}

TEST_F(Markers, countWhenTheTombstonesAreCorrupt) {
  mark(fake, "/a", "W");
  VelmoraWarpSharedDestroyedManifestRecord unsafe = tombstoneOf(manifestOf("/b", "x"));
  unsafe.manifestKey = "/unsafe";
  recordTombstones({tombstoneOf(manifestOf("/a", "W")), unsafe});
  EXPECT_EQ(verdict(), confirmed);
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

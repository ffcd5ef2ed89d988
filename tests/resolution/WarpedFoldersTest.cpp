#include "json/JSONWriting.h"
#include "platform/PlatformError.h"
#include "resolution/WarpedFolders.h"
#include "tests/fakes/RecordedWarps.h"
#include "tests/fakes/WarpRecords.h"
#include "tests/resolution/Faults.h"
#include "tests/resolution/Folders.h"
#include "warpshared/writing/ManifestEncoding.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <new>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace velmora {
namespace {

using enum ManifestVerdict;
using Paths = std::vector<std::string>;

const std::string markerOfA = "/a/.velmora-warped.json";

/// A folder /a with a manifest of the Warp "W".
class MarkedFolder {
 public:
  explicit MarkedFolder(std::string_view warpID = "W") {
    fake.fileSystem.createDirectories("/a");
    mirror(fake, manifestOf("/a", warpID));
  }

  Resolution resolve() { return resolveWarpedFolders(fake.platform()); }

  /// The verdict on the only manifest. Expects the folder to be warped if and only if the verdict
  /// is `confirmed`.
  ManifestVerdict verdict() {
    const Resolution resolution = resolve();
    EXPECT_EQ(resolution.judged.size(), 1);
    const ManifestVerdict verdict = resolution.judged.at(0).verdict;
    EXPECT_EQ(bytesOf(warpedFolderPaths(resolution)), verdict == confirmed ? Paths{"/a"} : Paths());
    return verdict;
  }

  void recordTombstones(std::vector<VelmoraWarpSharedDestroyedManifestRecord> records) {
    fake.fileSystem.files[std::string(recordedWarpRoot) + "/destroyed-manifest-index.json"] =
        indexJSON(std::move(records));
  }

  FakePlatform fake;
  int readCount = 0;
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
  // The same identifier in another normal form.
  MarkedFolder folder("e\u0301");
  mark(folder.fake, "/a", "\u00e9");
  EXPECT_EQ(folder.verdict(), confirmed);
}

TEST_F(Markers, confirmNothingIfTheyCannotBeRead) {
  fake.fileSystem.createDirectories(markerOfA);
  const Resolution resolution = resolve();
  EXPECT_EQ(resolution.judged.at(0).verdict, unreadableMarker);
  EXPECT_EQ(messageOf(resolution.judged.at(0).markerFault), "Is a directory");
}

TEST_F(Markers, areNotReportedAsMissingWhenMemoryRunsOut) {
  mark(fake, "/a", "W");
  fake.fileSystem.readFailure = [this] {
    // The first read was that of the manifest.
    if (++readCount == 2) {
      throw std::bad_alloc();
    }
  };
  EXPECT_THROW(static_cast<void>(resolve()), std::bad_alloc);
}

TEST_F(Markers, decideOnEachManifestOfAFolder) {
  VelmoraWarpSharedManifest newer = manifestOf("/a", "new");
  newer.createdAt.secondsSinceReferenceDate = 1;
  mirror(fake, newer);
  mark(fake, "/a", "W");
  const Resolution resolution = resolve();
  ASSERT_EQ(resolution.judged.size(), 2);
  EXPECT_EQ(resolution.judged[0].manifest.warpID, "new");
  EXPECT_EQ(resolution.judged[0].verdict, markerOfAnotherWarp);
  EXPECT_EQ(resolution.judged[1].verdict, confirmed);
  EXPECT_EQ(bytesOf(warpedFolderPaths(resolution)), Paths{"/a"});
}

TEST(Tombstones, removeTheFolderFromItsWarp) {
  struct Row {
    const char* warpID;
    /// For each tombstone, its Warp and the Warp whose manifest key it has.
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
    EXPECT_EQ(folder.resolve().tombstoneCount, records.size());
  }
}

TEST_F(Markers, countIfTheTombstonesAreCorrupt) {
  mark(fake, "/a", "W");
  VelmoraWarpSharedDestroyedManifestRecord unsafe = tombstoneOf(manifestOf("/b", "x"));
  unsafe.manifestKey = "/unsafe";
  recordTombstones({tombstoneOf(manifestOf("/a", "W")), unsafe});
  EXPECT_EQ(verdict(), confirmed);
  const Resolution resolution = resolve();
  EXPECT_EQ(messageOf(resolution.tombstonesFault), "The file isn\u2019t in the correct format.");
  EXPECT_EQ(resolution.tombstoneCount, 0);
}

TEST(Resolutions, endWithoutASharedRoot) {
  FakePlatform fake;
  const Resolution resolution = resolveWarpedFolders(fake.platform());
  EXPECT_NE(messageOf(resolution.rootFault), "none");
  EXPECT_TRUE(warpedFolderPaths(resolution).empty());
}

TEST(Resolutions, reportTheFaultsOfTheMirror) {
  FakePlatform fake;
  recordWarp(fake, "/a", "W");
  fake.fileSystem.files[std::string(recordedWarpRoot) + "/ManifestMirror/bad.json"] = "{";
  EXPECT_EQ(resolveWarpedFolders(fake.platform()).refused.size(), 1);
  fake.fileSystem.entryNamesFailure = throwing(posixError(EACCES));
  EXPECT_EQ(messageOf(resolveWarpedFolders(fake.platform()).mirrorFault), "Permission denied");
}

TEST(WarpedFolderPaths, areInTheOrderOfTheNewestManifests) {
  FakePlatform fake;
  recordWarp(fake, "/old", "1");
  VelmoraWarpSharedManifest manifest = manifestOf("/new", "2");
  manifest.createdAt = {.secondsSinceReferenceDate = 60};
  mirror(fake, manifest);
  mark(fake, "/new", "2");
  EXPECT_EQ(bytesOf(warpedFolderPaths(resolveWarpedFolders(fake.platform()))),
            (Paths{"/new", "/old"}));
}

TEST(ResolutionsAroundItems, judgeTheManifestsAroundThem) {
  FakePlatform fake;
  recordWarp(fake, "/a", "W");
  recordWarp(fake, "/other", "X");
  fake.fileSystem.files[std::string(recordedWarpRoot) + "/ManifestMirror/copy.json"] =
      encodeManifest(manifestOf("/elsewhere", "W"));
  const Resolution resolution = resolveWarpedFoldersAround({{"/a/b/c"}}, fake.platform());
  std::vector<std::pair<std::string, ManifestVerdict>> verdicts;
  for (const JudgedManifest& judged : resolution.judged) {
    verdicts.emplace_back(judged.manifest.originalFolderPath.utf8(), judged.verdict);
  }
  // A manifest of another Warp is not decoded at all.
  EXPECT_EQ(verdicts, (decltype(verdicts){{"/a", confirmed}, {"/elsewhere", aroundNoItem}}));
}

TEST(ResolutionsAroundItems, readNoMirrorWithoutAMarker) {
  FakePlatform fake;
  recordWarp(fake, "/a", "W");
  fake.fileSystem.entryNamesFailure = throwing(posixError(EACCES));
  for (const char* item : {"/", "/b", "/b/c", "relative", ""}) {
    const Resolution resolution = resolveWarpedFoldersAround({{item}}, fake.platform());
    EXPECT_EQ(messageOf(resolution.mirrorFault), "none") << item;
  }
  EXPECT_NE(messageOf(resolveWarpedFoldersAround({{"/a"}}, fake.platform()).mirrorFault), "none");
}

}  // namespace
}  // namespace velmora

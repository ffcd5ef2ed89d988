#include "resolution/ManifestMirror.h"
#include "tests/fakes/RecordedWarps.h"
#include "tests/fakes/WarpRecords.h"
#include "tests/resolution/RecordingObserver.h"
#include "tests/support/AnsweredCases.h"

#include <gtest/gtest.h>

#include <map>
#include <new>
#include <string>
#include <vector>

namespace velmora {
namespace {

using Names = std::vector<std::string>;

class Mirror : public testing::Test {
 protected:
  Mirror() { prepareMirror(fake); }

  static std::string pathOf(const std::string& fileName) {
    return std::string(recordedWarpRoot) + "/ManifestMirror/" + fileName;
  }

  void add(const std::string& fileName, const VelmoraWarpSharedManifest& manifest) {
    fake.fileSystem.files[pathOf(fileName)] = encodeManifest(manifest);
  }

  std::vector<MirroredManifest> read(const std::string& root = std::string(recordedWarpRoot)) {
    return mirroredManifests(root, fake.fileSystem, fake.paths, observer);
  }

  /// The names of the files whose manifests were taken, in order.
  Names readNames() {
    Names names;
    for (const MirroredManifest& mirrored : read()) {
      const std::string& path = mirrored.filePath.utf8();
      names.push_back(path.substr(path.rfind('/') + 1));
    }
    return names;
  }

  FakePlatform fake;
  RecordingObserver observer;
};

TEST_F(Mirror, givesWhatTheManifestsSayReadAfreshUnderTheStandardisedRoot) {
  EXPECT_TRUE(read().empty());
  VelmoraWarpSharedManifest manifest = manifestOf("/a", "warp");
  manifest.entries.append(entryOf("/a/b"));
  add("any name.json", manifest);
  const std::vector<MirroredManifest> manifests = read("/x/../C//Warp/");
  ASSERT_EQ(manifests.size(), 1);
  EXPECT_EQ(manifests[0].filePath.utf8(), pathOf("any name.json"));
  EXPECT_EQ(manifests[0].manifest.warpID, "warp");
  EXPECT_EQ(manifests[0].manifest.manifestKey, manifest.manifestKey);
  EXPECT_EQ(manifests[0].manifest.originalFolderPath, "/a");
  EXPECT_EQ(manifests[0].manifest.entryCount, 1);
}

TEST_F(Mirror, takesFilesByTheirExtensionAndNoneOfADirectory) {
  fake.fileSystem.createDirectories(pathOf("inner"));
  for (const char* name :
       {"b.json", "a.json", ".x.json", "a.JSON", "a.json.bak", ".json", "json", "inner/c.json"}) {
    add(name, manifestOf("/a", "warp"));
  }
  EXPECT_EQ(readNames(), (Names{".x.json", "a.json", "b.json"}));
  EXPECT_EQ(observer.announcedCounts, std::vector<std::size_t>{3});
  EXPECT_TRUE(observer.refusals.empty());
}

TEST_F(Mirror, givesTheNewestFirstAndThoseOfOneInstantInTheOrderOfTheirNames) {
  const std::map<std::string, double> instants = {{"a.json", 50},  {"b.json", 100},
                                                  {"c.json", 100}, {"d.json", 100},
                                                  {"e.json", 150}, {"f.json", 120}};
  for (const auto& [name, instant] : instants) {
    VelmoraWarpSharedManifest manifest = manifestOf("/a", name);
    manifest.createdAt = {.secondsSinceReferenceDate = instant};
    add(name, manifest);
  }
  EXPECT_EQ(readNames(), (Names{"e.json", "f.json", "b.json", "c.json", "d.json", "a.json"}));
}

TEST_F(Mirror, leavesOutWhatIsNoManifest) {
  add("good.json", manifestOf("/a", "warp"));
  VelmoraWarpSharedManifest relative = manifestOf("/a", "relative");
  relative.originalFolderPath = "a";
  add("relative.json", relative);
  VelmoraWarpSharedManifest relativeEntry = manifestOf("/a", "entry");
  relativeEntry.entries.append(entryOf("b"));
  add("relative entry.json", relativeEntry);
  VelmoraWarpSharedManifest relativeSample = manifestOf("/a", "sample");
  relativeSample.verificationSampleRelativePaths = {"a/b"};
  add("relative sample.json", relativeSample);
  fake.fileSystem.files[pathOf("broken.json")] = "{";
  fake.fileSystem.files[pathOf("other.json")] = "{}";
  fake.fileSystem.files[pathOf("empty.json")] = "";
  fake.fileSystem.directories.insert(pathOf("directory.json"));
  EXPECT_EQ(readNames(), Names{"good.json"});
  EXPECT_EQ(observer.announcedCounts, std::vector<std::size_t>{8});
  EXPECT_EQ(observer.readFiles, Names{pathOf("good.json")});
  EXPECT_EQ(
      observer.refusals,
      (std::map<std::string, std::string>{
          {pathOf("relative.json"),
           "Shared Warp identity, object key, or original path is unsafe."},
          {pathOf("relative entry.json"), "Shared Warp entries require canonical absolute paths."},
          {pathOf("relative sample.json"),
           "Shared Warp manifest dates or original-path ownership are inconsistent."},
          {pathOf("broken.json"), "The document ends early."},
          {pathOf("other.json"), "The key \"version\" is missing."},
          {pathOf("empty.json"), "The document is empty."},
          {pathOf("directory.json"), "Is a directory"}}));
}

TEST_F(Mirror, isEmptyWithoutADirectory) {
  fake.fileSystem.directories = {"/"};
  EXPECT_TRUE(read().empty());
  EXPECT_EQ(observer.listingErrors, Names{"No such file or directory"});
}

TEST_F(Mirror, isNotTakenForEmptyWhenMemoryRunsOut) {
  add("a.json", manifestOf("/a", "warp"));
  fake.fileSystem.readFailure = throwing(std::bad_alloc());
  EXPECT_TRUE(read().empty());
  EXPECT_EQ(observer.refusals.size(), 1);
  fake.fileSystem.entryNamesFailure = throwing(std::bad_alloc());
  EXPECT_THROW(static_cast<void>(read()), std::bad_alloc);
}

TEST(ManifestFileName, isToldByItsExtension) {
  const auto cases = readAnsweredCases("resolution/pathExtension.jsonl");
  EXPECT_EQ(cases.size(), 7);
  for (const AnsweredCase& row : cases) {
    EXPECT_EQ(isManifestFileName(row.input), row.expect<bool>()) << row.name;
  }
  EXPECT_FALSE(isManifestFileName(".json"));
  EXPECT_FALSE(isManifestFileName(""));
}

}  // namespace
}  // namespace velmora

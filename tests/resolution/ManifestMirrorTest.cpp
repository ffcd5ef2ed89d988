#include "json/DecodingError.h"
#include "platform/PlatformError.h"
#include "resolution/ManifestMirror.h"
#include "tests/fakes/RecordedWarps.h"
#include "tests/fakes/WarpRecords.h"
#include "tests/resolution/Faults.h"
#include "tests/support/AnsweredCases.h"
#include "warpshared/writing/ManifestEncoding.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <map>
#include <new>
#include <string>
#include <utility>
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

  ManifestMirror read(const std::string& root = std::string(recordedWarpRoot)) {
    return mirroredManifests(root, fake.fileSystem, fake.paths, RefusedFiles::diagnosed);
  }

  /// The names of the files with accepted manifests, in order.
  static Names names(const ManifestMirror& mirror) {
    Names names;
    for (const MirroredManifest& mirrored : mirror.manifests) {
      const std::string& path = mirrored.filePath.utf8();
      names.push_back(path.substr(path.rfind('/') + 1));
    }
    return names;
  }

  FakePlatform fake;
};

TEST_F(Mirror, readsTheManifestsUnderTheStandardisedRoot) {
  EXPECT_TRUE(read().manifests.empty());
  VelmoraWarpSharedManifest manifest = manifestOf("/a", "warp");
  manifest.entries.append(entryOf("/a/b"));
  add("any name.json", manifest);
  const std::vector<MirroredManifest> manifests = read("/x/../C//Warp/").manifests;
  ASSERT_EQ(manifests.size(), 1);
  EXPECT_EQ(manifests[0].filePath.utf8(), pathOf("any name.json"));
  EXPECT_EQ(manifests[0].manifest.warpID, "warp");
  EXPECT_EQ(manifests[0].manifest.manifestKey, manifest.manifestKey);
  EXPECT_EQ(manifests[0].manifest.originalFolderPath, "/a");
  EXPECT_EQ(manifests[0].manifest.entryCount, 1);
}

TEST_F(Mirror, readsWholeManifestsOnRequest) {
  VelmoraWarpSharedManifest older = manifestOf("/a", "older");
  older.entries.append(entryOf("/a/b"));
  older.verificationSampleRelativePaths = {"/a/b"};
  VelmoraWarpSharedManifest newer = manifestOf("/c", "newer");
  newer.createdAt = {.secondsSinceReferenceDate = 1};
  add("a.json", older);
  add("b.json", newer);
  fake.fileSystem.files[pathOf("broken.json")] = "{";
  fake.fileSystem.files[pathOf("other")] = "{";
  std::size_t stepCount = 0;
  const auto count = [&](std::size_t, std::size_t) { ++stepCount; };
  WholeManifestMirror mirror =
      wholeMirroredManifests(recordedWarpRoot, fake.fileSystem, fake.paths, count);
  ASSERT_EQ(mirror.manifests.size(), 2);
  EXPECT_EQ(mirror.manifests[0].filePath, pathOf("b.json"));
  EXPECT_EQ(mirror.manifests[0].manifest, newer);
  EXPECT_EQ(mirror.manifests[1].filePath, pathOf("a.json"));
  EXPECT_EQ(mirror.manifests[1].manifest, older);
  ASSERT_EQ(mirror.refused.size(), 1);
  EXPECT_EQ(mirror.refused[0].filePath, pathOf("broken.json"));
  EXPECT_EQ(stepCount, 4);
  mirror = wholeMirroredManifests("/none", fake.fileSystem, fake.paths);
  EXPECT_TRUE(mirror.manifests.empty());
  EXPECT_EQ(messageOf(mirror.fault), "No such file or directory");
}

TEST_F(Mirror, readsFilesByTheirExtensionAndNoSubdirectory) {
  fake.fileSystem.createDirectories(pathOf("inner"));
  for (const char* name :
       {"b.json", "a.json", ".x.json", "a.JSON", "a.json.bak", ".json", "json", "inner/c.json"}) {
    add(name, manifestOf("/a", "warp"));
  }
  const ManifestMirror mirror = read();
  EXPECT_EQ(names(mirror), (Names{".x.json", "a.json", "b.json"}));
  EXPECT_TRUE(mirror.refused.empty());
}

TEST_F(Mirror, ordersManifestsByInstantThenByName) {
  const std::map<std::string, double> instants = {{"a.json", 50},  {"b.json", 100},
                                                  {"c.json", 100}, {"d.json", 100},
                                                  {"e.json", 150}, {"f.json", 120}};
  for (const auto& [name, instant] : instants) {
    VelmoraWarpSharedManifest manifest = manifestOf("/a", name);
    manifest.createdAt = {.secondsSinceReferenceDate = instant};
    add(name, manifest);
  }
  EXPECT_EQ(names(read()), (Names{"e.json", "f.json", "b.json", "c.json", "d.json", "a.json"}));
}

TEST_F(Mirror, refusesFilesThatAreNoManifests) {
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
  const ManifestMirror mirror = read();
  EXPECT_EQ(names(mirror), Names{"good.json"});
  std::map<std::string, std::string> refusals;
  for (const RefusedManifest& refused : mirror.refused) {
    refusals[refused.filePath.utf8()] = messageOf(refused.fault);
  }
  EXPECT_EQ(
      refusals,
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
  const ManifestMirror mirror = read();
  EXPECT_TRUE(mirror.manifests.empty());
  EXPECT_EQ(messageOf(mirror.fault), "No such file or directory");
}

TEST_F(Mirror, isNotReportedAsEmptyWhenMemoryRunsOut) {
  add("a.json", manifestOf("/a", "warp"));
  fake.fileSystem.readFailure = throwing(std::bad_alloc());
  const ManifestMirror mirror = read();
  EXPECT_TRUE(mirror.manifests.empty());
  EXPECT_EQ(mirror.refused.size(), 1);
  fake.fileSystem.entryNamesFailure = throwing(std::bad_alloc());
  EXPECT_THROW(static_cast<void>(read()), std::bad_alloc);
}

TEST_F(Mirror, readsOnlyTheManifestsOfTheGivenWarps) {
  add("a.json", manifestOf("/a", "0-A"));
  add("b.json", manifestOf("/b", "B"));
  fake.fileSystem.files[pathOf("broken.json")] = "{\"warpID\":\"0-A\"";
  fake.fileSystem.files[pathOf("other.json")] = "{";
  const ManifestMirror mirror =
      mirroredManifests(recordedWarpRoot, fake.fileSystem, fake.paths, RefusedFiles::diagnosed,
                        std::vector<Text>{"0-A"});
  EXPECT_EQ(names(mirror), Names{"a.json"});
  ASSERT_EQ(mirror.refused.size(), 1);
  EXPECT_EQ(mirror.refused[0].filePath, pathOf("broken.json"));
}

TEST_F(Mirror, diagnosesRefusedFilesOnRequestOnly) {
  add("a.json", manifestOf("/a", "A"));
  fake.fileSystem.files[pathOf("broken.json")] = "{";
  for (const RefusedFiles refusedFiles : {RefusedFiles::listed, RefusedFiles::diagnosed}) {
    const ManifestMirror mirror =
        mirroredManifests(recordedWarpRoot, fake.fileSystem, fake.paths, refusedFiles);
    EXPECT_EQ(names(mirror), Names{"a.json"});
    ASSERT_EQ(mirror.refused.size(), 1);
    EXPECT_EQ(mirror.refused[0].fault != nullptr, refusedFiles == RefusedFiles::diagnosed);
  }
}

TEST_F(Mirror, tellsTheFaultOfAFile) {
  add("a.json", manifestOf("/a", "A"));
  fake.fileSystem.files[pathOf("broken.json")] = "{";
  EXPECT_EQ(manifestFault(pathOf("a.json"), fake.fileSystem), nullptr);
  EXPECT_THROW(std::rethrow_exception(manifestFault(pathOf("broken.json"), fake.fileSystem)),
               DecodingError);
  EXPECT_THROW(std::rethrow_exception(manifestFault(pathOf("none.json"), fake.fileSystem)),
               PlatformError);
}

TEST_F(Mirror, reportsItsProgress) {
  add("a.json", manifestOf("/a", "A"));
  fake.fileSystem.files[pathOf("b.json")] = "{";
  std::vector<std::pair<std::size_t, std::size_t>> steps;
  static_cast<void>(mirroredManifests(
      recordedWarpRoot, fake.fileSystem, fake.paths, RefusedFiles::diagnosed, {},
      [&](std::size_t readCount, std::size_t count) { steps.emplace_back(readCount, count); }));
  const std::vector<std::pair<std::size_t, std::size_t>> expected = {{0, 2}, {1, 2}, {2, 2}};
  EXPECT_EQ(steps, expected);
}

TEST(ManifestFileName, isRecognisedByItsExtension) {
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

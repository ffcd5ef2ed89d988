#include "ResolutionRecorder.h"
#include "tests/fakes/RecordedWarps.h"

#include <gtest/gtest.h>

namespace velmora::inspect {
namespace {

class ResolutionRecorderTest : public testing::Test {
 protected:
  const Resolution& resolve() {
    recorder.emplace(fake.platform(),
                     ReadingListener{.willRead = [this](std::size_t count) { announced = count; },
                                     .didReadOne = [this] { ++readCount; }});
    folders = warpedFolderPaths(fake.platform(), *recorder);
    return recorder->resolution();
  }

  std::string inMirror(const std::string& name) const {
    return std::string(recordedWarpRoot) + "/ManifestMirror/" + name;
  }

  FakePlatform fake;
  std::size_t announced = 0;
  std::size_t readCount = 0;
  std::optional<ResolutionRecorder> recorder;
  std::vector<Text> folders;
};

TEST_F(ResolutionRecorderTest, withoutARootNothingElseIsSaid) {
  const Resolution& resolution = resolve();
  ASSERT_TRUE(resolution.rootFault.has_value());
  EXPECT_EQ(resolution.rootFault->kind, "unreadable");
  EXPECT_FALSE(resolution.isComplete());
  EXPECT_FALSE(resolution.isMirrorMissing);
}

TEST_F(ResolutionRecorderTest, missingMirrorIsNoFault) {
  fake.locations.groupContainers["group.io.tolvane.Velmora"] = "/C";
  const Resolution& resolution = resolve();
  EXPECT_TRUE(resolution.isMirrorMissing);
  EXPECT_TRUE(resolution.isComplete());
}

TEST_F(ResolutionRecorderTest, mirrorThatCannotBeListedIsOne) {
  prepareMirror(fake);
  fake.fileSystem.entryNamesFailure = throwing(posixError(EACCES));
  const Resolution& resolution = resolve();
  ASSERT_TRUE(resolution.mirrorFault.has_value());
  EXPECT_EQ(resolution.mirrorFault->message, posixError(EACCES).what());
  EXPECT_FALSE(resolution.isMirrorMissing);
  EXPECT_FALSE(resolution.isComplete());
}

TEST_F(ResolutionRecorderTest, everyManifestHasItsVerdict) {
  recordWarp(fake, "/confirmed", "W1");
  mirror(fake, manifestOf("/unmarked", "W2"));
  mirror(fake, manifestOf("/other", "W3"));
  mark(fake, "/other", "W0");
  mirror(fake, manifestOf("/malformed", "W4"));
  mark(fake, "/malformed", "");
  fake.fileSystem.files["/malformed/.velmora-warped.json"] = "\n {}";
  recordWarp(fake, "/destroyed", "W5");
  fake.fileSystem.files[std::string(recordedWarpRoot) + "/destroyed-manifest-index.json"] =
      indexJSON({tombstoneOf(manifestOf("/destroyed", "W5"))});
  mirror(fake, manifestOf("/unreadable", "W6"));
  fake.fileSystem.createDirectories("/unreadable/.velmora-warped.json");
  const Resolution& resolution = resolve();
  std::vector<std::pair<std::string, ManifestVerdict>> verdicts;
  for (const JudgedManifest& judged : resolution.judged) {
    verdicts.emplace_back(judged.manifest.warpID.utf8(), judged.verdict);
  }
  EXPECT_EQ(verdicts, (std::vector<std::pair<std::string, ManifestVerdict>>{
                          {"W1", ManifestVerdict::confirmed},
                          {"W2", ManifestVerdict::noMarker},
                          {"W3", ManifestVerdict::markerOfAnotherWarp},
                          {"W4", ManifestVerdict::malformedMarker},
                          {"W5", ManifestVerdict::destroyedByWarpID},
                          {"W6", ManifestVerdict::unreadableMarker}}));
  EXPECT_EQ(resolution.judged[0].file, inMirror("W1.json"));
  EXPECT_EQ(resolution.judged[0].fault, std::nullopt);
  // The place is one in the marker.
  EXPECT_EQ(resolution.judged[3].fault.value().place, (Place{2, 2}));
  EXPECT_EQ(resolution.judged[5].fault.value().kind, "unreadable");
  EXPECT_EQ(resolution.tombstoneCount, 1U);
  EXPECT_EQ(resolution.confirmedCount(), 1U);
  EXPECT_EQ(folders, std::vector<Text>{"/confirmed"});
}

TEST_F(ResolutionRecorderTest, refusedFilesHaveTheirFaultAndPlace) {
  prepareMirror(fake);
  fake.fileSystem.files[inMirror("a.json")] = "{\"version\":\n[]}";
  const Resolution& resolution = resolve();
  ASSERT_EQ(resolution.refused.size(), 1U);
  EXPECT_EQ(resolution.refused[0].file, inMirror("a.json"));
  EXPECT_EQ(resolution.refused[0].fault.kind, "typeMismatch");
  EXPECT_EQ(resolution.refused[0].fault.place, (Place{2, 1}));
  EXPECT_TRUE(resolution.isComplete());
}

TEST_F(ResolutionRecorderTest, unusableIndexIsTold) {
  recordWarp(fake, "/a", "W1");
  fake.fileSystem.files[std::string(recordedWarpRoot) + "/destroyed-manifest-index.json"] =
      "\n{\"version\":2}";
  const Resolution& resolution = resolve();
  ASSERT_TRUE(resolution.indexFault.has_value());
  EXPECT_EQ(resolution.indexFault->kind, "dataCorrupted");
  EXPECT_EQ(resolution.indexFault->place, (Place{2, 12}));
  EXPECT_EQ(resolution.confirmedCount(), 1U);
  EXPECT_TRUE(resolution.isComplete());
}

TEST_F(ResolutionRecorderTest, listenerHearsOfEveryFile) {
  recordWarp(fake, "/a", "W1");
  recordWarp(fake, "/b", "W2");
  fake.fileSystem.files[inMirror("bad.json")] = "";
  fake.fileSystem.files[inMirror("notes.txt")] = "";
  resolve();
  EXPECT_EQ(announced, 3U);
  EXPECT_EQ(readCount, 3U);
}

}  // namespace
}  // namespace velmora::inspect

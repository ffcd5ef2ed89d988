#include "Diagnosis.h"
#include "platform/PlatformError.h"
#include "tests/fakes/RecordedWarps.h"
#include "tests/fakes/WarpRecords.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <string>
#include <vector>

namespace velmora::inspect {
namespace {

using Names = std::vector<std::string>;

class DiagnosisTest : public testing::Test {
 protected:
  Diagnosis look() {
    return diagnose(fake.platform(),
                    {.isContainerSetByEnvironment = [this] { return isContainerSetByEnvironment; },
                     .isBusReachable = [this] { return isBusReachable; },
                     .canHoldNewFiles =
                         [this](const Text& directory) {
                           asked = directory;
                           return isWritable;
                         }});
  }

  /// Expects these pieces in the text for people, and these in the JSON for programs.
  void expectPieces(const Names& textPieces, const Names& jsonPieces) {
    const std::string text = toText(look(), Style::plain);
    for (const std::string& piece : textPieces) {
      EXPECT_NE(text.find(piece), std::string::npos) << piece << "\n" << text;
    }
    const std::string json = toJSON(look());
    for (const std::string& piece : jsonPieces) {
      EXPECT_NE(json.find(piece), std::string::npos) << piece << "\n" << json;
    }
  }

  FakePlatform fake;
  bool isContainerSetByEnvironment = false;
  bool isBusReachable = true;
  bool isWritable = true;
  Text asked;
};

TEST_F(DiagnosisTest, soundSystemIsReady) {
  recordWarp(fake, "/a", "W1");
  mirror(fake, manifestOf("/b", "W2"));
  fake.fileSystem.createDirectories("/C/Warp/FinderHandoff");
  fake.fileSystem.files["/C/Warp/FinderHandoff/1.json"] = "";
  fake.fileSystem.files["/C/Warp/FinderHandoff/.2.json.partial"] = "";
  fake.fileSystem.files["/C/Warp/destroyed-manifest-index.json"] =
      indexJSON({tombstoneOf(manifestOf("/c", "W3"))});
  fake.languages.tags = {"ja-JP", "en"};
  fake.workspace.installedApplications["io.tolvane.Velmora"] = "/apps/Velmora";
  const Diagnosis diagnosis = look();
  EXPECT_EQ(diagnosis.obstacles(), Names());
  EXPECT_EQ(diagnosis.notes(), Names());
  EXPECT_EQ(asked, Text("/C/Warp/FinderHandoff"));
  EXPECT_EQ(
      toJSON(diagnosis),
      R"({"ready":true,"obstacles":[],"notes":[],)"
      R"("root":{"path":"/C/Warp","source":"groupContainer"},)"
      R"("mirror":{"path":"/C/Warp/ManifestMirror","exists":true,"files":2,"valid":2,)"
      R"("refused":0,"confirmed":1},)"
      R"("index":{"path":"/C/Warp/destroyed-manifest-index.json","exists":true,"records":1},)"
      R"("handoff":{"path":"/C/Warp/FinderHandoff","exists":true,"writable":true,"requests":1},)"
      R"("language":{"choice":"system","preferred":["ja-JP","en"],"resolved":"ja"},)"
      R"("bus":{"reachable":true},"application":{"found":true,"path":"/apps/Velmora"}})");
  EXPECT_EQ(toText(diagnosis, Style::plain),
            "ok       root         /C/Warp\n"
            "                      in the group container, which the application has made\n"
            "ok       mirror       /C/Warp/ManifestMirror\n"
            "                      2 files: 2 valid, 0 refused; 1 confirmed\n"
            "ok       index        /C/Warp/destroyed-manifest-index.json\n"
            "                      1 record\n"
            "ok       handoff      /C/Warp/FinderHandoff\n"
            "                      writable; 1 request waits\n"
            "ok       language     ja; the system prefers ja-JP en\n"
            "ok       session bus  reachable\n"
            "ok       application  /apps/Velmora\n"
            "Nothing stands in the way of an action.\n");
}

TEST_F(DiagnosisTest, whatTheActionsGetAlongWithIsANote) {
  fake.locations.supportDirectories = {"/data"};
  fake.fileSystem.createDirectories("/data/Velmora/Warp/ManifestMirror");
  fake.fileSystem.files["/data/Velmora/Warp/ManifestMirror/a.json"] = "";
  fake.fileSystem.files["/data/Velmora/Warp/destroyed-manifest-index.json"] = "[]";
  fake.defaults.values[{"group.io.tolvane.Velmora", "VelmoraSelectedLanguage.v1"}] = "es";
  isBusReachable = false;
  EXPECT_EQ(look().obstacles(), Names());
  EXPECT_EQ(look().notes(),
            (Names{"indexUnusable", "invalidManifests", "busUnreachable", "applicationNotFound"}));
  expectPieces(
      {"ok       root         /data/Velmora/Warp\n",
       "                      the application has made no group container\n",
       "note     mirror       ", "1 file: 0 valid, 1 refused; 0 confirmed\n",
       "note     index        ", "ok       handoff      ", "does not exist yet; can be made\n",
       "ok       language     es, chosen in the application\n", "note     session bus  not ",
       "note     application  not found", "Nothing stands in the way of an action.\n"},
      {R"("source":"fallback")", R"("exists":true,"error":{"kind":"typeMismatch")",
       R"("exists":false,"writable":true,"requests":0)", R"("choice":"es","preferred":[])",
       R"("bus":{"reachable":false},"application":{"found":false}})"});
}

TEST_F(DiagnosisTest, missingRootIsAnObstacle) {
  EXPECT_EQ(look().obstacles(), Names{"noRoot"});
  EXPECT_TRUE(toJSON(look()).starts_with(R"({"ready":false,"obstacles":["noRoot"],"notes":)"));
  EXPECT_TRUE(
      toText(look(), Style::plain).starts_with("problem  root         there is no place for it\n"));
  expectPieces({}, {R"("root":{"path":null,"error":{"kind":"unreadable)"});
  EXPECT_EQ(toJSON(look()).find(R"("mirror")"), std::string::npos);
}

TEST_F(DiagnosisTest, mirrorThatCannotBeListedIsAnObstacle) {
  prepareMirror(fake);
  fake.fileSystem.entryNamesFailure = throwing(posixError(EACCES));
  EXPECT_EQ(look().obstacles(), Names{"mirrorUnreadable"});
  expectPieces({"problem  mirror       /C/Warp/ManifestMirror\n"},
               {R"("exists":true,"error":{"kind":"unreadable","message":"Permission denied"}})"});
}

TEST_F(DiagnosisTest, handoffThatCannotBeWrittenToIsAnObstacle) {
  prepareMirror(fake);
  isWritable = false;
  EXPECT_EQ(look().obstacles(), Names{"handoffNotWritable"});
  expectPieces({"problem  handoff      ", "cannot be made\n"}, {});
  fake.fileSystem.createDirectories("/C/Warp/FinderHandoff");
  expectPieces({"requests cannot be left there\n", "The actions cannot work as they should.\n"},
               {R"({"ready":false,"obstacles":["handoffNotWritable"])"});
}

TEST_F(DiagnosisTest, missingMirrorAndIndexAreSound) {
  fake.locations.groupContainers["group.io.tolvane.Velmora"] = "/C";
  EXPECT_EQ(look().obstacles(), Names());
  expectPieces({"does not exist: no folder is warped\n"},
               {R"("exists":false,"files":0,"valid":0,)"});
}

TEST_F(DiagnosisTest, containerByTheEnvironmentIsTold) {
  fake.locations.groupContainers["group.io.tolvane.Velmora"] = "/C";
  isContainerSetByEnvironment = true;
  EXPECT_EQ(look().rootSource, RootSource::environment);
  expectPieces({"where VELMORA_GROUP_CONTAINER puts it\n"},
               {R"("root":{"path":"/C/Warp","source":"VELMORA_GROUP_CONTAINER"})"});
  isContainerSetByEnvironment = false;
  EXPECT_EQ(look().rootSource, RootSource::groupContainer);
}

TEST_F(DiagnosisTest, nothingIsMadeStartedOrSent) {
  recordWarp(fake, "/a", "W1");
  const auto files = fake.fileSystem.files;
  const auto directories = fake.fileSystem.directories;
  look();
  EXPECT_EQ(fake.fileSystem.files, files);
  EXPECT_EQ(fake.fileSystem.directories, directories);
  EXPECT_TRUE(fake.workspace.opened.empty());
  EXPECT_TRUE(fake.notifications.posted.empty());
}

}  // namespace
}  // namespace velmora::inspect

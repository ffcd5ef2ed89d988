#include "Diagnosis.h"
#include "platform/PlatformError.h"
#include "tests/fakes/RecordedWarps.h"
#include "tests/fakes/WarpRecords.h"
#include "tests/support/OrdinaryUser.h"
#include "tests/support/ScratchDirectory.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace velmora::inspect {
namespace {

using Names = std::vector<std::string>;

class DiagnosisTest : public testing::Test {
 protected:
  Diagnosis look() {
    return diagnose(fake.platform(),
                    {.isContainerSetByEnvironment = [this] { return isContainerSetByEnvironment; },
                     .containerInDataHome = [] { return Text("/data/group"); },
                     .isBusReachable = [this] { return isBusReachable; },
                     .canHoldNewFiles =
                         [this](const Text& directory) {
                           asked = directory;
                           return isWritable;
                         }});
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
  EXPECT_EQ(diagnosis.rootSource, RootSource::groupContainer);
  EXPECT_EQ(diagnosis.resolution.judged.size(), 2U);
  EXPECT_EQ(diagnosis.resolution.confirmedCount(), 1U);
  EXPECT_EQ(diagnosis.resolution.tombstoneCount, 1U);
  EXPECT_EQ(diagnosis.resolution.indexExists, true);
  EXPECT_EQ(diagnosis.handoff.exists, true);
  EXPECT_TRUE(diagnosis.handoff.isWritable);
  EXPECT_EQ(diagnosis.handoff.waitingRequests, 1U);
  EXPECT_EQ(diagnosis.chosenLanguage, VelmoraLanguage::system);
  EXPECT_EQ(diagnosis.preferredLanguages, (std::vector<Text>{"ja-JP", "en"}));
  EXPECT_EQ(diagnosis.language, VelmoraLanguage::japanese);
  EXPECT_TRUE(diagnosis.isBusReachable);
  EXPECT_EQ(diagnosis.application, Text("/apps/Velmora"));
}

TEST_F(DiagnosisTest, faultThatTheActionsTolerateIsANote) {
  fake.locations.supportDirectories = {"/data"};
  fake.fileSystem.createDirectories("/data/Velmora/Warp/ManifestMirror");
  fake.fileSystem.files["/data/Velmora/Warp/ManifestMirror/a.json"] = "";
  fake.fileSystem.files["/data/Velmora/Warp/destroyed-manifest-index.json"] = "[]";
  fake.defaults.values[{"group.io.tolvane.Velmora", "VelmoraSelectedLanguage.v1"}] = "es";
  isBusReachable = false;
  const Diagnosis diagnosis = look();
  EXPECT_EQ(diagnosis.obstacles(), Names());
  EXPECT_EQ(diagnosis.notes(),
            (Names{"indexUnusable", "invalidManifests", "busUnreachable", "applicationNotFound"}));
  EXPECT_EQ(diagnosis.rootSource, RootSource::fallback);
  EXPECT_EQ(diagnosis.resolution.refused.size(), 1U);
  EXPECT_EQ(diagnosis.resolution.indexFault.value().kind, "typeMismatch");
  EXPECT_EQ(diagnosis.handoff.exists, false);
  EXPECT_EQ(diagnosis.handoff.waitingRequests, 0U);
  EXPECT_EQ(diagnosis.chosenLanguage, VelmoraLanguage::spanish);
  EXPECT_EQ(diagnosis.language, VelmoraLanguage::spanish);
}

TEST_F(DiagnosisTest, missingRootIsAnObstacle) {
  const Diagnosis diagnosis = look();
  EXPECT_EQ(diagnosis.obstacles(), Names{"noRoot"});
  EXPECT_FALSE(diagnosis.resolution.places.has_value());
  EXPECT_EQ(diagnosis.resolution.rootFault.value().kind, "unreadable");
  EXPECT_EQ(asked, Text());
}

TEST_F(DiagnosisTest, unreadableMirrorIsAnObstacle) {
  prepareMirror(fake);
  fake.fileSystem.createDirectories("/C/Warp/FinderHandoff");
  fake.fileSystem.entryNamesFailure = throwing(posixError(EACCES));
  const Diagnosis diagnosis = look();
  EXPECT_EQ(diagnosis.obstacles(), Names{"mirrorUnreadable"});
  EXPECT_EQ(diagnosis.resolution.mirrorExists, true);
  EXPECT_EQ(diagnosis.resolution.mirrorFault.value().message, "Permission denied");
  EXPECT_EQ(diagnosis.handoff.waitingRequests, std::nullopt);
  EXPECT_EQ(diagnosis.handoff.fault.value().message, "Permission denied");
}

TEST_F(DiagnosisTest, missingPermissionDoesNotMeanThatNothingIsThere) {
  fake.locations.supportDirectories = {"/data"};
  fake.fileSystem.readFailure = throwing(posixError(EACCES));
  const Diagnosis diagnosis = look();
  EXPECT_EQ(diagnosis.rootSource, RootSource::fallback);
  for (const std::optional<Fault>& fault :
       {diagnosis.containerFault, diagnosis.resolution.indexFault, diagnosis.handoff.fault}) {
    EXPECT_EQ(fault.value().message, "Permission denied");
  }
  EXPECT_EQ(diagnosis.resolution.indexExists, std::nullopt);
  EXPECT_EQ(diagnosis.handoff.exists, std::nullopt);
  EXPECT_EQ(diagnosis.handoff.waitingRequests, std::nullopt);
  EXPECT_EQ(diagnosis.notes(),
            (Names{"containerUnreadable", "indexUnusable", "applicationNotFound"}));
}

TEST_F(DiagnosisTest, unwritableHandoffDirectoryIsAnObstacle) {
  prepareMirror(fake);
  isWritable = false;
  EXPECT_EQ(look().obstacles(), Names{"handoffNotWritable"});
  EXPECT_EQ(look().handoff.exists, false);
  fake.fileSystem.createDirectories("/C/Warp/FinderHandoff");
  EXPECT_EQ(look().obstacles(), Names{"handoffNotWritable"});
  EXPECT_EQ(look().handoff.exists, true);
}

TEST_F(DiagnosisTest, missingMirrorAndIndexAreNoObstacles) {
  fake.locations.groupContainers["group.io.tolvane.Velmora"] = "/C";
  const Diagnosis diagnosis = look();
  EXPECT_EQ(diagnosis.obstacles(), Names());
  EXPECT_TRUE(diagnosis.resolution.isMirrorMissing());
  EXPECT_EQ(diagnosis.resolution.indexExists, false);
}

TEST_F(DiagnosisTest, containerOfTheEnvironmentIsReported) {
  fake.locations.groupContainers["group.io.tolvane.Velmora"] = "/C";
  EXPECT_EQ(look().rootSource, RootSource::groupContainer);
  isContainerSetByEnvironment = true;
  EXPECT_EQ(look().rootSource, RootSource::environment);
}

TEST_F(DiagnosisTest, diagnosisChangesNothing) {
  recordWarp(fake, "/a", "W1");
  const auto files = fake.fileSystem.files;
  const auto directories = fake.fileSystem.directories;
  look();
  EXPECT_EQ(fake.fileSystem.files, files);
  EXPECT_EQ(fake.fileSystem.directories, directories);
  EXPECT_TRUE(fake.workspace.opened.empty());
  EXPECT_TRUE(fake.notifications.posted.empty());
}

TEST(DirectoriesForNewFiles, mayBeMissingButNotBelowAFile) {
  const ScratchDirectory scratch;
  scratch.write("file", "");
  std::filesystem::create_directory(scratch.path("directory"));
  std::filesystem::create_symlink("directory", scratch.path("link"));
  std::filesystem::create_symlink("missing", scratch.path("broken"));
  const std::vector<std::string> names = scratch.names();
  for (const char* path : {"", "directory", "a", "a/b/c", "link", "link/a"}) {
    EXPECT_TRUE(canHoldNewFiles(scratch.path(path))) << path;
  }
  for (const char* path : {"file", "file/a", "broken", "broken/a"}) {
    EXPECT_FALSE(canHoldNewFiles(scratch.path(path))) << path;
  }
  EXPECT_EQ(scratch.names(), names);
}

TEST(DirectoriesForNewFiles, mustBeWritableForTheUser) {
  const ScratchDirectory scratch;
  std::filesystem::permissions(scratch.path(), std::filesystem::perms(0755));
  for (const auto& [name, mode] : {std::pair("locked", 0555), std::pair("open", 0777)}) {
    std::filesystem::create_directory(scratch.path(name));
    std::filesystem::permissions(scratch.path(name), std::filesystem::perms(mode));
  }
  const std::pair<const char*, bool> rows[] = {
      {"locked", false}, {"locked/a", false}, {"open", true}, {"open/a", true}};
  for (const auto& [name, answer] : rows) {
    const std::string path = scratch.path(name);
    EXPECT_EQ(resultForOrdinaryUser([&] { return canHoldNewFiles(path) ? 1 : 0; }), answer) << path;
  }
}

}  // namespace
}  // namespace velmora::inspect

#include "DoctorCommand.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace velmora::inspect {
namespace {

using Pieces = std::vector<std::string>;

Fault unreadable(const char* message) {
  return {
      .kind = "unreadable", .codingPath = {}, .message = message, .byteOffset = {}, .place = {}};
}

class DoctorCommandTest : public testing::Test {
 protected:
  /// Prepares a sound system.
  DoctorCommandTest() {
    diagnosis.rootSource = RootSource::groupContainer;
    ResolutionReport& resolution = diagnosis.resolution;
    resolution.places = SharedPlaces{.root = "/C/Warp",
                                     .rootParent = SharedWarpRootParent::groupContainer,
                                     .mirror = "/C/Warp/ManifestMirror",
                                     .index = "/C/Warp/destroyed-manifest-index.json",
                                     .handoff = "/C/Warp/FinderHandoff"};
    resolution.judged = {
        {.file = "/m/1.json"},
        {.file = "/m/2.json", .manifest = {}, .verdict = ManifestVerdict::noMarker}};
    resolution.tombstoneCount = 1;
    resolution.mirrorExists = true;
    resolution.indexExists = true;
    diagnosis.handoff = {.exists = true, .isWritable = true, .waitingRequests = 1};
    diagnosis.preferredLanguages = {"ja-JP", "en"};
    diagnosis.language = VelmoraLanguage::japanese;
    diagnosis.isBusReachable = true;
    diagnosis.application = "/apps/Velmora";
  }

  /// Expects these pieces in the text for people, and these in the JSON.
  void expectPieces(const Pieces& textPieces, const Pieces& jsonPieces) const {
    const std::string text = toText(diagnosis, Style::plain);
    for (const std::string& piece : textPieces) {
      EXPECT_NE(text.find(piece), std::string::npos) << piece << "\n" << text;
    }
    const std::string json = toJSON(diagnosis);
    for (const std::string& piece : jsonPieces) {
      EXPECT_NE(json.find(piece), std::string::npos) << piece << "\n" << json;
    }
  }

  Diagnosis diagnosis;
};

TEST_F(DoctorCommandTest, soundSystemIsReady) {
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
            "                      2 files: 1 warped, 1 not warped, 0 invalid\n"
            "ok       index        /C/Warp/destroyed-manifest-index.json\n"
            "                      1 record\n"
            "ok       handoff      /C/Warp/FinderHandoff\n"
            "                      writable; 1 request waits\n"
            "ok       language     ja; the system prefers ja-JP en\n"
            "ok       session bus  reachable\n"
            "ok       application  /apps/Velmora\n"
            "Nothing stands in the way of an action.\n");
}

TEST_F(DoctorCommandTest, soundStatesAreColoured) {
  EXPECT_TRUE(toText(diagnosis, Style::coloured).starts_with("\x1b[32mok\x1b[0m       root    "));
}

TEST_F(DoctorCommandTest, faultThatTheActionsTolerateIsANote) {
  diagnosis.rootSource = RootSource::fallback;
  diagnosis.resolution.judged.clear();
  diagnosis.resolution.refused = {{.file = "/m/a.json", .fault = unreadable("Is a directory")}};
  diagnosis.resolution.indexFault = unreadable("File too large");
  diagnosis.handoff = {.exists = false, .isWritable = true, .waitingRequests = 0};
  diagnosis.chosenLanguage = VelmoraLanguage::spanish;
  diagnosis.preferredLanguages.clear();
  diagnosis.language = VelmoraLanguage::spanish;
  diagnosis.isBusReachable = false;
  diagnosis.application.reset();
  expectPieces(
      {"ok       root         /C/Warp\n",
       "                      the application has made no group container\n",
       "note     mirror       ", "1 file: 0 warped, 0 not warped, 1 invalid\n",
       "note     index        ", "                      unreadable: File too large\n",
       "ok       handoff      ", "does not exist yet; can be made\n",
       "ok       language     es, chosen in the application\n",
       "note     session bus  not reachable: a running application is not told of a request\n",
       "note     application  not found: requests wait until it runs\n",
       "Nothing stands in the way of an action.\n"},
      {R"({"ready":true,"obstacles":[],"notes":["indexUnusable","invalidManifests",)"
       R"("busUnreachable","applicationNotFound"],)",
       R"("source":"fallback")", R"("files":1,"valid":0,"refused":1,"confirmed":0)",
       R"("exists":true,"error":{"kind":"unreadable","message":"File too large"}})",
       R"("exists":false,"writable":true,"requests":0)", R"("choice":"es","preferred":[])",
       R"("bus":{"reachable":false},"application":{"found":false}})"});
}

TEST_F(DoctorCommandTest, missingRootLeavesOutThePlacesInIt) {
  diagnosis.resolution = {};
  diagnosis.resolution.rootFault = unreadable("The file doesn't exist.");
  EXPECT_TRUE(toText(diagnosis, Style::plain)
                  .starts_with("problem  root         there is no place for it\n"
                               "                      unreadable: The file doesn't exist.\n"
                               "ok       language     "));
  const std::string json = toJSON(diagnosis);
  EXPECT_TRUE(json.starts_with(R"({"ready":false,"obstacles":["noRoot"],"notes":[],)"
                               R"("root":{"path":null,"error":{"kind":"unreadable",)"
                               R"("message":"The file doesn't exist."}},"language":)"))
      << json;
}

TEST_F(DoctorCommandTest, unreadableMirrorIsAProblem) {
  diagnosis.resolution.mirrorFault = unreadable("Permission denied");
  expectPieces({"problem  mirror       /C/Warp/ManifestMirror\n"
                "                      unreadable: Permission denied\n",
                "The actions cannot work as they should.\n"},
               {R"({"ready":false,"obstacles":["mirrorUnreadable"])",
                R"("exists":true,"error":{"kind":"unreadable","message":"Permission denied"}})"});
}

TEST_F(DoctorCommandTest, placeThatCannotBeLookedAtMayExist) {
  const Fault fault = unreadable("Permission denied");
  diagnosis.rootSource = RootSource::fallback;
  diagnosis.containerFault = fault;
  diagnosis.resolution.mirrorExists.reset();
  diagnosis.resolution.mirrorFault = fault;
  diagnosis.resolution.indexExists.reset();
  diagnosis.resolution.indexFault = fault;
  diagnosis.handoff = {.exists = {}, .isWritable = false, .waitingRequests = {}, .fault = fault};
  const std::string words = "                      unreadable: Permission denied\n";
  const std::string error = R"("error":{"kind":"unreadable","message":"Permission denied"}})";
  expectPieces(
      {"note     root         /C/Warp\n"
       "                      the group container cannot be looked at: "
       "unreadable: Permission denied\n",
       "problem  mirror       /C/Warp/ManifestMirror\n" + words,
       "note     index        /C/Warp/destroyed-manifest-index.json\n" + words,
       "problem  handoff      /C/Warp/FinderHandoff\n" + words},
      {R"("notes":["containerUnreadable","indexUnusable"])",
       R"("root":{"path":"/C/Warp","source":"fallback",)" + error,
       R"("mirror":{"path":"/C/Warp/ManifestMirror","exists":null,)" + error,
       R"("index":{"path":"/C/Warp/destroyed-manifest-index.json","exists":null,)" + error,
       R"("handoff":{"path":"/C/Warp/FinderHandoff","exists":null,"writable":false,)" + error});
}

TEST_F(DoctorCommandTest, handoffReportsWhetherRequestsCanBeWritten) {
  const std::string head = "handoff      /C/Warp/FinderHandoff\n                      ";
  const struct {
    HandoffState state;
    std::string text;
    std::string json;
  } rows[] = {
      {{.exists = false, .isWritable = false, .waitingRequests = 0},
       "problem  " + head + "cannot be made\n",
       R"("exists":false,"writable":false,"requests":0})"},
      {{.exists = true, .isWritable = false, .waitingRequests = {}},
       "problem  " + head + "requests cannot be left there\n",
       R"("exists":true,"writable":false})"},
      {{.exists = true,
        .isWritable = true,
        .waitingRequests = {},
        .fault = unreadable("Permission denied")},
       "ok       " + head + "writable; cannot be listed: unreadable: Permission denied\n",
       R"("exists":true,"writable":true,"error":{"kind":"unreadable",)"},
      {{.exists = true, .isWritable = true, .waitingRequests = 2},
       "ok       " + head + "writable; 2 requests wait\n",
       R"("exists":true,"writable":true,"requests":2})"},
  };
  for (const auto& row : rows) {
    diagnosis.handoff = row.state;
    expectPieces({row.text}, {row.json});
  }
}

TEST_F(DoctorCommandTest, missingMirrorAndIndexAreNoProblems) {
  diagnosis.resolution.judged.clear();
  diagnosis.resolution.tombstoneCount = 0;
  diagnosis.resolution.mirrorExists = false;
  diagnosis.resolution.indexExists = false;
  diagnosis.preferredLanguages.clear();
  expectPieces({"ok       mirror       /C/Warp/ManifestMirror\n"
                "                      does not exist: no folder is warped\n"
                "ok       index        /C/Warp/destroyed-manifest-index.json\n"
                "                      does not exist: no Warp is recorded as destroyed\n",
                "ok       language     ja; the system prefers none\n"},
               {R"("exists":false,"files":0,"valid":0,)", R"("exists":false,"records":0})"});
}

TEST_F(DoctorCommandTest, containerOfTheEnvironmentIsReported) {
  diagnosis.rootSource = RootSource::environment;
  expectPieces({"                      where VELMORA_GROUP_CONTAINER puts it\n"},
               {R"("root":{"path":"/C/Warp","source":"VELMORA_GROUP_CONTAINER"})"});
}

}  // namespace
}  // namespace velmora::inspect

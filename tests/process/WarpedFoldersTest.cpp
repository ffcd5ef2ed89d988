// The actions on folders that the application has warped.

#include "tests/fakes/WarpRecords.h"
#include "tests/process/ProcessTest.h"
#include "tests/process/Trace.h"
#include "warpshared/writing/ManifestEncoding.h"

namespace velmora::process {

namespace {

/// Has a folder that is warped as the application warps it, and a folder inside.
class WarpedFoldersTest : public ProcessTest {
 protected:
  WarpedFoldersTest() {
    writeFile(home.container() / "Warp" / "ManifestMirror" / "warped.json",
              encodeManifest(manifestOf(folder, "warped")));
    writeFile(marker, markerJSON("warped"));
  }

  /// Expects these exit statuses of --check for Warp and for Restore.
  void expectChecks(int warp, int restore) {
    expectCancelled(run({"--check", folder}), warp, "");
    expectCancelled(run({"--check", "--restore", folder}), restore, "");
  }

  const std::string folder = home.makeFolder("warped");
  const std::string inside = home.makeFolder("warped/inside");
  const std::string plain = home.makeFolder("warped too");
  const std::string marker = folder + "/.velmora-warped.json";
};

TEST_F(WarpedFoldersTest, cannotBeWarpedAgain) {
  expectCancelled(run({folder, inside, folder + "/inside/.."}), 1,
                  message("en", chooseWarpFolders) + "\n");
}

TEST_F(WarpedFoldersTest, areLeftOutOfASelection) {
  expectCompleted(run({folder, plain, inside, home.path().string()}));
  const Request request = onlyRequest();
  EXPECT_EQ(request.action, "warpFolder");
  EXPECT_EQ(request.folderPaths, (std::vector<std::string>{plain, home.path().string()}));
}

TEST_F(WarpedFoldersTest, canBeRestored) {
  expectCompleted(run({"--restore", plain, folder + "/", inside}));
  const Request request = onlyRequest();
  EXPECT_EQ(request.action, "restoreMarkerFolder");
  EXPECT_EQ(request.folderPaths, std::vector<std::string>{folder});
}

TEST_F(WarpedFoldersTest, areCheckedWithoutChanges) {
  expectChecks(1, 0);
  const std::filesystem::path index = home.container() / "Warp" / "destroyed-manifest-index.json";
  writeFile(index, indexJSON({tombstoneOf(manifestOf(folder, "warped"))}));
  expectChecks(0, 1);
  writeFile(index, "{");
  expectChecks(1, 0);
  std::filesystem::remove(marker);
  expectChecks(0, 1);
}

TEST_F(WarpedFoldersTest, areFoundWhateverTheEnvironmentTellsTheJSONLibrary) {
  for (const char* name : {"fallback", "x", ""}) {
    command.environment["SIMDJSON_FORCE_IMPLEMENTATION"] = name;
    expectChecks(1, 0);
  }
}

TEST_F(WarpedFoldersTest, areFoundWhenSignalsInterruptTheReading) {
  // The leak checker does not work in a traced process.
  command.environment["ASAN_OPTIONS"] += ":detect_leaks=0";
  const std::filesystem::path trace = home.path() / "trace";
  const auto checkWithFaults = [&](const std::vector<std::string>& injections) {
    command.arguments =
        tracingCommand(trace, "?open,openat,?stat,?fstat,?newfstatat,?statx,read", injections);
    return run({VELMORA_TEST_PROGRAM, "--check", "--restore", folder}).exitStatus;
  };
  ASSERT_EQ(checkWithFaults({}), 0);
  std::size_t count = 0;
  for (const TracedCall& call : callsIn(trace)) {
    if (call.text.find(".json") != std::string::npos) {
      SCOPED_TRACE(call.text);
      EXPECT_EQ(
          checkWithFaults({call.name + ":error=EINTR:when=" + std::to_string(call.occurrence)}), 0);
      EXPECT_EQ(injectedFaults(trace), 1);
      ++count;
    }
  }
  EXPECT_GT(count, 10);
}

}  // namespace

}  // namespace velmora::process

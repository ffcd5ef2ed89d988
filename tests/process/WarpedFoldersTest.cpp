// The actions on folders that the application has warped.

#include "tests/fakes/WarpRecords.h"
#include "tests/process/ProcessTest.h"

namespace velmora::process {

namespace {

class WarpedFoldersTest : public ProcessTest {
 protected:
  /// Makes a folder and warps it, as the application leaves it.
  std::string warpFolder(const std::string& name) {
    const std::string folder = home.makeFolder(name);
    writeFile(home.container() / "Warp" / "ManifestMirror" / (name + ".json"),
              encodeManifest(manifestOf(folder, name)));
    writeFile(folder + "/.velmora-warped.json", markerJSON(name));
    return folder;
  }

  std::string makeInside(const std::string& folder, const std::string& name) {
    std::filesystem::create_directories(folder + "/" + name);
    return folder + "/" + name;
  }
};

TEST_F(WarpedFoldersTest, cannotBeWarpedAgain) {
  const std::string folder = warpFolder("warped");
  const Outcome outcome = run({folder, makeInside(folder, "inside"), folder + "/inside/.."});
  expectCancelled(outcome, 1, outcome.error);
  EXPECT_FALSE(outcome.error.empty());
}

TEST_F(WarpedFoldersTest, leaveTheOthersOfASelection) {
  const std::string folder = warpFolder("warped");
  const std::string sibling = home.makeFolder("warped too");
  expectCompleted(run({folder, sibling, makeInside(folder, "inside"), home.path().string()}));
  const Request request = onlyRequest();
  EXPECT_EQ(request.action, "warpFolder");
  EXPECT_EQ(request.folderPaths, (std::vector<std::string>{sibling, home.path().string()}));
}

TEST_F(WarpedFoldersTest, canBeRestored) {
  const std::string folder = warpFolder("warped");
  expectCompleted(
      run({"--restore", home.makeFolder("plain"), folder + "/", makeInside(folder, "inside")}));
  const Request request = onlyRequest();
  EXPECT_EQ(request.action, "restoreMarkerFolder");
  EXPECT_EQ(request.folderPaths, std::vector<std::string>{folder});
}

TEST_F(WarpedFoldersTest, areCheckedWithoutATrace) {
  const std::string folder = warpFolder("warped");
  expectCancelled(run({"--check", folder}), 1, "");
  expectCancelled(run({"--check", "--restore", folder}), 0, "");
  std::filesystem::remove(folder + "/.velmora-warped.json");
  expectCancelled(run({"--check", folder}), 0, "");
  expectCancelled(run({"--check", "--restore", folder}), 1, "");
}

TEST_F(WarpedFoldersTest, areOrdinaryOnceTheirWarpIsDestroyed) {
  const std::string folder = warpFolder("warped");
  writeFile(home.container() / "Warp" / "destroyed-manifest-index.json",
            indexJSON({tombstoneOf(manifestOf(folder, "warped"))}));
  expectCancelled(run({"--check", folder}), 0, "");
  writeFile(home.container() / "Warp" / "destroyed-manifest-index.json", "{");
  expectCancelled(run({"--check", folder}), 1, "");
}

}  // namespace

}  // namespace velmora::process

// The shared files that a query about a folder opens. It must not wait for a marker on a sleeping
// disk, nor read files that cannot matter.

#include "tests/fakes/WarpRecords.h"
#include "tests/process/ProcessTest.h"
#include "tests/process/Trace.h"
#include "warpshared/writing/ManifestEncoding.h"

#include <filesystem>
#include <set>
#include <string>
#include <vector>

namespace velmora::process {

namespace {

constexpr const char* markerName = "/.velmora-warped.json";

class OpenedFilesTest : public ProcessTest {
 protected:
  OpenedFilesTest() {
    for (const char* name : {"warped", "other", "third"}) {
      const std::string folder = home.makeFolder(name);
      const std::filesystem::path mirror = home.container() / "Warp" / "ManifestMirror";
      writeFile(mirror / (std::string(name) + ".json"), encodeManifest(manifestOf(folder, name)));
      writeFile(folder + markerName, markerJSON(name));
    }
    // The leak checker does not work in a traced process.
    command.environment["ASAN_OPTIONS"] += ":detect_leaks=0";
  }

  /// The paths that `--check` with `options` opens or tries to open.
  std::set<std::string> openedFor(const std::string& item, std::vector<std::string> options,
                                  int exitStatus) {
    const std::filesystem::path trace = home.path() / "trace";
    command.arguments = tracingCommand(trace, "?open,openat", {});
    options.insert(options.begin(), {VELMORA_TEST_PROGRAM, "--check"});
    options.push_back(item);
    EXPECT_EQ(run(options).exitStatus, exitStatus);
    std::set<std::string> paths;
    for (const TracedCall& call : callsIn(trace)) {
      const std::size_t begin = call.text.find('"') + 1;
      paths.insert(call.text.substr(begin, call.text.find('"', begin) - begin));
    }
    return paths;
  }

  /// Expects only the markers in the item and above it.
  static void expectMarkersAround(const std::string& item, const std::set<std::string>& opened) {
    std::set<std::string> markers;
    for (const std::string& path : opened) {
      if (path.ends_with(markerName)) {
        markers.insert(path);
      }
    }
    std::set<std::string> expected = {markerName};
    for (std::filesystem::path folder = item; folder != "/"; folder = folder.parent_path()) {
      expected.insert(folder.string() + markerName);
    }
    EXPECT_EQ(markers, expected);
  }

  static bool hasMirror(const std::set<std::string>& opened) {
    return std::ranges::any_of(
        opened, [](const std::string& path) { return path.find("ManifestMirror") != path.npos; });
  }
};

TEST_F(OpenedFilesTest, excludeManifestsForAnOrdinaryFolder) {
  const std::string item = home.makeFolder("plain");
  const std::set<std::string> opened = openedFor(item, {}, 0);
  expectMarkersAround(item, opened);
  EXPECT_FALSE(hasMirror(opened));
  EXPECT_FALSE(hasMirror(openedFor(item, {"--restore"}, 1)));
}

TEST_F(OpenedFilesTest, excludeOtherMarkersForAWarpedFolder) {
  const std::string item = home.folders() / "warped";
  for (const bool isRestore : {false, true}) {
    const std::set<std::string> opened = openedFor(
        item, isRestore ? std::vector<std::string>{"--restore"} : std::vector<std::string>(),
        isRestore ? 0 : 1);
    expectMarkersAround(item, opened);
    EXPECT_TRUE(hasMirror(opened));
  }
}

}  // namespace

}  // namespace velmora::process

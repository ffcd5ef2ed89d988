// Real files of every wrong kind where the application's files should be: each only shrinks the
// list, and nothing waits, grows without bound or ends the program.

#include "platform/posix/PosixFileReader.h"
#include "platform/posix/PosixPathStandardizer.h"
#include "resolution/ManifestMirror.h"
#include "resolution/WarpMarker.h"
#include "tests/support/HostileFiles.h"
#include "tests/support/RowName.h"
#include "tests/support/ScratchDirectory.h"
#include "tests/support/Threads.h"
#include "tests/fakes/WarpRecords.h"
#include "tests/resolution/RecordingObserver.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace velmora {
namespace {

using Paths = std::vector<std::string>;

/// Two warped folders, a and b, on disk.
class WarpedDirectories {
 public:
  WarpedDirectories() {
    for (const char* name : {"a", "b"}) {
      scratch.write("ManifestMirror/" + std::string(name) + ".json",
                    encodeManifest(manifestOf(scratch.path(name), name)));
      scratch.write(std::string(name) + "/.velmora-warped.json", markerJSON(name));
    }
  }

  Paths confirmed() {
    const PosixFileReader files;
    const PosixPathStandardizer paths;
    Paths folders;
    for (const MirroredManifest& manifest :
         confirmedWarpManifests(mirroredManifests(scratch.path(), files, paths, observer),
                                scratch.path(), files, paths, observer)) {
      folders.push_back(manifest.manifest.originalFolderPath.utf8());
    }
    return folders;
  }

  ScratchDirectory scratch;
  RecordingObserver observer;
};

struct HostileCase {
  const char* name;
  /// Makes it at a path where nothing is.
  std::function<void(const std::string& path)> make;
};

void makeFile(const std::string& path, std::string_view bytes) {
  std::ofstream(path, std::ios::binary) << bytes;
}

constexpr off_t eightGiB = off_t{8} << 30;

const std::vector<HostileCase> hostileCases = {
    {"nothing", [](const std::string&) {}},
    {"directory", [](const std::string& path) { std::filesystem::create_directory(path); }},
    {"fifo", [](const std::string& path) { require(::mkfifo(path.c_str(), 0600) == 0, path); }},
    {"socket", makeSocket},
    {"linkToADevice", [](const std::string& path) { link("/dev/zero", path); }},
    {"danglingLink", [](const std::string& path) { link("/nothing/there", path); }},
    {"loopingLink", [](const std::string& path) { link(path, path); }},
    {"linkToADirectory", [](const std::string& path) { link("/", path); }},
    {"sparseFile", [](const std::string& path) { makeSparseFile(path, eightGiB); }},
    {"emptyFile", [](const std::string& path) { makeFile(path, ""); }},
    {"zeros", [](const std::string& path) { makeSparseFile(path, 65536); }},
    {"deeplyNested", [](const std::string& path) { makeFile(path, std::string(1 << 20, '[')); }},
    {"halfADocument",
     [](const std::string& path) { makeFile(path, R"({"version":4,"warpID":"b)"); }},
};

class HostileFiles : public testing::TestWithParam<HostileCase> {
 protected:
  std::string replace(const std::string& name) {
    std::string path = warped.scratch.path(name);
    std::filesystem::remove_all(path);
    GetParam().make(path);
    return path;
  }

  WarpedDirectories warped;
};

TEST_P(HostileFiles, inTheMirrorAreLeftOut) {
  replace("ManifestMirror/b.json");
  EXPECT_EQ(warped.confirmed(), Paths{warped.scratch.path("a")});
  EXPECT_EQ(warped.observer.readFiles, Paths{warped.scratch.path("ManifestMirror/a.json")});
}

TEST_P(HostileFiles, inTheMarkersPlaceConfirmNothing) {
  replace("b/.velmora-warped.json");
  EXPECT_EQ(warped.confirmed(), Paths{warped.scratch.path("a")});
}

TEST_P(HostileFiles, inTheIndexsPlaceBlockNothing) {
  replace("destroyed-manifest-index.json");
  EXPECT_EQ(warped.confirmed(), (Paths{warped.scratch.path("a"), warped.scratch.path("b")}));
}

TEST_P(HostileFiles, inTheMirrorsPlaceLeaveNoWarpedFolder) {
  const std::string path = replace("ManifestMirror");
  EXPECT_TRUE(warped.confirmed().empty());
  std::error_code looping;
  EXPECT_EQ(warped.observer.listingErrors.empty(), std::filesystem::is_directory(path, looping));
}

INSTANTIATE_TEST_SUITE_P(Kinds, HostileFiles, testing::ValuesIn(hostileCases), RowName());

TEST(ChangingFiles, areReadAsTheyAreAtSomeMoment) {
  WarpedDirectories warped;
  const std::string manifestPath = warped.scratch.path("ManifestMirror/b.json");
  const std::string markerPath = warped.scratch.path("b/.velmora-warped.json");
  const std::string manifest = encodeManifest(manifestOf(warped.scratch.path("b"), "b"));
  const RepeatingThread application([&] {
    makeFile(manifestPath, manifest);
    makeFile(markerPath, markerJSON("b"));
    std::filesystem::resize_file(manifestPath, manifest.size() / 2);
    std::filesystem::remove(markerPath);
    std::filesystem::remove(manifestPath);
  });
  for (int round = 0; round < 300; ++round) {
    const Paths folders = warped.confirmed();
    ASSERT_FALSE(folders.empty());
    EXPECT_EQ(folders.front(), warped.scratch.path("a"));
    EXPECT_LE(folders.size(), 2);
  }
}

}  // namespace
}  // namespace velmora

// Real files of every wrong kind in place of the application's files. Each only shortens the list.
// Nothing waits, grows without bound or ends the program.

#include "platform/Platform.h"
#include "platform/posix/PosixFileReader.h"
#include "resolution/WarpedFolders.h"
#include "tests/fakes/FakePlatform.h"
#include "tests/fakes/WarpRecords.h"
#include "tests/resolution/Folders.h"
#include "tests/support/HostileFiles.h"
#include "tests/support/ScratchDirectory.h"
#include "tests/support/Threads.h"
#include "warpshared/writing/ManifestEncoding.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

namespace velmora {
namespace {

using Paths = std::vector<std::string>;

/// Two warped folders on disk, a and b.
class WarpedDirectories {
 public:
  WarpedDirectories() {
    fake.locations.groupContainers["group.io.tolvane.Velmora"] = scratch.path();
    for (const char* name : {"a", "b"}) {
      scratch.write("Warp/ManifestMirror/" + std::string(name) + ".json",
                    encodeManifest(manifestOf(scratch.path(name), name)));
      scratch.write(std::string(name) + "/.velmora-warped.json", markerJSON(name));
    }
  }

  Resolution resolve() {
    const PosixFileReader files;
    return resolveWarpedFolders(fake.platform(files));
  }

  Paths confirmed() { return bytesOf(warpedFolderPaths(resolve())); }

  ScratchDirectory scratch;
  FakePlatform fake;
};

void makeFile(const std::string& path, std::string_view bytes) {
  std::ofstream(path, std::ios::binary) << bytes;
}

constexpr off_t eightGiB = off_t{8} << 30;

struct HostileCase {
  const char* name;
  /// Creates the file at a path where nothing exists.
  void (*make)(const std::string& path);
};

const HostileCase hostileCases[] = {
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

TEST(HostileFiles, onlyShortenTheList) {
  for (const HostileCase& row : hostileCases) {
    for (const char* const name : {"Warp/ManifestMirror/b.json", "b/.velmora-warped.json",
                                   "Warp/destroyed-manifest-index.json", "Warp/ManifestMirror"}) {
      SCOPED_TRACE(std::string(row.name) + " in the place of " + name);
      WarpedDirectories warped;
      const std::string a = warped.scratch.path("a");
      const std::string path = warped.scratch.path(name);
      std::filesystem::remove_all(path);
      row.make(path);
      const Resolution resolution = warped.resolve();
      const Paths confirmed = bytesOf(warpedFolderPaths(resolution));
      Paths valid;
      for (const JudgedManifest& judged : resolution.judged) {
        valid.push_back(judged.filePath.utf8());
      }
      const Paths mirrored = {warped.scratch.path("Warp/ManifestMirror/a.json"),
                              warped.scratch.path("Warp/ManifestMirror/b.json")};
      std::error_code looping;
      if (path == warped.scratch.path("Warp/ManifestMirror")) {
        EXPECT_EQ(confirmed, Paths());
        EXPECT_EQ(resolution.mirrorFault == nullptr, std::filesystem::is_directory(path, looping));
      } else if (path.ends_with("index.json")) {
        EXPECT_EQ(confirmed, (Paths{a, warped.scratch.path("b")}));
      } else {
        EXPECT_EQ(confirmed, Paths{a});
        EXPECT_EQ(valid, path == mirrored[1] ? Paths{mirrored[0]} : mirrored);
      }
    }
  }
}

TEST(ChangingFiles, haveTheirContentOfSomeMoment) {
  WarpedDirectories warped;
  const std::string manifestPath = warped.scratch.path("Warp/ManifestMirror/b.json");
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

// Screening reads the markers first, and then only the manifests that can matter. Its verdicts must
// equal those from all manifests and markers. The random worlds on disk have nested Warps, folders
// whose names differ only in spelling, links, and broken files of every kind.

#include "extension/SelectionScreening.h"
#include "platform/Platform.h"
#include "platform/posix/PosixFileReader.h"
#include "resolution/WarpMarker.h"
#include "resolution/WarpRoots.h"
#include "tests/fakes/FakePlatform.h"
#include "tests/fakes/WarpRecords.h"
#include "tests/support/RandomTrees.h"
#include "tests/support/ScratchDirectory.h"
#include "text/UniquePaths.h"
#include "warpshared/writing/ManifestEncoding.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <ostream>
#include <random>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

namespace velmora {
namespace {

namespace filesystem = std::filesystem;

/// Each row has the spellings of one name, which are different folders on this file system.
const std::vector<std::vector<std::string>> names = {
    {"a"},
    {"Photos 2025"},
    {"K", "\u212a"},
    {"x;", "x\u037e"},
    {"`", "\u1fef"},
    {"\u00e9", "e\u0301"},
    {"\ud55c", "\u1112\u1161\u11ab"},
    {"\u8c48", "\uf900"},
};

/// Each row has the spellings of one identifier. A file can be searched for the bytes of an
/// identifier with one spelling, unless the file escapes some of them.
const std::vector<std::vector<std::string>> identifiers = {
    {"0B1D-1"}, {"0B1D-2"}, {"0B1D-3"}, {"K-4", "\u212a-4"}, {"\u00e9-5", "e\u0301-5"}};

class World {
 public:
  explicit World(std::uint32_t seed) : random_(seed) {
    fake.locations.groupContainers["group.io.tolvane.Velmora"] = scratch.path("container");
    scratch.write("container/Warp/ManifestMirror/no manifest.json", "{}");
    makeFolders();
    for (int count = below(5) + 1; count > 0; --count) {
      makeWarp("warp " + std::to_string(count) + ".json");
    }
    makeIndex();
  }

  std::vector<FileURL> selection() {
    std::vector<FileURL> urls;
    for (int count = below(4) + 1; count > 0; --count) {
      const std::string& folder = anyOf(folders_);
      const std::array<std::string, 5> forms = {folder, folder + "/", respelled(folder),
                                                folder + "/missing", folder + "/./x/.."};
      urls.push_back({.path = forms[indexBelow(forms.size())]});
    }
    return urls;
  }

  ScratchDirectory scratch;
  FakePlatform fake;

 private:
  int below(int limit) { return std::uniform_int_distribution<int>(0, limit - 1)(random_); }
  std::size_t indexBelow(std::size_t limit) {
    return std::uniform_int_distribution<std::size_t>(0, limit - 1)(random_);
  }
  template <class Element>
  const Element& anyOf(const std::vector<Element>& elements) {
    return elements[indexBelow(elements.size())];
  }

  void makeFolders() {
    folders_ = {scratch.path("tree")};
    filesystem::create_directory(folders_.front());
    for (int count = below(7) + 3; count > 0; --count) {
      const std::vector<std::string>& spellings = anyOf(names);
      const std::string parent = anyOf(folders_);
      for (const std::string& spelling : spellings) {
        // Often both spellings exist.
        if (below(3) > 0 || spellings.size() == 1) {
          addFolder(parent + "/" + spelling);
        }
      }
    }
  }

  void addFolder(const std::string& path) {
    std::error_code error;
    if (below(8) == 0) {
      filesystem::create_directory_symlink(anyOf(folders_), path, error);
    } else {
      filesystem::create_directory(path, error);
    }
    if (!error) {
      folders_.push_back(path);
    }
  }

  /// The same path with some characters in another spelling.
  std::string respelled(const std::string& path) {
    std::string result = path;
    for (const std::vector<std::string>& spellings : names) {
      const std::size_t position = result.find("/" + spellings.front());
      if (spellings.size() > 1 && position != std::string::npos && below(2) == 0) {
        result.replace(position + 1, spellings.front().size(), spellings.back());
      }
    }
    return result;
  }

  void makeWarp(const std::string& fileName) {
    const std::vector<std::string>& spellings = anyOf(identifiers);
    const std::string folder = below(4) == 0 ? respelled(anyOf(folders_)) : anyOf(folders_);
    VelmoraWarpSharedManifest manifest = manifestOf(folder, anyOf(spellings));
    manifest.manifestKey = "manifests/" + fileName;
    manifest.createdAt.secondsSinceReferenceDate = below(3);
    scratch.write("container/Warp/ManifestMirror/" + fileName, withFault(manifest));
    if (below(4) > 0) {
      makeMarker(folder, anyOf(spellings));
    }
    if (below(6) == 0) {
      tombstones_.push_back(tombstoneOf(manifest));
    }
  }

  /// Most manifests get no fault.
  std::string withFault(const VelmoraWarpSharedManifest& manifest) {
    std::string bytes = encodeManifest(manifest);
    const std::string key = "\"warpID\":\"";
    switch (below(8)) {
      case 0:
        bytes.resize(indexBelow(bytes.size()));
        break;
      case 1:  // escapes the "B" of most identifiers
        if (const std::size_t letter = bytes.find("0B1D-"); letter != std::string::npos) {
          bytes.replace(letter + 1, 1, "\\u0042");
        }
        break;
      case 2:  // a duplicate key, of which only the first counts
        bytes.replace(bytes.find(key), 0, R"("warpID":"0B1D-1",)");
        break;
      default:
        break;
    }
    return bytes;
  }

  void makeMarker(const std::string& folder, const std::string& warpID) {
    const std::string marker = folder + "/.velmora-warped.json";
    std::error_code error;
    if (!filesystem::is_directory(folder, error)) {
      return;
    }
    filesystem::remove_all(marker, error);
    switch (below(8)) {
      case 0:
        filesystem::create_directory(marker, error);
        break;
      case 1:
        filesystem::create_symlink(anyOf(folders_) + "/.velmora-warped.json", marker, error);
        break;
      case 2:
        write(marker, "{\"warpID\":");
        break;
      case 3:
        write(marker, markerJSON("stray"));
        break;
      default:
        write(marker, markerJSON(warpID));
        break;
    }
  }

  void write(const std::string& path, const std::string& bytes) {
    scratch.write(path.substr(scratch.path().size() + 1), bytes);
  }

  void makeIndex() {
    std::string bytes = indexJSON(tombstones_);
    if (below(6) == 0) {
      bytes.pop_back();
    }
    if (below(3) > 0) {
      scratch.write("container/Warp/destroyed-manifest-index.json", bytes);
    }
  }

  std::mt19937 random_;
  std::vector<std::string> folders_;
  std::vector<VelmoraWarpSharedDestroyedManifestRecord> tombstones_;
};

struct Verdict {
  bool isAccepted;
  std::string root;

  bool operator==(const Verdict&) const = default;
};

std::ostream& operator<<(std::ostream& stream, const Verdict& verdict) {
  return stream << (verdict.isAccepted ? "accepted" : "refused") << " in " << verdict.root;
}

Verdict screened(const FileURL& item, const Platform& platform) {
  const Screening screening = screenSelection({item}, platform);
  return {.isAccepted = !acceptedPaths(screening).empty(),
          .root = screening.items.front().root.value_or("none").utf8()};
}

Verdict byEveryManifest(const FileURL& item, const Platform& platform, const WarpRoots& roots,
                        bool isRestore) {
  const Text path = platform.paths.standardizedFileURLPath(item.path);
  const bool isCandidate = isRestore ? platform.fileReader.exists(warpMarkerPath(path))
                                     : platform.fileReader.isDirectory(path);
  if (!isCandidate) {
    return {.isAccepted = false, .root = "none"};
  }
  const std::optional<Text> root = roots.enclosingWarpRoot(standardized(path, platform.paths));
  return {.isAccepted = isRestore ? root == path : !root.has_value(),
          .root = root.value_or("none").utf8()};
}

TEST(RandomWorlds, getTheVerdictsOfAllManifestsAndMarkers) {
  const PosixFileReader files;
  int questionCount = 0;
  int warpedCount = 0;
  const std::uint32_t worldCount = randomTreeCount(300);
  for (std::uint32_t seed = 0; seed < worldCount; ++seed) {
    SCOPED_TRACE("world " + std::to_string(seed));
    World world(seed);
    const Platform platform = world.fake.platform(files);
    const WarpRoots roots(warpedFolderPaths(resolveWarpedFolders(platform)));
    const std::vector<FileURL> selection = world.selection();
    for (const bool isRestore : {false, true}) {
      world.fake.bundle.identifier =
          isRestore ? "io.tolvane.Velmora.FinderRestoreAction" : "io.tolvane.Velmora.FinderWarp";
      std::vector<Text> accepted;
      for (const FileURL& item : selection) {
        const Verdict expected = byEveryManifest(item, platform, roots, isRestore);
        ASSERT_EQ(screened(item, platform), expected) << item.path.utf8() << " " << isRestore;
        if (expected.isAccepted) {
          accepted.push_back(platform.paths.standardizedFileURLPath(item.path));
        }
        ++questionCount;
        warpedCount += expected.root != "none" ? 1 : 0;
      }
      ASSERT_EQ(acceptedPaths(screenSelection(selection, platform)),
                internal::uniquePaths(accepted));
    }
  }
  RecordProperty("questions", questionCount);
  RecordProperty("warped", warpedCount);
  EXPECT_GT(warpedCount, questionCount / 10);
}

}  // namespace
}  // namespace velmora

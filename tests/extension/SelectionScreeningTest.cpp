#include "extension/SelectionScreening.h"
#include "tests/fakes/FakePlatform.h"
#include "tests/fakes/RecordedWarps.h"
#include "tests/fakes/WarpRecords.h"
#include "tests/support/Bytes.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace velmora {
namespace {

using Paths = std::vector<Text>;

constexpr const char* restoreIdentifier = "io.tolvane.Velmora.FinderRestoreAction";

struct ScreeningCase {
  const char* name;
  /// Folders with a manifest and a marker of the same Warp. A folder that ends in "!" has no
  /// marker.
  std::vector<std::string> warped;
  /// Existing directories. A directory that ends in "*" holds a stray marker.
  std::vector<std::string> folders;
  Paths selection;
  Paths accepted;
};

void expectAccepted(const ScreeningCase& row, const char* identifier) {
  SCOPED_TRACE(row.name);
  FakePlatform fake;
  fake.bundle.identifier = identifier;
  fake.fileSystem.files["/file"] = "plain";
  int warpCount = 0;
  for (std::string folder : row.warped) {
    const std::string warpID = "warp-" + std::to_string(++warpCount);
    if (folder.ends_with('!')) {
      folder.pop_back();
      mirror(fake, manifestOf(folder, warpID));
      fake.fileSystem.directories.insert(folder);
    } else {
      recordWarp(fake, folder, warpID);
    }
  }
  for (std::string folder : row.folders) {
    if (folder.ends_with('*')) {
      folder.pop_back();
      mark(fake, folder, "stray");
    }
    fake.fileSystem.directories.insert(folder);
  }
  std::vector<FileURL> selection;
  for (const Text& path : row.selection) {
    selection.push_back({.path = path});
  }
  EXPECT_EQ(bytesOf(acceptedPaths(screenSelection(selection, fake.platform()))),
            bytesOf(row.accepted));
}

TEST(WarpScreening, acceptsFoldersOutsideEveryWarpedFolder) {
  const ScreeningCase rows[] = {
      {"nothing", {}, {}, {}, {}},
      {"folder", {}, {"/a"}, {"/a"}, {"/a"}},
      {"plainFile", {}, {}, {"/file"}, {}},
      {"fileAmongFolders", {}, {"/a", "/b"}, {"/a", "/file", "/b"}, {"/a", "/b"}},
      {"missing", {}, {}, {"/missing"}, {}},
      {"selectionOrder", {}, {"/a", "/b"}, {"/b", "/a"}, {"/b", "/a"}},
      {"twice", {}, {"/a"}, {"/a", "/a/", "/x/../a"}, {"/a"}},
      {"standardised", {}, {"/a/b"}, {"/a//./b/"}, {"/a/b"}},
      {"warpedFolder", {"/a"}, {"/a"}, {"/a"}, {}},
      {"insideWarped", {"/a/b"}, {"/a/b/c"}, {"/a/b/c"}, {}},
      {"siblingWithSamePrefix", {"/a/b"}, {"/a/bc"}, {"/a/bc"}, {"/a/bc"}},
      {"parentOfWarped", {"/a/b"}, {"/a"}, {"/a"}, {"/a"}},
      {"strayMarkerIsNotAsked", {}, {"/a*"}, {"/a"}, {"/a"}},
      {"warpedInOtherNormalForm", {"/e\u0301"}, {"/\u00e9"}, {"/\u00e9"}, {}},
      {"manifestWithoutMarker", {"/a!"}, {}, {"/a"}, {"/a"}},
      {"innermostWarpedFolder", {"/a", "/a/b"}, {"/a/b/c"}, {"/a/b/c"}, {}},
      {"everythingWarped", {"/"}, {"/a"}, {"/a", "/"}, {}}};
  for (const ScreeningCase& row : rows) {
    expectAccepted(row, "io.tolvane.Velmora.FinderWarpAction");
  }
}

TEST(RestoreScreening, acceptsWarpedFoldersWithTheirMarker) {
  const ScreeningCase rows[] = {
      {"nothing", {}, {}, {}, {}},
      {"warpedFolder", {"/a"}, {}, {"/a"}, {"/a"}},
      {"markerDeleted", {"/a!"}, {}, {"/a"}, {}},
      {"markerWithoutManifest", {}, {"/a*"}, {"/a"}, {}},
      {"markerOfAnotherWarp", {"/a!"}, {"/a*"}, {"/a"}, {}},
      {"strayMarkerInside", {"/a"}, {"/a/b*"}, {"/a/b"}, {}},
      {"nested", {"/a", "/a/b"}, {}, {"/a/b", "/a"}, {"/a/b", "/a"}},
      {"plainFolder", {"/a"}, {"/b"}, {"/b"}, {}},
      {"plainFile", {"/a"}, {}, {"/file"}, {}},
      {"twice", {"/a"}, {}, {"/a", "/a/"}, {"/a"}},
      {"theRoot", {"/"}, {}, {"/"}, {"/"}},
      {"otherNormalForm", {"/e\u0301"}, {"/\u00e9*"}, {"/\u00e9"}, {"/\u00e9"}}};
  for (const ScreeningCase& row : rows) {
    expectAccepted(row, restoreIdentifier);
  }
}

TEST(Screening, givesTheReasonForEachVerdict) {
  FakePlatform fake;
  recordWarp(fake, "/warped", "outer");
  recordWarp(fake, "/warped/inner", "inner");
  mark(fake, "/warped/stray", "stray");
  mark(fake, "/marked", "gone");
  fake.fileSystem.createDirectories("/plain");
  using enum ItemVerdict;
  struct Row {
    const char* identifier;
    const char* path;
    const char* root;
    ItemVerdict verdict;
  };
  const char* const warpIdentifier = "";
  const Row rows[] = {{warpIdentifier, "/plain", "none", accepted},
                      {warpIdentifier, "/missing", "none", notADirectory},
                      {warpIdentifier, "/warped", "/warped", alreadyWarped},
                      {warpIdentifier, "/warped/stray", "/warped", insideWarpedFolder},
                      {restoreIdentifier, "/warped/inner", "/warped/inner", accepted},
                      {restoreIdentifier, "/plain", "none", noMarker},
                      {restoreIdentifier, "/marked", "none", notWarped},
                      {restoreIdentifier, "/warped/stray", "/warped", insideWarpedFolder}};
  for (const Row& row : rows) {
    SCOPED_TRACE(std::string(row.identifier) + " " + row.path);
    fake.bundle.identifier = row.identifier;
    const Screening screening = screenSelection({{row.path}}, fake.platform());
    ASSERT_EQ(screening.items.size(), 1);
    const ScreenedItem& item = screening.items.front();
    EXPECT_EQ(item.path.utf8(), row.path);
    EXPECT_EQ(item.root.value_or("none").utf8(), row.root);
    EXPECT_EQ(item.verdict, row.verdict);
  }
  fake.bundle.identifier = warpIdentifier;
  const Screening screening =
      screenSelection({{"/plain"}, {"/warped"}, {"/plain/"}}, fake.platform());
  EXPECT_EQ(acceptedPaths(screening), Paths{"/plain"});
  EXPECT_EQ(screening.items.size(), 3);
}

TEST(ScreeningMarkers, countForTheSelectionWhateverTheirFileKind) {
  FakePlatform fake;
  recordWarp(fake, "/e\u0301", "warp");
  fake.bundle.identifier = restoreIdentifier;
  // The same folder in the other normal form, where the fake has a directory in place of the
  // marker.
  fake.fileSystem.createDirectories("/\u00e9/.velmora-warped.json");
  EXPECT_EQ(acceptedPaths(screenSelection({{"/\u00e9"}}, fake.platform())), Paths{"/\u00e9"});
}

}  // namespace
}  // namespace velmora

#include "extension/SelectionScreening.h"
#include "tests/Bytes.h"
#include "tests/RowName.h"
#include "tests/fakes/FakePlatform.h"

#include <gtest/gtest.h>

namespace velmora {
namespace {

using Paths = std::vector<Text>;

struct ScreeningCase {
  const char* name;
  Paths warped;
  /// Each exists as a directory; one that ends in "*" holds a marker, too.
  std::vector<std::string> folders;
  Paths selection;
  Paths accepted;
};

class Screening : public testing::TestWithParam<ScreeningCase> {
 protected:
  Screening() {
    warpedFolders.paths = GetParam().warped;
    for (std::string folder : GetParam().folders) {
      if (folder.ends_with('*')) {
        folder.pop_back();
        fake.fileSystem.files[folder + "/.velmora-warped.json"] = "{}";
      }
      fake.fileSystem.directories.insert(folder);
    }
    fake.fileSystem.files["/file"] = "plain";
  }

  std::vector<std::string> acceptedPaths() {
    std::vector<FileURL> selection;
    for (const Text& path : GetParam().selection) {
      selection.push_back({.path = path});
    }
    return bytesOf(screenSelection(selection, fake.platform(), warpedFolders));
  }

  FakePlatform fake;
  FakeWarpedFolders warpedFolders;
};

class WarpScreening : public Screening {};

TEST_P(WarpScreening, acceptsFoldersOutsideEveryWarpedFolder) {
  EXPECT_EQ(acceptedPaths(), bytesOf(GetParam().accepted));
}

INSTANTIATE_TEST_SUITE_P(
    Selections, WarpScreening,
    testing::Values(
        ScreeningCase{"nothing", {}, {}, {}, {}},
        ScreeningCase{"folder", {}, {"/a"}, {"/a"}, {"/a"}},
        ScreeningCase{"plainFile", {}, {}, {"/file"}, {}},
        ScreeningCase{"fileAmongFolders", {}, {"/a", "/b"}, {"/a", "/file", "/b"}, {"/a", "/b"}},
        ScreeningCase{"missing", {}, {}, {"/missing"}, {}},
        ScreeningCase{"selectionOrder", {}, {"/a", "/b"}, {"/b", "/a"}, {"/b", "/a"}},
        ScreeningCase{"twice", {}, {"/a"}, {"/a", "/a/", "/x/../a"}, {"/a"}},
        ScreeningCase{"standardised", {}, {"/a/b"}, {"/a//./b/"}, {"/a/b"}},
        ScreeningCase{"warpedFolder", {"/a"}, {"/a"}, {"/a"}, {}},
        ScreeningCase{"insideWarped", {"/a/b"}, {"/a/b/c"}, {"/a/b/c"}, {}},
        ScreeningCase{"siblingWithSamePrefix", {"/a/b"}, {"/a/bc"}, {"/a/bc"}, {"/a/bc"}},
        ScreeningCase{"parentOfWarped", {"/a/b"}, {"/a"}, {"/a"}, {"/a"}},
        ScreeningCase{"strayMarkerIsNotAsked", {}, {"/a*"}, {"/a"}, {"/a"}},
        ScreeningCase{"warpedInOtherNormalForm", {"/e\u0301"}, {"/\u00e9"}, {"/\u00e9"}, {}},
        ScreeningCase{"warpedNeedsStandardising", {"/x/../a/"}, {"/a"}, {"/a"}, {}},
        ScreeningCase{"everythingWarped", {"/"}, {"/a"}, {"/a", "/"}, {}}),
    RowName());

class RestoreScreening : public Screening {
 protected:
  RestoreScreening() { fake.bundle.identifier = "io.tolvane.Velmora.FinderRestoreAction"; }
};

TEST_P(RestoreScreening, acceptsWarpedFoldersWithTheirMarker) {
  EXPECT_EQ(acceptedPaths(), bytesOf(GetParam().accepted));
}

INSTANTIATE_TEST_SUITE_P(
    Selections, RestoreScreening,
    testing::Values(
        ScreeningCase{"nothing", {}, {}, {}, {}},
        ScreeningCase{"warpedFolder", {"/a"}, {"/a*"}, {"/a"}, {"/a"}},
        ScreeningCase{"markerDeleted", {"/a"}, {"/a"}, {"/a"}, {}},
        ScreeningCase{"markerWithoutManifest", {}, {"/a*"}, {"/a"}, {}},
        ScreeningCase{"strayMarkerInside", {"/a"}, {"/a*", "/a/b*"}, {"/a/b"}, {}},
        ScreeningCase{"nested", {"/a", "/a/b"}, {"/a*", "/a/b*"}, {"/a/b", "/a"}, {"/a/b", "/a"}},
        ScreeningCase{"plainFolder", {"/a"}, {"/b"}, {"/b"}, {}},
        ScreeningCase{"plainFile", {"/a"}, {}, {"/file"}, {}},
        ScreeningCase{"twice", {"/a"}, {"/a*"}, {"/a", "/a/"}, {"/a"}},
        ScreeningCase{"theRoot", {"/"}, {"*"}, {"/"}, {"/"}},
        ScreeningCase{"otherNormalForm", {"/e\u0301"}, {"/\u00e9*"}, {"/\u00e9"}, {"/\u00e9"}}),
    RowName());

TEST(ScreeningMarkers, countWhateverTheirKind) {
  FakePlatform fake;
  FakeWarpedFolders warpedFolders;
  fake.bundle.identifier = "io.tolvane.Velmora.FinderRestoreAction";
  warpedFolders.paths = {"/a"};
  fake.fileSystem.directories = {"/", "/a", "/a/.velmora-warped.json"};
  EXPECT_EQ(screenSelection({{"/a"}}, fake.platform(), warpedFolders), Paths{"/a"});
}

TEST(WarpedFolderPaths, areStandardisedInTheirOrder) {
  FakeWarpedFolders warpedFolders;
  warpedFolders.paths = {"/b/./c", "/a/"};
  EXPECT_EQ(bytesOf(warpedFolderPaths(warpedFolders, PosixPathStandardizer())),
            (std::vector<std::string>{"/b/c", "/a"}));
}

}  // namespace
}  // namespace velmora

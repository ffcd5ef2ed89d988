#include "extension/SelectionScreening.h"
#include "tests/support/Bytes.h"
#include "tests/support/RowName.h"
#include "tests/fakes/FakePlatform.h"
#include "tests/fakes/RecordedWarps.h"

#include <gtest/gtest.h>

namespace velmora {
namespace {

using Paths = std::vector<Text>;

struct ScreeningCase {
  const char* name;
  /// Each has a manifest and, unless it ends in "!", a marker of the same Warp.
  std::vector<std::string> warped;
  /// Each exists as a directory; one that ends in "*" holds a stray marker.
  std::vector<std::string> folders;
  Paths selection;
  Paths accepted;
};

class Screening : public testing::TestWithParam<ScreeningCase> {
 protected:
  Screening() {
    int warpCount = 0;
    for (std::string folder : GetParam().warped) {
      const std::string warpID = "warp-" + std::to_string(++warpCount);
      if (folder.ends_with('!')) {
        folder.pop_back();
        mirror(fake, manifestOf(folder, warpID));
        fake.fileSystem.directories.insert(folder);
      } else {
        recordWarp(fake, folder, warpID);
      }
    }
    for (std::string folder : GetParam().folders) {
      if (folder.ends_with('*')) {
        folder.pop_back();
        mark(fake, folder, "stray");
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
    ScreeningObserver unobserved;
    return bytesOf(screenSelection(selection, fake.platform(), unobserved));
  }

  FakePlatform fake;
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
        ScreeningCase{"manifestWithoutMarker", {"/a!"}, {}, {"/a"}, {"/a"}},
        ScreeningCase{"innermostWarpedFolder", {"/a", "/a/b"}, {"/a/b/c"}, {"/a/b/c"}, {}},
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
    testing::Values(ScreeningCase{"nothing", {}, {}, {}, {}},
                    ScreeningCase{"warpedFolder", {"/a"}, {}, {"/a"}, {"/a"}},
                    ScreeningCase{"markerDeleted", {"/a!"}, {}, {"/a"}, {}},
                    ScreeningCase{"markerWithoutManifest", {}, {"/a*"}, {"/a"}, {}},
                    ScreeningCase{"markerOfAnotherWarp", {"/a!"}, {"/a*"}, {"/a"}, {}},
                    ScreeningCase{"strayMarkerInside", {"/a"}, {"/a/b*"}, {"/a/b"}, {}},
                    ScreeningCase{"nested", {"/a", "/a/b"}, {}, {"/a/b", "/a"}, {"/a/b", "/a"}},
                    ScreeningCase{"plainFolder", {"/a"}, {"/b"}, {"/b"}, {}},
                    ScreeningCase{"plainFile", {"/a"}, {}, {"/file"}, {}},
                    ScreeningCase{"twice", {"/a"}, {}, {"/a", "/a/"}, {"/a"}},
                    ScreeningCase{"theRoot", {"/"}, {}, {"/"}, {"/"}},
                    ScreeningCase{
                        "otherNormalForm", {"/e\u0301"}, {"/\u00e9*"}, {"/\u00e9"}, {"/\u00e9"}}),
    RowName());

/// Keeps what it hears.
class RecordingObserver final : public ScreeningObserver {
 public:
  std::vector<ScreenedItem> items;
  bool isWithoutRoot = false;

  void didScreenItem(const ScreenedItem& item) override { items.push_back(item); }
  void didFailToLocateRoot(const std::exception&) override { isWithoutRoot = true; }
};

class ScreeningVerdicts : public testing::Test {
 protected:
  ScreeningVerdicts() {
    recordWarp(fake, "/warped", "outer");
    recordWarp(fake, "/warped/inner", "inner");
    mark(fake, "/warped/stray", "stray");
    mark(fake, "/marked", "gone");
    fake.fileSystem.createDirectories("/plain");
  }

  ItemVerdict verdictOn(const char* path, const char* root) {
    RecordingObserver observer;
    static_cast<void>(screenSelection({{path}}, fake.platform(), observer));
    EXPECT_EQ(observer.items.size(), 1);
    const ScreenedItem& item = observer.items.at(0);
    EXPECT_EQ(item.path.utf8(), path);
    EXPECT_EQ(item.root.value_or("none").utf8(), root);
    return item.verdict;
  }

  FakePlatform fake;
};

TEST_F(ScreeningVerdicts, sayWhyAnItemCannotBeWarped) {
  EXPECT_EQ(verdictOn("/plain", "none"), ItemVerdict::accepted);
  EXPECT_EQ(verdictOn("/missing", "none"), ItemVerdict::notADirectory);
  EXPECT_EQ(verdictOn("/warped", "/warped"), ItemVerdict::alreadyWarped);
  EXPECT_EQ(verdictOn("/warped/stray", "/warped"), ItemVerdict::insideWarpedFolder);
}

TEST_F(ScreeningVerdicts, sayWhyAnItemCannotBeRestored) {
  fake.bundle.identifier = "io.tolvane.Velmora.FinderRestoreAction";
  EXPECT_EQ(verdictOn("/warped/inner", "/warped/inner"), ItemVerdict::accepted);
  EXPECT_EQ(verdictOn("/plain", "none"), ItemVerdict::noMarker);
  EXPECT_EQ(verdictOn("/marked", "none"), ItemVerdict::notWarped);
  EXPECT_EQ(verdictOn("/warped/stray", "/warped"), ItemVerdict::insideWarpedFolder);
}

TEST_F(ScreeningVerdicts, areGivenForEachItemOfTheSelection) {
  RecordingObserver observer;
  EXPECT_EQ(screenSelection({{"/plain"}, {"/warped"}, {"/plain/"}}, fake.platform(), observer),
            Paths{"/plain"});
  EXPECT_EQ(observer.items.size(), 3);
}

TEST(ScreeningMarkers, countForTheSelectionWhateverTheirKind) {
  FakePlatform fake;
  recordWarp(fake, "/e\u0301", "warp");
  fake.bundle.identifier = "io.tolvane.Velmora.FinderRestoreAction";
  // The same folder in the other form, where the fake sees a directory instead of the marker.
  fake.fileSystem.createDirectories("/\u00e9/.velmora-warped.json");
  ScreeningObserver unobserved;
  EXPECT_EQ(screenSelection({{"/\u00e9"}}, fake.platform(), unobserved), Paths{"/\u00e9"});
}

TEST(WarpedFolderPaths, areThoseOfTheNewestManifestsFirst) {
  FakePlatform fake;
  recordWarp(fake, "/old", "1");
  VelmoraWarpSharedManifest manifest = manifestOf("/new", "2");
  manifest.createdAt = {.secondsSinceReferenceDate = 60};
  mirror(fake, manifest);
  mark(fake, "/new", "2");
  ResolutionObserver unobserved;
  EXPECT_EQ(bytesOf(warpedFolderPaths(fake.platform(), unobserved)),
            (std::vector<std::string>{"/new", "/old"}));
}

TEST(WarpedFolderPaths, areNoneWithoutASharedRoot) {
  FakePlatform fake;
  RecordingObserver observer;
  EXPECT_TRUE(warpedFolderPaths(fake.platform(), observer).empty());
  EXPECT_TRUE(observer.isWithoutRoot);
}

}  // namespace
}  // namespace velmora

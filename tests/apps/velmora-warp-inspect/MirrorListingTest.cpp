#include "MirrorListing.h"
#include "platform/PlatformError.h"

#include <gtest/gtest.h>

#include <set>

namespace velmora::inspect {
namespace {

class MirrorListingTest : public testing::Test {
 protected:
  MirrorListingTest() {
    resolution = emptyResolution();
    resolution.judged = {
        {.file = "/m/b.json",
         .manifest = manifest("W2", "/b"),
         .verdict = ManifestVerdict::confirmed,
         .fault = std::nullopt},
        {.file = "/m/a.json",
         .manifest = manifest("W1", "/a"),
         .verdict = ManifestVerdict::unreadableMarker,
         .fault = faultOf(posixError(EISDIR))},
    };
    resolution.refused = {{.file = "/m/c.json", .fault = faultOf(posixError(EFBIG))}};
  }

  static Resolution emptyResolution() {
    Resolution empty;
    empty.places = SharedPlaces{.root = "/", .mirror = "/m", .index = "/i.json", .handoff = "/h"};
    return empty;
  }

  static ManifestSummary manifest(const char* warpID, const char* folder) {
    return {.warpID = warpID,
            .manifestKey = "k",
            .originalFolderPath = folder,
            .createdAt = {},
            .status = VelmoraWarpSharedStatus::verified,
            .entryCount = 2,
            .sampleCount = 0};
  }

  std::string json() const {
    std::string text;
    writeJSON(resolution, [&](std::string_view piece) { text += piece; });
    return text;
  }

  std::string text() const {
    std::string text;
    writeText(resolution, Style(false), [&](std::string_view piece) { text += piece; });
    return text;
  }

  Resolution resolution;
};

TEST_F(MirrorListingTest, programsGetAnObjectALine) {
  EXPECT_EQ(
      json(),
      R"({"file":"/m/b.json","manifest":{"warpID":"W2","manifestKey":"k","originalFolderPath":"/b",)"
      R"("createdAt":"2001-01-01T00:00:00Z","status":"verified","entries":2,"samples":0},)"
      R"("verdict":"confirmed"})"
      "\n"
      R"({"file":"/m/a.json","manifest":{"warpID":"W1","manifestKey":"k","originalFolderPath":"/a",)"
      R"("createdAt":"2001-01-01T00:00:00Z","status":"verified","entries":2,"samples":0},)"
      R"("verdict":"unreadableMarker","error":{"kind":"unreadable","message":"Is a directory"}})"
      "\n"
      R"({"file":"/m/c.json","verdict":"invalid",)"
      R"("error":{"kind":"unreadable","message":"File too large"}})"
      "\n");
}

TEST_F(MirrorListingTest, peopleGetTheReasons) {
  EXPECT_EQ(text(),
            "warped      /b\n"
            "            confirmed: the folder holds the marker of this Warp\n"
            "            2001-01-01T00:00:00Z, Warp W2, verified, 2 entries, 0 samples, key k\n"
            "            /m/b.json\n"
            "not warped  /a\n"
            "            unreadableMarker: the folder's marker cannot be read\n"
            "            unreadable: Is a directory\n"
            "            2001-01-01T00:00:00Z, Warp W1, verified, 2 entries, 0 samples, key k\n"
            "            /m/a.json\n"
            "invalid     /m/c.json\n"
            "            unreadable: File too large\n"
            "3 files: 1 warped, 1 not warped, 1 invalid\n");
}

TEST_F(MirrorListingTest, unusableIndexIsALine) {
  resolution = emptyResolution();
  resolution.indexFault = faultOf(corruptFileError());
  EXPECT_EQ(json(), "{\"index\":\"/i.json\",\"error\":{\"kind\":\"corruptFile\",\"message\":\"" +
                        std::string(corruptFileError().what()) + "\"}}\n");
  EXPECT_EQ(text(), "index       /i.json\n            corruptFile: " +
                        std::string(corruptFileError().what()) +
                        "\n0 files: 0 warped, 0 not warped, 0 invalid\n");
}

TEST_F(MirrorListingTest, mirrorThatCannotBeListedIsALine) {
  resolution = emptyResolution();
  resolution.mirrorFault = faultOf(posixError(EACCES));
  EXPECT_EQ(json(), R"({"mirror":"/m","error":{"kind":"unreadable","message":"Permission denied"}})"
                    "\n");
  EXPECT_EQ(text(), "mirror      /m\n            unreadable: Permission denied\n");
}

TEST_F(MirrorListingTest, missingMirrorIsNothingToPrograms) {
  resolution = emptyResolution();
  resolution.isMirrorMissing = true;
  EXPECT_EQ(json(), "");
  EXPECT_EQ(text(), "There is no mirror at /m\n");
}

TEST_F(MirrorListingTest, rootMayHaveNoPlace) {
  resolution = emptyResolution();
  resolution.rootFault = faultOf(posixError(ENOENT));
  resolution.places = std::nullopt;
  EXPECT_EQ(json(),
            R"({"root":null,"error":{"kind":"unreadable","message":"No such file or directory"}})"
            "\n");
  EXPECT_EQ(text(),
            "root        there is none\n            unreadable: No such file or directory\n");
}

TEST(ManifestVerdicts, haveNamesOfTheirOwn) {
  std::set<std::string_view> names;
  for (const ManifestVerdict verdict :
       {ManifestVerdict::confirmed, ManifestVerdict::destroyedByWarpID,
        ManifestVerdict::destroyedByManifestKey, ManifestVerdict::noMarker,
        ManifestVerdict::unreadableMarker, ManifestVerdict::malformedMarker,
        ManifestVerdict::markerOfAnotherWarp}) {
    names.insert(name(verdict));
  }
  EXPECT_EQ(names, (std::set<std::string_view>{
                       "confirmed", "destroyedByWarpID", "destroyedByManifestKey", "noMarker",
                       "unreadableMarker", "malformedMarker", "markerOfAnotherWarp"}));
}

}  // namespace
}  // namespace velmora::inspect

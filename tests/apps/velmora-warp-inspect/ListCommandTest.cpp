#include "ListCommand.h"
#include "platform/PlatformError.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <exception>
#include <string>

namespace velmora::inspect {
namespace {

class ListCommandTest : public testing::Test {
 protected:
  ListCommandTest() {
    resolution = emptyResolution();
    resolution.judged = {
        {"/m/b.json", manifest("W2", "/b"), "/b", ManifestVerdict::confirmed, std::nullopt},
        {"/m/a.json", manifest("W1", "/a"), "/a", ManifestVerdict::unreadableMarker,
         faultOf(std::make_exception_ptr(posixError(EISDIR)))}};
    resolution.refused = {
        {.file = "/m/c.json", .fault = faultOf(std::make_exception_ptr(posixError(EFBIG)))}};
  }

  static ResolutionReport emptyResolution() {
    ResolutionReport empty;
    empty.places = SharedPlaces{.root = "/",
                                .rootParent = SharedWarpRootParent::groupContainer,
                                .mirror = "/m",
                                .index = "/i.json",
                                .handoff = "/h"};
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

  ResolutionReport resolution;
};

TEST_F(ListCommandTest, jsonIsOneObjectPerLine) {
  EXPECT_EQ(toJSONLines(resolution),
            R"({"file":"/m/b.json","manifest":)" + toJSON(manifest("W2", "/b")) +
                R"(,"verdict":"confirmed"})"
                "\n"
                R"({"file":"/m/a.json","manifest":)" +
                toJSON(manifest("W1", "/a")) +
                R"(,"verdict":"unreadableMarker",)"
                R"("error":{"kind":"unreadable","message":"Is a directory"}})"
                "\n"
                R"({"file":"/m/c.json","verdict":"invalid",)"
                R"("error":{"kind":"unreadable","message":"File too large"}})"
                "\n");
}

TEST_F(ListCommandTest, textHasTheReasons) {
  EXPECT_EQ(toText(resolution, Style::plain),
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

TEST_F(ListCommandTest, missingOrUnusableFilesAreLines) {
  resolution = emptyResolution();
  resolution.indexFault = faultOf(std::make_exception_ptr(posixError(EFBIG)));
  EXPECT_EQ(toJSONLines(resolution),
            R"({"index":"/i.json","error":{"kind":"unreadable","message":"File too large"}})"
            "\n");
  EXPECT_EQ(toText(resolution, Style::plain),
            "index       /i.json\n            unreadable: File too large\n"
            "0 files: 0 warped, 0 not warped, 0 invalid\n");

  resolution = emptyResolution();
  resolution.mirrorFault = faultOf(std::make_exception_ptr(posixError(EACCES)));
  EXPECT_EQ(toJSONLines(resolution),
            R"({"mirror":"/m","error":{"kind":"unreadable","message":"Permission denied"}})"
            "\n");
  EXPECT_EQ(toText(resolution, Style::plain),
            "mirror      /m\n            unreadable: Permission denied\n");

  resolution = {};
  resolution.rootFault = faultOf(std::make_exception_ptr(posixError(EACCES)));
  EXPECT_EQ(toJSONLines(resolution),
            R"({"root":null,"error":{"kind":"unreadable","message":"Permission denied"}})"
            "\n");
  EXPECT_EQ(toText(resolution, Style::plain),
            "root        there is no place for it\n            unreadable: Permission denied\n");

  resolution = emptyResolution();
  resolution.mirrorExists = false;
  EXPECT_EQ(toJSONLines(resolution), "{\"mirror\":\"/m\",\"exists\":false}\n");
  EXPECT_EQ(toText(resolution, Style::plain),
            "mirror      /m\n            does not exist: no folder is warped\n");
}

}  // namespace
}  // namespace velmora::inspect

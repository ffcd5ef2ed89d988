#include "Explanation.h"
#include "tests/support/RowName.h"
#include "tests/fakes/RecordedWarps.h"

#include <gtest/gtest.h>

namespace velmora::inspect {
namespace {

class ExplanationTest : public testing::Test {
 protected:
  ExplanationTest() {
    recordWarp(fake, "/warped", "W1");
    fake.fileSystem.createDirectories("/warped/inner");
    mark(fake, "/warped/stray", "W1");
    mark(fake, "/stray", "W9");
    fake.fileSystem.createDirectories("/plain");
    fake.fileSystem.files["/file"] = "";
  }

  std::vector<ExplainedItem> explain(const std::vector<std::string>& operands) {
    ResolutionRecorder recorder(fake.platform());
    return explainItems(operands, fake.platform(), recorder);
  }

  FakePlatform fake;
};

TEST_F(ExplanationTest, warpTellsEveryReason) {
  EXPECT_EQ(
      explain({"/plain", "/file", "/missing", "/warped", "/warped/inner"}),
      (std::vector<ExplainedItem>{
          {.path = "/plain", .verdict = ItemVerdict::accepted, .root = std::nullopt},
          {.path = "/file", .verdict = ItemVerdict::notADirectory, .root = std::nullopt},
          {.path = "/missing", .verdict = ItemVerdict::notADirectory, .root = std::nullopt},
          {.path = "/warped", .verdict = ItemVerdict::alreadyWarped, .root = "/warped"},
          {.path = "/warped/inner", .verdict = ItemVerdict::insideWarpedFolder, .root = "/warped"},
      }));
}

TEST_F(ExplanationTest, restoreTellsEveryReason) {
  fake.bundle.identifier = "io.tolvane.Velmora.FinderRestoreAction";
  EXPECT_EQ(
      explain({"/warped", "/plain", "/stray", "/warped/stray"}),
      (std::vector<ExplainedItem>{
          {.path = "/warped", .verdict = ItemVerdict::accepted, .root = "/warped"},
          {.path = "/plain", .verdict = ItemVerdict::noMarker, .root = std::nullopt},
          {.path = "/stray", .verdict = ItemVerdict::notWarped, .root = std::nullopt},
          {.path = "/warped/stray", .verdict = ItemVerdict::insideWarpedFolder, .root = "/warped"},
      }));
}

TEST_F(ExplanationTest, itemsKeepTheOrderOfTheOperands) {
  const std::vector<ExplainedItem> items =
      explain({"http://host/a", "/plain", "", "file:///plain/", "/plain/.", "/\xff"});
  std::vector<std::string> paths;
  std::vector<std::string_view> reasons;
  for (const ExplainedItem& item : items) {
    paths.push_back(item.path);
    reasons.push_back(name(item.verdict));
  }
  EXPECT_EQ(paths,
            (std::vector<std::string>{"http://host/a", "/plain", "", "/plain", "/plain", "/\xff"}));
  EXPECT_EQ(reasons, (std::vector<std::string_view>{"notAFileURL", "accepted", "notAFileURL",
                                                    "accepted", "accepted", "notAFileURL"}));
}

TEST_F(ExplanationTest, noOperandsHaveNoItems) { EXPECT_TRUE(explain({}).empty()); }

struct ToldCase {
  const char* name;
  ExplainedItem item;
  const char* json;
  const char* text;
};

class ToldItems : public testing::TestWithParam<ToldCase> {};

TEST_P(ToldItems, areAnObjectForPrograms) { EXPECT_EQ(toJSON(GetParam().item), GetParam().json); }

TEST_P(ToldItems, areTwoLinesForPeople) {
  EXPECT_EQ(toText(GetParam().item, Style(false)), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    Items, ToldItems,
    testing::Values(
        ToldCase{"acceptedByWarp",
                 {.path = "/a", .verdict = ItemVerdict::accepted, .root = std::nullopt},
                 R"({"path":"/a","accepted":true,"reason":"accepted","root":null})",
                 "accepted  /a\n          accepted: is a folder and not warped\n"},
        ToldCase{"acceptedByRestore",
                 {.path = "/a", .verdict = ItemVerdict::accepted, .root = "/a"},
                 R"({"path":"/a","accepted":true,"reason":"accepted","root":"/a"})",
                 "accepted  /a\n          accepted: is a warped folder and holds its marker\n"},
        ToldCase{"notADirectory",
                 {.path = "/a", .verdict = ItemVerdict::notADirectory, .root = std::nullopt},
                 R"({"path":"/a","accepted":false,"reason":"notADirectory","root":null})",
                 "refused   /a\n          notADirectory: is no folder, or not there\n"},
        ToldCase{"alreadyWarped",
                 {.path = "/a", .verdict = ItemVerdict::alreadyWarped, .root = "/a"},
                 R"({"path":"/a","accepted":false,"reason":"alreadyWarped","root":"/a"})",
                 "refused   /a\n          alreadyWarped: is a warped folder already\n"},
        ToldCase{
            "insideWarpedFolder",
            {.path = "/r\n/a", .verdict = ItemVerdict::insideWarpedFolder, .root = "/r\n"},
            R"({"path":"/r\n/a","accepted":false,"reason":"insideWarpedFolder","root":"/r\n"})",
            "refused   /r\\n/a\n          insideWarpedFolder: lies in the warped folder /r\\n\n"},
        ToldCase{"noMarker",
                 {.path = "/a", .verdict = ItemVerdict::noMarker, .root = std::nullopt},
                 R"({"path":"/a","accepted":false,"reason":"noMarker","root":null})",
                 "refused   /a\n          noMarker: holds no marker\n"},
        ToldCase{"notWarped",
                 {.path = "/a", .verdict = ItemVerdict::notWarped, .root = std::nullopt},
                 R"({"path":"/a","accepted":false,"reason":"notWarped","root":null})",
                 "refused   /a\n          notWarped: holds a marker, but is no warped folder and "
                 "lies in none\n"},
        ToldCase{"notAFileURL",
                 {.path = "x://\xff", .verdict = std::nullopt, .root = std::nullopt},
                 "{\"path\":\"x://\uFFFD\",\"accepted\":false,\"reason\":\"notAFileURL\","
                 "\"root\":null}",
                 "refused   x://\uFFFD\n          notAFileURL: names no file: another kind of "
                 "URL, nothing, or no UTF-8\n"}),
    RowName());

}  // namespace
}  // namespace velmora::inspect

#include "Explanation.h"
#include "tests/fakes/RecordedWarps.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace velmora::inspect {
namespace {

using enum ItemVerdict;

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
  EXPECT_EQ(explain({"/plain", "/file", "/missing", "/warped", "/warped/inner"}),
            (std::vector<ExplainedItem>{{"/plain", accepted, {}},
                                        {"/file", notADirectory, {}},
                                        {"/missing", notADirectory, {}},
                                        {"/warped", alreadyWarped, "/warped"},
                                        {"/warped/inner", insideWarpedFolder, "/warped"}}));
}

TEST_F(ExplanationTest, restoreTellsEveryReason) {
  fake.bundle.identifier = "io.tolvane.Velmora.FinderRestoreAction";
  EXPECT_EQ(explain({"/warped", "/plain", "/stray", "/warped/stray"}),
            (std::vector<ExplainedItem>{{"/warped", accepted, "/warped"},
                                        {"/plain", noMarker, {}},
                                        {"/stray", notWarped, {}},
                                        {"/warped/stray", insideWarpedFolder, "/warped"}}));
}

TEST_F(ExplanationTest, itemsKeepTheOrderOfTheOperands) {
  EXPECT_EQ(explain({"http://host/a", "/plain", "", "file:///plain/", "/plain/.", "/\xff"}),
            (std::vector<ExplainedItem>{{"http://host/a", {}, {}},
                                        {"/plain", accepted, {}},
                                        {"", {}, {}},
                                        {"/plain", accepted, {}},
                                        {"/plain", accepted, {}},
                                        {"/\xff", {}, {}}}));
  EXPECT_TRUE(explain({}).empty());
}

TEST(ExplainedItems, areTwoLinesForPeople) {
  const std::pair<ExplainedItem, std::string> rows[] = {
      {{"/a", accepted, {}}, "accepted  /a\n          accepted: is a folder and not warped\n"},
      {{"/a", accepted, "/a"},
       "accepted  /a\n          accepted: is a warped folder and holds its marker\n"},
      {{"/a", notADirectory, {}},
       "refused   /a\n          notADirectory: is no folder, or not there\n"},
      {{"/a", alreadyWarped, "/a"},
       "refused   /a\n          alreadyWarped: is a warped folder already\n"},
      {{"/r\n/a", insideWarpedFolder, "/r\n"},
       "refused   /r\\n/a\n          insideWarpedFolder: lies in the warped folder /r\\n\n"},
      {{"/a", noMarker, {}}, "refused   /a\n          noMarker: holds no marker\n"},
      {{"/a", notWarped, {}},
       "refused   /a\n          notWarped: holds a marker, but is no warped folder and lies in "
       "none\n"},
      {{"x://\xff", {}, {}},
       "refused   x://\uFFFD\n          notAFileURL: names no file: another kind of URL, nothing, "
       "or no UTF-8\n"},
  };
  for (const auto& [item, text] : rows) {
    EXPECT_EQ(toText(item, Style(false)), text);
  }
}

TEST(ExplainedItems, areAnObjectForPrograms) {
  const std::pair<ExplainedItem, std::string> rows[] = {
      {{"/a", accepted, {}}, R"({"path":"/a","accepted":true,"reason":"accepted","root":null})"},
      {{"/r\n/a", insideWarpedFolder, "/r\n"},
       R"({"path":"/r\n/a","accepted":false,"reason":"insideWarpedFolder","root":"/r\n"})"},
      {{"x://\xff", {}, {}},
       "{\"path\":\"x://\uFFFD\",\"accepted\":false,\"reason\":\"notAFileURL\",\"root\":null}"},
  };
  for (const auto& [item, json] : rows) {
    EXPECT_EQ(toJSON(item), json);
  }
}

}  // namespace
}  // namespace velmora::inspect

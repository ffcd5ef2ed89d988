#include "ExplainCommand.h"
#include "platform/PlatformError.h"
#include "tests/fakes/RecordedWarps.h"
#include "tests/fakes/WarpRecords.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <exception>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace velmora::inspect {
namespace {

using enum ItemVerdict;

class ExplainCommandTest : public testing::Test {
 protected:
  ExplainCommandTest() {
    recordWarp(fake, "/warped", "W1");
    fake.fileSystem.createDirectories("/warped/inner");
    mark(fake, "/warped/stray", "W1");
    mark(fake, "/stray", "W9");
    fake.fileSystem.createDirectories("/plain");
    fake.fileSystem.files["/file"] = "";
  }

  /// The properties of an item that a test compares.
  struct Explanation {
    std::string path;
    std::optional<ItemVerdict> verdict;
    std::optional<std::string> root;

    bool operator==(const Explanation&) const = default;
  };

  std::vector<Explanation> explain(const std::vector<std::string>& operands) {
    std::vector<Explanation> explanations;
    for (const ExplainedItem& item : explainItems(operands, fake.platform()).items) {
      explanations.push_back({item.path, item.verdict, item.root});
    }
    return explanations;
  }

  ExplainedItem explainOne(const std::string& operand) {
    return explainItems({operand}, fake.platform()).items.at(0);
  }

  FakePlatform fake;
};

TEST_F(ExplainCommandTest, warpExplainsEveryVerdict) {
  EXPECT_EQ(explain({"/plain", "/file", "/missing", "/warped", "/warped/inner"}),
            (std::vector<Explanation>{{"/plain", accepted, {}},
                                      {"/file", notADirectory, {}},
                                      {"/missing", notADirectory, {}},
                                      {"/warped", alreadyWarped, "/warped"},
                                      {"/warped/inner", insideWarpedFolder, "/warped"}}));
}

TEST_F(ExplainCommandTest, restoreExplainsEveryVerdict) {
  fake.bundle.identifier = "io.tolvane.Velmora.FinderRestoreAction";
  EXPECT_EQ(explain({"/warped", "/plain", "/stray", "/warped/stray"}),
            (std::vector<Explanation>{{"/warped", accepted, "/warped"},
                                      {"/plain", noMarker, {}},
                                      {"/stray", notWarped, {}},
                                      {"/warped/stray", insideWarpedFolder, "/warped"}}));
}

TEST_F(ExplainCommandTest, itemThatCannotBeLookedAtHasTheReason) {
  for (const char* action :
       {"io.tolvane.Velmora.FinderWarpAction", "io.tolvane.Velmora.FinderRestoreAction"}) {
    fake.bundle.identifier = action;
    EXPECT_EQ(explainOne("/missing").fault, std::nullopt);
    fake.fileSystem.readFailure = throwing(posixError(EACCES));
    const ExplainedItem item = explainOne("/missing");
    EXPECT_EQ(toText(item, Style::plain),
              "refused   /missing\n          unreadable: Permission denied\n");
    EXPECT_EQ(toJSON(item),
              R"({"path":"/missing","accepted":false,"reason":"unreadable","root":null,)"
              R"("manifest":null,"error":{"kind":"unreadable","message":"Permission denied"}})");
    fake.fileSystem.readFailure = nullptr;
  }
}

TEST_F(ExplainCommandTest, itemsKeepTheOrderOfTheOperands) {
  EXPECT_EQ(explain({"http://host/a", "/plain", "", "file:///plain/", "/plain/.", "/\xff"}),
            (std::vector<Explanation>{{"http://host/a", {}, {}},
                                      {"/plain", accepted, {}},
                                      {"", {}, {}},
                                      {"/plain", accepted, {}},
                                      {"/plain", accepted, {}},
                                      {"/\xff", {}, {}}}));
  EXPECT_TRUE(explain({}).empty());
}

TEST_F(ExplainCommandTest, decidingManifestIsNamed) {
  EXPECT_EQ(explainOne("/warped/inner").manifestFile, "/C/Warp/ManifestMirror/W1.json");
  EXPECT_EQ(explainOne("/plain").manifestFile, std::nullopt);
}

TEST_F(ExplainCommandTest, ignoredMarkerHasItsReason) {
  const std::string mirrorPath = "/C/Warp/ManifestMirror/";
  EXPECT_EQ(explainOne("/warped").marker.has_value(), false);
  EXPECT_EQ(explainOne("/plain").marker.has_value(), false);
  // No manifest names the Warp of the marker.
  ExplainedMarker marker = explainOne("/stray").marker.value();
  EXPECT_EQ(marker.warpID, "W9");
  EXPECT_TRUE(marker.manifests.empty());
  EXPECT_TRUE(marker.refused.empty());
  // A manifest of the Warp names another folder; another file of the Warp is broken.
  mirror(fake, manifestOf("/elsewhere", "W9"));
  fake.fileSystem.files[mirrorPath + "broken.json"] = "{\"warpID\":\"W9\"";
  fake.fileSystem.files[mirrorPath + "other.json"] = "{";
  marker = explainOne("/stray").marker.value();
  ASSERT_EQ(marker.manifests.size(), 1);
  EXPECT_EQ(marker.manifests[0].verdict, ManifestVerdict::aroundNoItem);
  ASSERT_EQ(marker.refused.size(), 1);
  EXPECT_EQ(marker.refused[0].file, mirrorPath + "broken.json");
  // The marker names no Warp at all.
  fake.fileSystem.files["/stray/.velmora-warped.json"] = "{}";
  marker = explainOne("/stray").marker.value();
  EXPECT_EQ(marker.warpID, std::nullopt);
  EXPECT_EQ(marker.fault.value().kind, "keyNotFound");
}

/// An item with these properties only.
ExplainedItem itemOf(const char* path, std::optional<ItemVerdict> verdict,
                     std::optional<std::string> root) {
  ExplainedItem item;
  item.path = path;
  item.verdict = verdict;
  item.root = std::move(root);
  return item;
}

TEST(ExplainedItems, areTwoLinesForPeople) {
  const std::pair<ExplainedItem, std::string> rows[] = {
      {itemOf("/a", accepted, {}),
       "accepted  /a\n          accepted: is a folder and not warped\n"},
      {itemOf("/a", accepted, "/a"),
       "accepted  /a\n          accepted: is a warped folder and holds its marker\n"},
      {itemOf("/a", notADirectory, {}),
       "refused   /a\n          notADirectory: is no folder, or not there\n"},
      {itemOf("/a", alreadyWarped, "/a"),
       "refused   /a\n          alreadyWarped: is a warped folder already\n"},
      {itemOf("/r\n/a", insideWarpedFolder, "/r\n"),
       "refused   /r\\n/a\n          insideWarpedFolder: lies in the warped folder /r\\n\n"},
      {itemOf("/a", noMarker, {}), "refused   /a\n          noMarker: holds no marker\n"},
      {itemOf("/a", notWarped, {}),
       "refused   /a\n          notWarped: holds a marker, but is no warped folder and lies in "
       "none\n"},
      {itemOf("x://\xff", {}, {}),
       "refused   x://\\xff\n          notAFileURL: names no file: another kind of URL, nothing, "
       "or no UTF-8\n"},
  };
  for (const auto& [item, text] : rows) {
    EXPECT_EQ(toText(item, Style::plain), text);
  }
}

TEST(ExplainedItems, areAnObjectForPrograms) {
  const std::pair<ExplainedItem, std::string> rows[] = {
      {itemOf("/a", accepted, {}),
       R"({"path":"/a","accepted":true,"reason":"accepted","root":null,"manifest":null})"},
      {itemOf("/r\n/a", insideWarpedFolder, "/r\n"),
       R"({"path":"/r\n/a","accepted":false,"reason":"insideWarpedFolder","root":"/r\n","manifest":null})"},
      {itemOf("x://\xff", {}, {}),
       "{\"path\":\"x://"
       "\uFFFD\",\"accepted\":false,\"reason\":\"notAFileURL\",\"root\":null,\"manifest\":null}"},
  };
  for (const auto& [item, json] : rows) {
    EXPECT_EQ(toJSON(item), json);
  }
}

/// An item with a marker of the Warp "W
/// ". The mirror has a manifest of another folder and a file that is no manifest.
ExplainedItem strayItem() {
  ExplainedItem item = itemOf("/a", notWarped, {});
  ReportedManifest elsewhere = {.file = "/m/1.json"};
  elsewhere.manifest.originalFolderPath = "/b";
  elsewhere.verdict = ManifestVerdict::aroundNoItem;
  item.marker =
      ExplainedMarker{.warpID = "W\n",
                      .fault = {},
                      .manifests = {elsewhere},
                      .refused = {{.file = "/m/2.json",
                                   .fault = faultOf(std::make_exception_ptr(posixError(EFBIG)))}}};
  return item;
}

TEST(ExplainedItems, describeTheirMarker) {
  ExplainedItem item = strayItem();
  const std::string head =
      "refused   /a\n"
      "          notWarped: holds a marker, but is no warped folder and lies in none\n";
  EXPECT_EQ(toText(item, Style::plain),
            head +
                "          its marker names Warp W\\n\n"
                "          /m/1.json: aroundNoItem, for /b\n"
                "          /m/2.json: no valid manifest: unreadable: File too large\n");
  EXPECT_EQ(toJSON(item),
            R"({"path":"/a","accepted":false,"reason":"notWarped","root":null,"manifest":null,)"
            R"("marker":{"warpID":"W\n","manifests":[)"
            R"({"file":"/m/1.json","verdict":"aroundNoItem","originalFolderPath":"/b"},)"
            R"({"file":"/m/2.json","verdict":"invalid",)"
            R"("error":{"kind":"unreadable","message":"File too large"}}]}})");
  item.marker->manifests.clear();
  item.marker->refused.clear();
  EXPECT_EQ(toText(item, Style::plain),
            head +
                "          its marker names Warp W\\n\n"
                "          no manifest of the mirror names this Warp\n");
  item.marker =
      ExplainedMarker{.warpID = {}, .fault = faultOf(std::make_exception_ptr(posixError(EISDIR)))};
  EXPECT_EQ(toText(item, Style::plain),
            head + "          its marker cannot be used: unreadable: Is a directory\n");
  EXPECT_EQ(toJSON(item),
            R"({"path":"/a","accepted":false,"reason":"notWarped","root":null,"manifest":null,)"
            R"("marker":{"error":{"kind":"unreadable","message":"Is a directory"}}})");
}

TEST(ExplainedItems, nameTheDecidingManifest) {
  ExplainedItem item = itemOf("/a", alreadyWarped, "/a");
  item.manifestFile = "/m/1.json";
  EXPECT_EQ(toText(item, Style::plain),
            "refused   /a\n          alreadyWarped: is a warped folder already\n"
            "          by /m/1.json\n");
  EXPECT_EQ(toJSON(item), R"({"path":"/a","accepted":false,"reason":"alreadyWarped","root":"/a",)"
                          R"("manifest":"/m/1.json"})");
}

}  // namespace
}  // namespace velmora::inspect

#include "FileCheck.h"
#include "tests/support/RowName.h"
#include "tests/fakes/FakePlatform.h"
#include "tests/fakes/WarpRecords.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace velmora::inspect {
namespace {

class FileCheckTest : public testing::Test {
 protected:
  CheckedFile check(const std::string& bytes, std::optional<FileKind> kind = std::nullopt,
                    const std::string& file = "/f.json") {
    fake.fileSystem.files[file] = bytes;
    return checker.check(file, kind);
  }

  static const Fault& faultOf(const CheckedFile& checked) {
    return std::get<Fault>(checked.content);
  }

  FakePlatform fake;
  FileChecker checker{fake.fileSystem};
};

TEST_F(FileCheckTest, manifestIsSummarised) {
  VelmoraWarpSharedManifest manifest = manifestOf("/folder", "W1");
  manifest.entries.append(entryOf("/folder/a"));
  manifest.entries.append(entryOf("/folder/b"));
  manifest.verificationSampleRelativePaths = {"/folder/a"};
  const CheckedFile checked = check(encodeManifest(manifest));
  EXPECT_TRUE(checked.isValid());
  EXPECT_EQ(toJSON(checked),
            R"({"file":"/f.json","kind":"manifest","valid":true,"manifest":{"warpID":"W1",)"
            R"("manifestKey":"manifests/W1.json","originalFolderPath":"/folder",)"
            R"("createdAt":"2001-01-01T00:00:00Z","status":"verified","entries":2,"samples":1}})");
  EXPECT_EQ(toText(checked, Style(false)),
            "valid    manifest  /f.json\n"
            "         2001-01-01T00:00:00Z  /folder\n"
            "         Warp W1, verified, 2 entries, 1 sample, key manifests/W1.json\n");
}

TEST_F(FileCheckTest, indexIsCounted) {
  const CheckedFile checked = check(indexJSON({tombstoneOf(manifestOf("/folder", "W1"))}),
                                    std::nullopt, "/destroyed-manifest-index.json");
  EXPECT_EQ(toJSON(checked),
            R"({"file":"/destroyed-manifest-index.json","kind":"index","valid":true,)"
            R"("index":{"records":1}})");
  EXPECT_EQ(toText(checked, Style(false)),
            "valid    index     /destroyed-manifest-index.json\n"
            "         1 record\n");
}

TEST_F(FileCheckTest, markerNamesItsWarp) {
  const CheckedFile checked = check(markerJSON("W\n1"), std::nullopt, "/a/.velmora-warped.json");
  EXPECT_EQ(toJSON(checked), R"({"file":"/a/.velmora-warped.json","kind":"marker","valid":true,)"
                             R"("marker":{"warpID":"W\n1"}})");
  EXPECT_EQ(toText(checked, Style(false)),
            "valid    marker    /a/.velmora-warped.json\n"
            "         Warp W\\n1\n");
}

TEST_F(FileCheckTest, kindThatIsGivenCountsMoreThanTheName) {
  EXPECT_TRUE(check(markerJSON("W"), FileKind::marker).isValid());
  EXPECT_FALSE(check(markerJSON("W"), FileKind::index, "/.velmora-warped.json").isValid());
}

TEST_F(FileCheckTest, faultHasItsPlaceInTheFileAsItWas) {
  // Decoding resolves the escapes in place.
  const CheckedFile checked =
      check("{\"version\":4,\n\"warpID\":\"\\u0041\\u0041\\u0041\",\n  \"deviceID\":5}");
  EXPECT_EQ(faultOf(checked).kind, "typeMismatch");
  EXPECT_EQ(faultOf(checked).place, (Place{3, 14}));
  EXPECT_EQ(toText(checked, Style(false)).substr(0, 27), "invalid  manifest  /f.json\n");
}

TEST_F(FileCheckTest, missingKeyIsTold) {
  const CheckedFile checked = check("{}", FileKind::marker);
  EXPECT_EQ(faultOf(checked).kind, "keyNotFound");
  EXPECT_EQ(faultOf(checked).codingPath, std::vector<CodingKey>{"warpID"});
}

TEST_F(FileCheckTest, nullIsTold) {
  EXPECT_EQ(faultOf(check(R"({"warpID":null})", FileKind::marker)).kind, "valueNotFound");
}

TEST_F(FileCheckTest, whatIsNoJSONIsCorrupted) {
  const CheckedFile checked = check("{\"warpID\":\n!}", FileKind::marker);
  EXPECT_EQ(faultOf(checked).kind, "dataCorrupted");
  EXPECT_EQ(faultOf(checked).codingPath, std::vector<CodingKey>());
}

TEST_F(FileCheckTest, indexThatBreaksARuleIsCorrupt) {
  const auto tombstone = tombstoneOf(manifestOf("/folder", "W1"));
  const CheckedFile checked = check(indexJSON({tombstone, tombstone}), FileKind::index);
  EXPECT_EQ(faultOf(checked).kind, "corruptFile");
  EXPECT_EQ(faultOf(checked).codingPath, std::nullopt);
}

TEST_F(FileCheckTest, whatCannotBeReadIsUnreadable) {
  fake.fileSystem.createDirectories("/folder");
  for (const char* file : {"/missing", "/folder", ""}) {
    const CheckedFile checked = checker.check(file, std::nullopt);
    EXPECT_EQ(faultOf(checked).kind, "unreadable") << file;
    EXPECT_EQ(checked.file, file);
  }
}

TEST_F(FileCheckTest, relativeFileLiesInTheWorkingDirectory) {
  const std::string directory = std::filesystem::current_path();
  fake.fileSystem.files[directory + "/../a.json"] = markerJSON("W");
  const CheckedFile checked = checker.check("../a.json", FileKind::marker);
  EXPECT_TRUE(checked.isValid());
  EXPECT_EQ(checked.file, "../a.json");
}

TEST_F(FileCheckTest, oneFileAfterTheOtherIsCheckedAfresh) {
  EXPECT_FALSE(check("{").isValid());
  EXPECT_TRUE(check(encodeManifest(manifestOf("/folder", "W1"))).isValid());
  EXPECT_TRUE(check(encodeManifest(manifestOf("/folder", "W1"))).isValid());
}

TEST_F(FileCheckTest, namesAreShownSafely) {
  const CheckedFile checked = check("{", std::nullopt, "/a\n\x1b[2J\xff");
  EXPECT_TRUE(
      toText(checked, Style(false)).starts_with("invalid  manifest  /a\\n\\u{1b}[2J\uFFFD\n"));
  EXPECT_TRUE(toJSON(checked).starts_with("{\"file\":\"/a\\n\\u001b[2J\uFFFD\","));
}

}  // namespace
}  // namespace velmora::inspect

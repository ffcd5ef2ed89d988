#include "CheckCommand.h"
#include "tests/fakes/FakePlatform.h"
#include "tests/fakes/WarpRecords.h"
#include "warpshared/writing/ManifestEncoding.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace velmora::inspect {
namespace {

TEST(FileKinds, followFromTheFileName) {
  EXPECT_EQ(fileKindOf(".velmora-warped.json"), FileKind::marker);
  EXPECT_EQ(fileKindOf("/a/b/.velmora-warped.json"), FileKind::marker);
  EXPECT_EQ(fileKindOf("destroyed-manifest-index.json"), FileKind::index);
  EXPECT_EQ(fileKindOf("../destroyed-manifest-index.json"), FileKind::index);
  for (const char* path : {"x.velmora-warped.json", "destroyed-manifest-index.json/a",
                           "Destroyed-manifest-index.json", "W1.json", "notes.txt", "", "/"}) {
    EXPECT_EQ(fileKindOf(path), FileKind::manifest) << path;
  }
}

TEST(FileKinds, areFoundByTheirExactNames) {
  EXPECT_EQ(fileKindNamed("manifest"), FileKind::manifest);
  EXPECT_EQ(fileKindNamed("index"), FileKind::index);
  EXPECT_EQ(fileKindNamed("marker"), FileKind::marker);
  EXPECT_EQ(fileKindNamed("Manifest"), std::nullopt);
  EXPECT_EQ(fileKindNamed(""), std::nullopt);
}

class CheckCommandTest : public testing::Test {
 protected:
  CheckedFile check(const std::string& bytes, std::optional<FileKind> kind = std::nullopt,
                    const std::string& file = "/f.json") {
    fake.fileSystem.files[file] = bytes;
    return checker.check(file, kind);
  }

  static Fault faultOf(const CheckedFile& checked) {
    const auto* const fault = std::get_if<Fault>(&checked.content);
    return fault != nullptr ? *fault : Fault();
  }

  FakePlatform fake;
  FileChecker checker{fake.fileSystem};
};

TEST_F(CheckCommandTest, validFilesAreSummarised) {
  VelmoraWarpSharedManifest manifest = manifestOf("/folder", "W1");
  manifest.entries.append(entryOf("/folder/a"));
  manifest.entries.append(entryOf("/folder/b"));
  manifest.verificationSampleRelativePaths = {"/folder/a"};
  const struct {
    std::string file;
    std::string bytes;
    std::string json;
    std::string text;
  } rows[] = {
      {"/f.json", encodeManifest(manifest),
       R"("kind":"manifest","valid":true,"manifest":{"warpID":"W1",)"
       R"("manifestKey":"manifests/W1.json","originalFolderPath":"/folder",)"
       R"("createdAt":"2001-01-01T00:00:00Z","status":"verified","entries":2,"samples":1}})",
       "valid    manifest  /f.json\n         2001-01-01T00:00:00Z  /folder\n"
       "         Warp W1, verified, 2 entries, 1 sample, key manifests/W1.json\n"},
      {"/destroyed-manifest-index.json", indexJSON({tombstoneOf(manifest)}),
       R"("kind":"index","valid":true,"index":{"records":1}})",
       "valid    index     /destroyed-manifest-index.json\n         1 record\n"},
      {"/a/.velmora-warped.json", markerJSON("W\n1"),
       R"("kind":"marker","valid":true,"marker":{"warpID":"W\n1"}})",
       "valid    marker    /a/.velmora-warped.json\n         Warp W\\n1\n"},
  };
  for (const auto& row : rows) {
    const CheckedFile checked = check(row.bytes, std::nullopt, row.file);
    EXPECT_EQ(toJSON(checked), "{\"file\":\"" + row.file + "\"," + row.json);
    EXPECT_EQ(toText(checked, Style::plain), row.text);
  }
}

TEST_F(CheckCommandTest, givenKindOverridesTheFileName) {
  EXPECT_TRUE(check(markerJSON("W"), FileKind::marker).isValid());
  EXPECT_FALSE(check(markerJSON("W"), FileKind::index, "/.velmora-warped.json").isValid());
}

TEST_F(CheckCommandTest, faultPlaceRefersToTheUnchangedFile) {
  // Decoding resolves the escapes in place, so the bytes before the fault move.
  const CheckedFile checked =
      check("{\"version\":4,\n\"warpID\":\"\\u0041\\u0041\\u0041\",\n  \"deviceID\":5}");
  EXPECT_EQ(faultOf(checked).kind, "typeMismatch");
  EXPECT_EQ(faultOf(checked).place, (Place{3, 14}));
  EXPECT_EQ(toText(checked, Style::plain).substr(0, 27), "invalid  manifest  /f.json\n");
}

TEST_F(CheckCommandTest, faultHasItsKindAndCodingPath) {
  using Path = std::vector<CodingKey>;
  const auto tombstone = tombstoneOf(manifestOf("/folder", "W1"));
  const struct {
    FileKind kind;
    std::string bytes;
    const char* fault;
    std::optional<Path> codingPath;
  } rows[] = {
      {FileKind::marker, "{}", "keyNotFound", Path{"warpID"}},
      {FileKind::marker, R"({"warpID":null})", "valueNotFound", Path{"warpID"}},
      {FileKind::marker, "{\"warpID\":\n!}", "dataCorrupted", Path()},
      {FileKind::index, indexJSON({tombstone, tombstone}), "corruptFile", std::nullopt},
  };
  for (const auto& row : rows) {
    const CheckedFile checked = check(row.bytes, row.kind);
    EXPECT_EQ(faultOf(checked).kind, row.fault);
    EXPECT_EQ(faultOf(checked).codingPath, row.codingPath) << row.fault;
  }
}

TEST_F(CheckCommandTest, fileThatCannotBeReadIsUnreadable) {
  fake.fileSystem.createDirectories("/folder");
  for (const char* file : {"/missing", "/folder", ""}) {
    const CheckedFile checked = checker.check(file, std::nullopt);
    EXPECT_EQ(faultOf(checked).kind, "unreadable") << file;
    EXPECT_EQ(checked.file, file);
  }
}

TEST_F(CheckCommandTest, relativePathStartsAtTheWorkingDirectory) {
  const std::string directory = std::filesystem::current_path();
  fake.fileSystem.files[directory + "/../a.json"] = markerJSON("W");
  const CheckedFile checked = checker.check("../a.json", FileKind::marker);
  EXPECT_TRUE(checked.isValid());
  EXPECT_EQ(checked.file, "../a.json");
}

TEST_F(CheckCommandTest, eachFileIsCheckedIndependently) {
  EXPECT_FALSE(check("{").isValid());
  EXPECT_TRUE(check(encodeManifest(manifestOf("/folder", "W1"))).isValid());
  EXPECT_TRUE(check(encodeManifest(manifestOf("/folder", "W1"))).isValid());
}

TEST_F(CheckCommandTest, namesAreEscaped) {
  const CheckedFile checked = check("{", std::nullopt, "/a\n\x1b[2J\xff");
  EXPECT_TRUE(
      toText(checked, Style::plain).starts_with("invalid  manifest  /a\\n\\u{1b}[2J\\xff\n"));
  EXPECT_TRUE(toJSON(checked).starts_with("{\"file\":\"/a\\n\\u001b[2J\uFFFD\","));
}

}  // namespace
}  // namespace velmora::inspect

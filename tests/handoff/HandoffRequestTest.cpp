#include "handoff/HandoffRequest.h"
#include "platform/PlatformError.h"
#include "tests/fakes/FakePlatform.h"
#include "tests/support/Bytes.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <chrono>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

namespace velmora {
namespace {

using Paths = std::vector<Text>;

TEST(NormalizedHandoffPaths, areStandardisedAndUnique) {
  struct Row {
    const char* name;
    Paths paths;
    Paths normalized;
  };
  const Row rows[] = {{"empty", {}, {}},
                      {"dotDotMeetsItsTarget", {"/a/b/../c", "/a/c"}, {"/a/c"}},
                      {"firstSeenOrder", {"/b", "/a", "/b/", "/c"}, {"/b", "/a", "/c"}},
                      {"composedFirst", {"/caf\u00e9", "/cafe\u0301"}, {"/caf\u00e9"}},
                      {"decomposedFirst", {"/cafe\u0301", "/caf\u00e9"}, {"/cafe\u0301"}},
                      {"letterCaseCounts", {"/a", "/A"}, {"/a", "/A"}},
                      {"compatibilityFormsDiffer", {"/ﬁ", "/fi"}, {"/ﬁ", "/fi"}},
                      {"tildeIsAName", {"/~", "/~/x"}, {"/~", "/~/x"}},
                      {"root", {"/..", "//", "/"}, {"/"}}};
  for (const Row& row : rows) {
    EXPECT_EQ(bytesOf(normalizedHandoffPaths(row.paths, PosixPathStandardizer())),
              bytesOf(row.normalized))
        << row.name;
  }
}

TEST(NormalizedHandoffPaths, fromRelativePathsLieInTheWorkingDirectory) {
  const PosixPathStandardizer standardizer;
  const Text here = standardizer.standardizedFileURLPath(".");
  EXPECT_EQ(normalizedHandoffPaths({"", "a", "./a/", "."}, standardizer),
            (Paths{here, Text(here.utf8() + "/a")}));
}

/// A standardizer without a working directory.
class NowhereStandardizer final : public PathStandardizer {
 public:
  Text standardizedFileURLPath(const Text& path) const override {
    return path.view().starts_with('/') ? path : Text();
  }
  Text standardizedPath(const Text& path) const override { return path; }
  std::vector<Text> pathsStandardizedTo(const Text& path) const override { return {path}; }
};

TEST(NormalizedHandoffPaths, fromRelativePathsAreLeftOutWithoutAWorkingDirectory) {
  EXPECT_EQ(normalizedHandoffPaths({"a", "/b", ""}, NowhereStandardizer()), (Paths{"/b"}));
}

class HandoffRequestWriting : public testing::Test {
 protected:
  HandoffRequestWriting() { fake.locations.groupContainers["group.io.tolvane.Velmora"] = "/C"; }

  void write(FinderHandoffAction action, const Paths& paths) {
    writeHandoffRequest(action, paths, fake.platform());
  }

  /// Expects that writing `path` raises an error with this code, creates no file, and posts
  /// nothing.
  void expectError(int code, const char* path = "/a") {
    try {
      write(FinderHandoffAction::warpFolder, {path});
      ADD_FAILURE() << "no error " << code;
    } catch (const PlatformError& error) {
      EXPECT_EQ(error.code(), code);
    }
    EXPECT_TRUE(fake.journal.empty());
  }

  FakePlatform fake;
};

TEST_F(HandoffRequestWriting, writesANewFileBeforeEachPost) {
  fake.clock.time += std::chrono::seconds(61);
  write(FinderHandoffAction::warpFolder, {"/a/b/../c", "/a/c"});
  write(FinderHandoffAction::restoreMarkerFolder, {"/a"});
  const std::string path = "/C/Warp/FinderHandoff/00000000-0000-4000-8000-000000000001.json";
  const std::string second = "/C/Warp/FinderHandoff/00000000-0000-4000-8000-000000000002.json";
  const std::string posting = "post io.tolvane.Velmora.finderHandoff";
  EXPECT_EQ(fake.journal, (Journal{"write " + path, posting, "write " + second, posting}));
  EXPECT_EQ(fake.fileSystem.files[path],
            "{\n  \"action\" : \"warpFolder\",\n  \"createdAt\" : \"1970-01-01T00:01:01Z\",\n"
            "  \"folderPaths\" : [\n    \"\\/a\\/c\"\n  ]\n}");
  EXPECT_NE(fake.fileSystem.files[second].find("\"restoreMarkerFolder\""), std::string::npos);
}

TEST_F(HandoffRequestWriting, changesNothingWhenNoPathIsLeft) {
  write(FinderHandoffAction::warpFolder, {});
  fake.locations.groupContainers.clear();
  EXPECT_NO_THROW(write(FinderHandoffAction::warpFolder, {}));
  EXPECT_EQ(fake.fileSystem.directories.size(), 1U);
  EXPECT_TRUE(fake.journal.empty());
}

TEST_F(HandoffRequestWriting, raisesErrorsAndPostsNothing) {
  expectError(EILSEQ, "/\xff");
  fake.fileSystem.writeFailure = throwing(posixError(ENOSPC));
  expectError(ENOSPC);
  fake.fileSystem.createDirectoriesFailure = throwing(posixError(EROFS));
  expectError(EROFS);
  fake.locations.groupContainers.clear();
  expectError(fileNoSuchFileErrorCode);
}

TEST_F(HandoffRequestWriting, createsTheDirectoryBeforeItEncodesTheRequest) {
  expectError(EILSEQ, "/\xff");
  EXPECT_TRUE(fake.fileSystem.isDirectory("/C/Warp/FinderHandoff"));
}

using std::chrono::sys_days;
using std::chrono::sys_seconds;
using namespace std::chrono_literals;

constexpr sys_seconds morning = sys_days(2026y / 3 / 1) + 9h + 15min + 42s;

std::string goldenFile(const std::string& name) {
  std::ifstream file(VELMORA_TEST_DATA "/handoff/" + name, std::ios::binary);
  EXPECT_TRUE(file.is_open()) << name;
  return {std::istreambuf_iterator<char>(file), {}};
}

TEST(HandoffRequestEncoding, writesTheReviewedFiles) {
  EXPECT_EQ(encodeHandoffRequest({.action = FinderHandoffAction::warpFolder,
                                  .createdAt = morning,
                                  .folderPaths = {"/Users/a/Docs"}}),
            goldenFile("one_folder.request.json"));
  EXPECT_EQ(encodeHandoffRequest({.action = FinderHandoffAction::restoreMarkerFolder,
                                  .createdAt = morning,
                                  .folderPaths = {"/h/b c", "/h/d\"é'", "/h/back\\slash", "/h/日本",
                                                  "/h/new\nline\ttab", "/h/100% sure"}}),
            goldenFile("awkward_names.request.json"));
}

TEST(HandoffRequestEncoding, escapesSlashesAndTheRequiredCharacters) {
  struct Row {
    const char* name;
    std::string_view path;
    std::string_view json;
  };
  const Row rows[] = {{"slash", "/", "\\/"},
                      {"quote", "\"", "\\\""},
                      {"backslash", "\\", "\\\\"},
                      {"backspace", "\b", "\\b"},
                      {"formFeed", "\f", "\\f"},
                      {"newline", "\n", "\\n"},
                      {"carriageReturn", "\r", "\\r"},
                      {"tab", "\t", "\\t"},
                      {"null", std::string_view("\0", 1), "\\u0000"},
                      {"one", "\x01", "\\u0001"},
                      {"verticalTab", "\v", "\\u000b"},
                      {"escape", "\x1b", "\\u001b"},
                      {"lastControl", "\x1f", "\\u001f"},
                      {"blank", " ", " "},
                      {"delete", "\x7f", "\x7f"},
                      {"apostrophe", "'", "'"},
                      {"percent", "100%25", "100%25"},
                      {"accent", "é", "é"},
                      {"decomposedStays", "e\u0301", "e\u0301"},
                      {"lineSeparator", "\u2028", "\u2028"},
                      {"beyondTheBasicPlane", "😀", "😀"}};
  for (const Row& row : rows) {
    const std::string json = encodeHandoffRequest({.folderPaths = {Text(row.path)}});
    EXPECT_NE(json.find("[\n    \"" + std::string(row.json) + "\"\n  ]"), std::string::npos)
        << row.name << ": " << json;
  }
}

TEST(HandoffRequestEncoding, separatesFoldersByComma) {
  EXPECT_EQ(encodeHandoffRequest(
                {.action = FinderHandoffAction::warpFolder, .folderPaths = {"a", "b", "c"}}),
            "{\n  \"action\" : \"warpFolder\",\n  \"createdAt\" : \"1970-01-01T00:00:00Z\",\n"
            "  \"folderPaths\" : [\n    \"a\",\n    \"b\",\n    \"c\"\n  ]\n}");
}

TEST(HandoffRequestEncoding, writesAnEmptyListOverTwoLines) {
  EXPECT_NE(encodeHandoffRequest({}).find("\"folderPaths\" : [\n\n  ]\n}"), std::string::npos);
}

TEST(HandoffRequestEncoding, refusesPathsThatAreNotUTF8) {
  try {
    static_cast<void>(encodeHandoffRequest({.folderPaths = {"/a", "/\xff"}}));
    FAIL() << "no error";
  } catch (const PlatformError& error) {
    EXPECT_EQ(error.domain(), "NSPOSIXErrorDomain");
    EXPECT_EQ(error.code(), EILSEQ);
  }
}

TEST(FinderHandoffActions, haveTheirRawValues) {
  EXPECT_EQ(rawValue(FinderHandoffAction::warpFolder), "warpFolder");
  EXPECT_EQ(rawValue(FinderHandoffAction::restoreMarkerFolder), "restoreMarkerFolder");
  EXPECT_EQ(rawValue(FinderHandoffAction::materializeMarkerItem), "materializeMarkerItem");
}

TEST(HandoffRequestEncoding, truncatesTheInstantToTheWholeSecond) {
  for (const auto part : {0ms, 1ms, 999ms}) {
    EXPECT_EQ(encodeHandoffRequest({.createdAt = morning + part}),
              encodeHandoffRequest({.createdAt = morning}));
  }
  const auto before1970 = std::chrono::system_clock::time_point(-1ms);
  const std::string json = encodeHandoffRequest({.createdAt = before1970});
  EXPECT_NE(json.find("\"1969-12-31T23:59:59Z\""), std::string::npos) << json;
}

}  // namespace
}  // namespace velmora

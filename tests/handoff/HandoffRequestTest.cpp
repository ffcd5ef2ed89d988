#include "handoff/HandoffRequest.h"
#include "platform/PlatformError.h"
#include "tests/fakes/FakePlatform.h"
#include "tests/support/Bytes.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <chrono>
#include <string>
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

}  // namespace
}  // namespace velmora

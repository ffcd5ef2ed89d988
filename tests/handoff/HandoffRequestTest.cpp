#include "handoff/HandoffRequest.h"
#include "tests/support/Bytes.h"
#include "tests/support/RowName.h"
#include "tests/fakes/FakePlatform.h"

#include <gtest/gtest.h>

#include <cerrno>

namespace velmora {
namespace {

using Paths = std::vector<Text>;

struct NormalizationCase {
  const char* name;
  Paths paths;
  Paths normalized;
};

class NormalizedHandoffPaths : public testing::TestWithParam<NormalizationCase> {};

TEST_P(NormalizedHandoffPaths, areStandardisedAndUnique) {
  EXPECT_EQ(bytesOf(normalizedHandoffPaths(GetParam().paths, PosixPathStandardizer())),
            bytesOf(GetParam().normalized));
}

INSTANTIATE_TEST_SUITE_P(
    Lists, NormalizedHandoffPaths,
    testing::Values(
        NormalizationCase{"empty", {}, {}},
        NormalizationCase{"dotDotMeetsItsTarget", {"/a/b/../c", "/a/c"}, {"/a/c"}},
        NormalizationCase{"firstSeenOrder", {"/b", "/a", "/b/", "/c"}, {"/b", "/a", "/c"}},
        NormalizationCase{"composedFirst", {"/caf\u00e9", "/cafe\u0301"}, {"/caf\u00e9"}},
        NormalizationCase{"decomposedFirst", {"/cafe\u0301", "/caf\u00e9"}, {"/cafe\u0301"}},
        NormalizationCase{"letterCaseCounts", {"/a", "/A"}, {"/a", "/A"}},
        NormalizationCase{"compatibilityFormsDiffer", {"/ﬁ", "/fi"}, {"/ﬁ", "/fi"}},
        NormalizationCase{"tildeIsAName", {"/~", "/~/x"}, {"/~", "/~/x"}},
        NormalizationCase{"root", {"/..", "//", "/"}, {"/"}}),
    RowName());

TEST(NormalizedHandoffPathsFromRelativeOnes, lieInTheWorkingDirectory) {
  const PosixPathStandardizer standardizer;
  const Text here = standardizer.standardizedFileURLPath(".");
  EXPECT_EQ(normalizedHandoffPaths({"", "a", "./a/", "."}, standardizer),
            (Paths{here, Text(here.utf8() + "/a")}));
}

/// Stands for a working directory that is gone.
class NowhereStandardizer final : public PathStandardizer {
 public:
  Text standardizedFileURLPath(const Text& path) const override {
    return path.view().starts_with('/') ? path : Text();
  }
  Text standardizedPath(const Text& path) const override { return path; }
};

TEST(NormalizedHandoffPathsFromRelativeOnes, areLeftOutWithoutAWorkingDirectory) {
  EXPECT_EQ(normalizedHandoffPaths({"a", "/b", ""}, NowhereStandardizer()), (Paths{"/b"}));
}

class HandoffRequestWriting : public testing::Test {
 protected:
  HandoffRequestWriting() { fake.locations.groupContainers["group.io.tolvane.Velmora"] = "/C"; }

  void write(FinderHandoffAction action, const Paths& paths) {
    writeHandoffRequest(action, paths, fake.platform());
  }

  /// The code of the error that writing raises; 0 without one.
  int errorCodeOfWriting() {
    try {
      write(FinderHandoffAction::warpFolder, {"/a"});
    } catch (const PlatformError& error) {
      return error.code();
    }
    return 0;
  }

  FakePlatform fake;
};

TEST_F(HandoffRequestWriting, putsOneFileInPlaceBeforeItPosts) {
  fake.clock.time += std::chrono::seconds(61);
  write(FinderHandoffAction::warpFolder, {"/a/b/../c", "/a/c"});
  const std::string path = "/C/Warp/FinderHandoff/00000000-0000-4000-8000-000000000001.json";
  ASSERT_EQ(fake.fileSystem.files.size(), 1U);
  EXPECT_EQ(fake.fileSystem.files[path],
            "{\n  \"action\" : \"warpFolder\",\n  \"createdAt\" : \"1970-01-01T00:01:01Z\",\n"
            "  \"folderPaths\" : [\n    \"\\/a\\/c\"\n  ]\n}");
  EXPECT_EQ(fake.journal, (Journal{"write " + path, "post io.tolvane.Velmora.finderHandoff"}));
}

TEST_F(HandoffRequestWriting, namesTheAction) {
  write(FinderHandoffAction::restoreMarkerFolder, {"/a"});
  EXPECT_NE(fake.fileSystem.files.begin()->second.find("\"restoreMarkerFolder\""),
            std::string::npos);
}

TEST_F(HandoffRequestWriting, makesADifferentFileEachTime) {
  write(FinderHandoffAction::warpFolder, {"/a"});
  write(FinderHandoffAction::warpFolder, {"/a"});
  EXPECT_EQ(fake.fileSystem.files.size(), 2U);
  EXPECT_EQ(fake.notifications.posted.size(), 2U);
}

TEST_F(HandoffRequestWriting, succeedsWithoutATraceWhenNoPathIsLeft) {
  write(FinderHandoffAction::warpFolder, {});
  EXPECT_EQ(fake.fileSystem.directories.size(), 1U);
  EXPECT_TRUE(fake.journal.empty());
}

TEST_F(HandoffRequestWriting, needsNoLocationWhenNoPathIsLeft) {
  fake.locations.groupContainers.clear();
  EXPECT_NO_THROW(write(FinderHandoffAction::warpFolder, {}));
}

TEST_F(HandoffRequestWriting, usesTheFallbackLocation) {
  fake.locations.groupContainers.clear();
  fake.locations.supportDirectories = {"/S"};
  write(FinderHandoffAction::warpFolder, {"/a"});
  EXPECT_TRUE(fake.fileSystem.exists("/S/Velmora/Warp/FinderHandoff"));
}

TEST_F(HandoffRequestWriting, passesTheErrorOfAMissingLocationOn) {
  fake.locations.groupContainers.clear();
  EXPECT_EQ(errorCodeOfWriting(), fileNoSuchFileErrorCode);
  EXPECT_TRUE(fake.journal.empty());
}

TEST_F(HandoffRequestWriting, passesTheErrorOfTheDirectoryOn) {
  fake.fileSystem.createDirectoriesFailure = throwing(posixError(EROFS));
  EXPECT_EQ(errorCodeOfWriting(), EROFS);
  EXPECT_TRUE(fake.journal.empty());
}

TEST_F(HandoffRequestWriting, passesTheErrorOfTheFileOnAndPostsNothing) {
  fake.fileSystem.writeFailure = throwing(posixError(ENOSPC));
  EXPECT_EQ(errorCodeOfWriting(), ENOSPC);
  EXPECT_TRUE(fake.journal.empty());
}

TEST_F(HandoffRequestWriting, passesTheErrorOfTheEncodingOnAndWritesNothing) {
  EXPECT_THROW(write(FinderHandoffAction::warpFolder, {"/\xff"}), PlatformError);
  EXPECT_TRUE(fake.journal.empty());
}

}  // namespace
}  // namespace velmora

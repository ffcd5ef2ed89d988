#include "warpshared/rules/OriginalFolder.h"
#include "warpshared/rules/TextRules.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace velmora::internal {
namespace {

using Paths = std::vector<std::string>;

/// Whether CommonAncestor finds all paths below the folder.
bool areBelow(const Paths& paths, const std::string& folder) {
  CommonAncestor common;
  return std::ranges::all_of(paths, [&](const std::string& path) { return common.add(path); }) &&
         common.isBelow(OriginalFolder(folder));
}

bool areOwned(const Paths& paths, const std::string& folder) {
  const OriginalFolder original(folder);
  return std::ranges::all_of(paths, [&](const std::string& path) { return original.owns(path); });
}

TEST(OriginalFolderTest, ownsItsOwnPathAndPathsBelow) {
  struct {
    const char* name;
    const char* folder;
    const char* path;
    bool isOwned;
  } const rows[] = {
      {"itself", "/a/b", "/a/b", true},
      {"itselfInOtherNormalForm", "/a/\u00e9", "/a/e\u0301", true},
      {"below", "/a/b", "/a/b/c", true},
      {"farBelow", "/a/b", "/a/b/c/d/e", true},
      {"belowInOtherNormalForm", "/a/e\u0301", "/a/\u00e9/c", true},
      {"belowTheRoot", "/", "/a", true},
      {"rootItself", "/", "/", true},
      {"sibling", "/a/b", "/a/bc", false},
      {"parent", "/a/b", "/a", false},
      {"otherLetterCase", "/a/b", "/a/B/c", false},
      {"markOnTheFoldersName", "/a/e", "/a/e\u0301/c", false},
      {"markOnTheSeparator", "/a/b", "/a/b/\u0301c", false},
      {"markOnTheRoot", "/", "/\u0301c", false},
      {"joinerOnTheSeparator", "/a/b", "/a/b/\u200dc", false},
      {"lineBreaksInNames", "/a/\r", "/a/\r/\n", true},
      {"lineFeedAfterACarriageReturn", "/a/\r", "/a/\r\n/c", false},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(OriginalFolder(TextView(row.folder)).owns(TextView(row.path)), row.isOwned)
        << row.name;
  }
}

struct CommonCase {
  const char* name;
  const char* folder;
  Paths paths;
  /// Whether CommonFolder reports all of the paths as below the folder. If so, each of them is.
  bool areBelow;
};

const CommonCase commonCases[] = {
    {"none", "/a/b", {}, true},
    {"one", "/a/b", {"/a/b/c"}, true},
    {"siblings", "/a/b", {"/a/b/c", "/a/b/d"}, true},
    {"folderAndItsContent", "/a/b", {"/a/b/c", "/a/b/c/d", "/a/b/c/e"}, true},
    {"contentAndItsFolder", "/a/b", {"/a/b/c/d/e", "/a/b/c/d", "/a/b/c"}, true},
    {"namesThatBeginAlike", "/a/b", {"/a/b/cd", "/a/b/ce/f", "/a/b/c"}, true},
    {"belowTheRoot", "/", {"/a", "/b/c", "/d"}, true},
    {"oneBelowTheRoot", "/", {"/a/b/c"}, true},
    {"rootItself", "/", {"/", "/a"}, true},
    {"nonASCIINames", "/a/\u00e9", {"/a/\u00e9/\u65e5", "/a/\u00e9/\u672c"}, true},
    {"namesOfTheSameFirstBytes", "/a", {"/a/\u00e8", "/a/\u00e9"}, true},
    {"folderInOtherNormalForm", "/a/\u00e9", {"/a/e\u0301/x", "/a/e\u0301/y"}, true},
    {"marksInsideOfNames", "/a", {"/a/e\u0301", "/a/e\u0300/x"}, true},
    {"lineBreaksInNames", "/a/\r", {"/a/\r/\n", "/a/\r/\r\n/c"}, true},
    {"manyFoldersUp", "/a", {"/a/b/c/d/e", "/a/b/c/x", "/a/y"}, true},
    {"elsewhere", "/a/b", {"/a/c/d"}, false},
    {"oneElsewhere", "/a/b", {"/a/b/c", "/a/b/d", "/a/c"}, false},
    {"siblingOfTheFolder", "/a/b", {"/a/b/c", "/a/bc/d"}, false},
    {"siblingAlone", "/a/b", {"/a/bc/d"}, false},
    {"otherRoot", "/a", {"/a/b", "/b/b"}, false},
    {"folderItself", "/a/b", {"/a/b"}, true},
    {"folderItselfTwice", "/a/b", {"/a/b", "/a/b"}, true},
    {"folderItselfAmongOthers", "/a/b", {"/a/b/c", "/a/b", "/a/b/d/e"}, true},
    {"folderItselfInOtherNormalForm", "/\u00e9", {"/\u00e9/x", "/e\u0301"}, false},
    {"folderItselfAndOneElsewhere", "/a/b", {"/a/b", "/a/bc"}, false},
    {"parent", "/a/b", {"/a"}, false},
    {"bothNormalForms", "/\u00e9", {"/\u00e9/x", "/e\u0301/x"}, false},
    {"markOnTheSeparator", "/a/b", {"/a/b/\u0301c"}, false},
    {"markOnALaterSeparator", "/a/b", {"/a/b/c", "/a/b/\u0301c"}, false},
    {"markOnAnEarlierSeparator", "/a/b", {"/a/b/\u0301c/d", "/a/b/c"}, false},
    {"markOnASeparatorFarBelow", "/a/b", {"/a/b/c/\u0301d", "/a/b/c/x"}, false},
    {"markOnAnInnerSeparator", "/a", {"/a/x/\u0301b/c", "/a/x/\u0301b/d"}, true},
    {"markOnTheSeparatorOfAll", "/a", {"/a/\u0301b/c", "/a/\u0301b/d"}, false},
    {"otherMarksOnOneSeparator", "/a", {"/a/x/\u0301b", "/a/x/\u0300b"}, false},
    {"markAfterTheRoot", "/", {"/\u0301b", "/a"}, false},
    {"joinerOnTheSeparator", "/a/b", {"/a/b/c", "/a/b/\u200dc"}, false},
    {"notUTF8", "/a/b", {"/a/b/\xFF", "/a/b/\xFE"}, true},
};

TEST(CommonFolderTest, findsInAnyOrderWhetherAllPathsAreBelow) {
  for (const CommonCase& row : commonCases) {
    SCOPED_TRACE(row.name);
    Paths paths = row.paths;
    EXPECT_EQ(areBelow(paths, row.folder), row.areBelow);
    std::ranges::sort(paths);
    do {
      const bool isSaid = areBelow(paths, row.folder);
      EXPECT_TRUE(isSaid || !row.areBelow);
      EXPECT_TRUE(!isSaid || areOwned(paths, row.folder));
    } while (std::ranges::next_permutation(paths).found);
  }
}

TEST(CommonFolderTest, forgetsEarlierPaths) {
  CommonAncestor common;
  EXPECT_TRUE(common.add("/a/b/c"));
  EXPECT_FALSE(common.isBelow(OriginalFolder("/x")));
  common.clear();
  EXPECT_TRUE(common.isBelow(OriginalFolder("/x")));
  EXPECT_TRUE(common.add("/x/y"));
  EXPECT_TRUE(common.isBelow(OriginalFolder("/x")));
}

/// A path of few similar names, so that many paths have much in common.
std::string randomPath(std::mt19937_64& random, bool isOrdinary) {
  static constexpr std::string_view ordinary[] = {"a", "b", "ab", "e\u0301", "\u00e9", "\u65e5"};
  static constexpr std::string_view any[] = {
      "a",  "/",      "/",      "e",    "\u0301", "\u0323", "\u00e9",     "\u200d", "\r",
      "\n", "\u1100", "\u1161", "\xFF", "\u0600", "\u0903", "\U0001F1E6", "\u0338"};
  std::string path;
  for (std::size_t count = 1 + random() % 4; count > 0; --count) {
    path += '/';
    for (std::size_t length = 1 + random() % 3; length > 0; --length) {
      path +=
          isOrdinary ? ordinary[random() % std::size(ordinary)] : any[random() % std::size(any)];
    }
  }
  return path;
}

TEST(CommonFolderTest, reportsBelowOnlyIfAllAreOwned) {
  std::mt19937_64 random(1);
  int belowCount = 0;
  for (int round = 0; round < 40'000; ++round) {
    const std::string folder = random() % 8 == 0 ? "/" : randomPath(random, random() % 2 == 0);
    Paths paths;
    for (std::size_t count = 1 + random() % 4; count > 0; --count) {
      const std::string path = randomPath(random, false);
      paths.push_back(random() % 4 == 0 || folder == "/" ? path : folder + path);
    }
    if (std::ranges::all_of(paths, isCanonicalAbsolutePath) && areBelow(paths, folder)) {
      ++belowCount;
      ASSERT_TRUE(areOwned(paths, folder)) << folder << ' ' << testing::PrintToString(paths);
    }
  }
  EXPECT_GT(belowCount, 1000);
}

TEST(CommonFolderTest, reportsBelowForAllOrdinaryPaths) {
  std::mt19937_64 random(2);
  for (int round = 0; round < 5000; ++round) {
    const std::string folder = randomPath(random, true);
    Paths paths;
    for (std::size_t count = 1 + random() % 5; count > 0; --count) {
      paths.push_back(folder + randomPath(random, true));
    }
    ASSERT_TRUE(areBelow(paths, folder)) << folder << ' ' << testing::PrintToString(paths);
  }
}

}  // namespace
}  // namespace velmora::internal

#include "tests/support/RowName.h"
#include "warpshared/OriginalFolder.h"
#include "warpshared/PathPredicates.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace velmora {
namespace {

using Paths = std::vector<std::string>;

/// What CommonFolder says of all of them.
bool areBelow(const Paths& paths, const std::string& folder) {
  CommonFolder common;
  return std::ranges::all_of(paths, [&](const std::string& path) { return common.add(path); }) &&
         common.isBelow(OriginalFolder(folder));
}

bool areOwned(const Paths& paths, const std::string& folder) {
  const OriginalFolder original(folder);
  return std::ranges::all_of(paths, [&](const std::string& path) { return original.owns(path); });
}

struct OwnedCase {
  const char* name;
  std::string folder;
  std::string path;
  bool isOwned;
};

class OwnedPaths : public testing::TestWithParam<OwnedCase> {};

TEST_P(OwnedPaths, areTheFoldersOwnAndThoseBelow) {
  EXPECT_EQ(OriginalFolder(GetParam().folder).owns(GetParam().path), GetParam().isOwned);
}

INSTANTIATE_TEST_SUITE_P(
    Table, OwnedPaths,
    testing::Values(OwnedCase{"itself", "/a/b", "/a/b", true},
                    OwnedCase{"itselfInOtherNormalForm", "/a/\u00e9", "/a/e\u0301", true},
                    OwnedCase{"below", "/a/b", "/a/b/c", true},
                    OwnedCase{"farBelow", "/a/b", "/a/b/c/d/e", true},
                    OwnedCase{"belowInOtherNormalForm", "/a/e\u0301", "/a/\u00e9/c", true},
                    OwnedCase{"belowTheRoot", "/", "/a", true},
                    OwnedCase{"rootItself", "/", "/", true},
                    OwnedCase{"sibling", "/a/b", "/a/bc", false},
                    OwnedCase{"parent", "/a/b", "/a", false},
                    OwnedCase{"otherLetterCase", "/a/b", "/a/B/c", false},
                    OwnedCase{"markOnTheFoldersName", "/a/e", "/a/e\u0301/c", false},
                    OwnedCase{"markOnTheSeparator", "/a/b", "/a/b/\u0301c", false},
                    OwnedCase{"markOnTheRoot", "/", "/\u0301c", false},
                    OwnedCase{"joinerOnTheSeparator", "/a/b", "/a/b/\u200dc", false},
                    OwnedCase{"lineBreaksInNames", "/a/\r", "/a/\r/\n", true},
                    OwnedCase{"lineFeedBehindACarriageReturn", "/a/\r", "/a/\r\n/c", false}),
    RowName());

struct CommonCase {
  const char* name;
  std::string folder;
  Paths paths;
  /// What is said of them. Where it is "below", all of them are.
  bool areBelow;
};

class CommonFolders : public testing::TestWithParam<CommonCase> {};

TEST_P(CommonFolders, tellWhetherAllPathsAreBelow) {
  EXPECT_EQ(areBelow(GetParam().paths, GetParam().folder), GetParam().areBelow);
  EXPECT_TRUE(!GetParam().areBelow || areOwned(GetParam().paths, GetParam().folder));
}

TEST_P(CommonFolders, tellItInAnyOrder) {
  Paths paths = GetParam().paths;
  std::ranges::sort(paths);
  do {
    EXPECT_TRUE(!areBelow(paths, GetParam().folder) || areOwned(paths, GetParam().folder));
    if (GetParam().areBelow) {
      EXPECT_TRUE(areBelow(paths, GetParam().folder));
    }
  } while (std::ranges::next_permutation(paths).found);
}

INSTANTIATE_TEST_SUITE_P(
    Table, CommonFolders,
    testing::Values(
        CommonCase{"none", "/a/b", {}, true}, CommonCase{"one", "/a/b", {"/a/b/c"}, true},
        CommonCase{"siblings", "/a/b", {"/a/b/c", "/a/b/d"}, true},
        CommonCase{"folderAndItsContent", "/a/b", {"/a/b/c", "/a/b/c/d", "/a/b/c/e"}, true},
        CommonCase{"contentAndItsFolder", "/a/b", {"/a/b/c/d/e", "/a/b/c/d", "/a/b/c"}, true},
        CommonCase{"namesThatBeginAlike", "/a/b", {"/a/b/cd", "/a/b/ce/f", "/a/b/c"}, true},
        CommonCase{"belowTheRoot", "/", {"/a", "/b/c", "/d"}, true},
        CommonCase{"oneBelowTheRoot", "/", {"/a/b/c"}, true},
        CommonCase{"rootItself", "/", {"/", "/a"}, true},
        CommonCase{"nonASCIINames", "/a/\u00e9", {"/a/\u00e9/\u65e5", "/a/\u00e9/\u672c"}, true},
        CommonCase{"namesOfTheSameFirstBytes", "/a", {"/a/\u00e8", "/a/\u00e9"}, true},
        CommonCase{"folderInOtherNormalForm", "/a/\u00e9", {"/a/e\u0301/x", "/a/e\u0301/y"}, true},
        CommonCase{"marksInsideOfNames", "/a", {"/a/e\u0301", "/a/e\u0300/x"}, true},
        CommonCase{"lineBreaksInNames", "/a/\r", {"/a/\r/\n", "/a/\r/\r\n/c"}, true},
        CommonCase{"manyFoldersUp", "/a", {"/a/b/c/d/e", "/a/b/c/x", "/a/y"}, true},
        CommonCase{"elsewhere", "/a/b", {"/a/c/d"}, false},
        CommonCase{"oneElsewhere", "/a/b", {"/a/b/c", "/a/b/d", "/a/c"}, false},
        CommonCase{"siblingOfTheFolder", "/a/b", {"/a/b/c", "/a/bc/d"}, false},
        CommonCase{"siblingAlone", "/a/b", {"/a/bc/d"}, false},
        CommonCase{"otherRoot", "/a", {"/a/b", "/b/b"}, false},
        CommonCase{"folderItself", "/a/b", {"/a/b"}, false},
        CommonCase{"folderItselfAmongOthers", "/a/b", {"/a/b/c", "/a/b"}, false},
        CommonCase{"bothNormalForms", "/\u00e9", {"/\u00e9/x", "/e\u0301/x"}, false},
        CommonCase{"markOnTheSeparator", "/a/b", {"/a/b/\u0301c"}, false},
        CommonCase{"markOnALaterSeparator", "/a/b", {"/a/b/c", "/a/b/\u0301c"}, false},
        CommonCase{"markOnAnEarlierSeparator", "/a/b", {"/a/b/\u0301c/d", "/a/b/c"}, false},
        CommonCase{"markOnASeparatorFarBelow", "/a/b", {"/a/b/c/\u0301d", "/a/b/c/x"}, false},
        CommonCase{"markOnAnInnerSeparator", "/a", {"/a/x/\u0301b/c", "/a/x/\u0301b/d"}, true},
        CommonCase{"markOnTheSeparatorOfAll", "/a", {"/a/\u0301b/c", "/a/\u0301b/d"}, false},
        CommonCase{"otherMarksOnOneSeparator", "/a", {"/a/x/\u0301b", "/a/x/\u0300b"}, false},
        CommonCase{"markBehindTheRoot", "/", {"/\u0301b", "/a"}, false},
        CommonCase{"joinerOnTheSeparator", "/a/b", {"/a/b/c", "/a/b/\u200dc"}, false},
        CommonCase{"notUTF8", "/a/b", {"/a/b/\xFF", "/a/b/\xFE"}, true}),
    RowName());

TEST(CommonFolderTest, forgetsWhatWasThere) {
  CommonFolder common;
  EXPECT_TRUE(common.add("/a/b/c"));
  EXPECT_FALSE(common.isBelow(OriginalFolder("/x")));
  common.clear();
  EXPECT_TRUE(common.isBelow(OriginalFolder("/x")));
  EXPECT_TRUE(common.add("/x/y"));
  EXPECT_TRUE(common.isBelow(OriginalFolder("/x")));
}

/// A path of a few pieces that are alike, so that many have much in common.
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

TEST(CommonFolderTest, saysBelowOnlyWhereAllAreOwned) {
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

TEST(CommonFolderTest, saysSoOfAllOrdinaryPaths) {
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
}  // namespace velmora

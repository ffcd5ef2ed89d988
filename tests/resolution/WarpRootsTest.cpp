#include "platform/posix/PosixPathStandardizer.h"
#include "resolution/WarpRoots.h"
#include "tests/support/AnsweredCases.h"
#include "tests/support/Bytes.h"
#include "text/Characters.h"

#include <gtest/gtest.h>

#include <optional>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace velmora {
namespace {

using Paths = std::vector<Text>;

const PosixPathStandardizer standardizer;

WarpRoots rootsAt(const Paths& paths) {
  std::vector<StandardizedPath> roots;
  for (const Text& path : paths) {
    roots.push_back(standardized(path, standardizer));
  }
  return WarpRoots(roots);
}

std::optional<Text> rootAround(const Text& item, const WarpRoots& roots) {
  return roots.enclosingWarpRoot(standardized(item, standardizer));
}

TEST(WarpRoots, areStandardisedAbsolutePathsInTheirFirstSpelling) {
  struct Row {
    const char* name;
    Paths paths;
    Paths roots;
    Paths others;
  };
  const Row rows[] = {{"none", {}, {}, {"/"}},
                      {"nested", {"/a", "/a/b/c", "/a/b"}, {"/a/b/c", "/a/b", "/a"}, {"/"}},
                      {"standardised", {"/a/./b/", "//c"}, {"/a/b", "/c"}, {"/a"}},
                      {"unique", {"/a", "/a/", "/x/../a"}, {"/a"}, {"/x"}},
                      {"firstSpellingOfEquals", {"/e\u0301", "/\u00e9"}, {"/e\u0301"}, {"/e"}},
                      {"relativeLeftOut", {"a", "", ".", "/b", "../c"}, {"/b"}, {"/a", "/c", "/"}},
                      {"markOnTheFirstSlash", {"/\u0301a", "/b"}, {"/b"}, {"/a"}},
                      {"unknownUserLeftOut", {"~no such user/a"}, {}, {"/a", "/"}},
                      {"root", {"/", "/a"}, {"/a", "/"}, {}}};
  for (const Row& row : rows) {
    const WarpRoots roots = rootsAt(row.paths);
    for (const Text& root : row.roots) {
      EXPECT_EQ(rootAround(root, roots).value_or("none").utf8(), root.utf8()) << row.name;
    }
    for (const Text& other : row.others) {
      EXPECT_EQ(rootAround(other, roots), std::nullopt) << row.name;
    }
  }
}

TEST(WarpRoots, agreeWithTheAnsweredCases) {
  const std::vector<AnsweredCase> cases = readAnsweredCases("extension/roots.jsonl");
  ASSERT_FALSE(cases.empty());
  for (const AnsweredCase& answered : cases) {
    const WarpRoots roots = rootsAt(Paths(answered.paths.begin(), answered.paths.end()));
    for (const std::string& root : answered.expect<std::vector<std::string>>()) {
      EXPECT_EQ(rootAround(root, roots).value_or("none").utf8(), root) << answered.name;
    }
  }
}

TEST(EnclosingWarpRoot, isTheItemOrItsInnermostEnclosingRoot) {
  struct Row {
    const char* name;
    Paths roots;
    const char* item;
    std::optional<Text> enclosing;
  };
  const Row rows[] = {{"noRoots", {}, "/a", std::nullopt},
                      {"itself", {"/a/b"}, "/a/b", "/a/b"},
                      {"inside", {"/a/b"}, "/a/b/c", "/a/b"},
                      {"deepInside", {"/a"}, "/a/b/c/d/e", "/a"},
                      {"parent", {"/a/b"}, "/a", std::nullopt},
                      {"siblingWithSamePrefix", {"/a/b"}, "/a/bc", std::nullopt},
                      {"innermostWins", {"/a", "/a/b"}, "/a/b/c", "/a/b"},
                      {"innermostWinsInAnyOrder", {"/a/b", "/a"}, "/a/b/c", "/a/b"},
                      {"everythingIsInTheRoot", {"/"}, "/x/y", "/"},
                      {"theRootIsInTheRoot", {"/"}, "/", "/"},
                      {"theRootIsInNothingElse", {"/a"}, "/", std::nullopt},
                      {"trailingSlash", {"/a"}, "/a/b/", "/a"},
                      {"dotDotOut", {"/a"}, "/a/../b", std::nullopt},
                      {"dotDotIn", {"/a"}, "/b/../a/c", "/a"},
                      {"relative", {"/", "/a"}, "a/b", std::nullopt},
                      {"empty", {"/"}, "", std::nullopt},
                      {"otherNormalForm", {"/caf\u00e9"}, "/cafe\u0301/x", "/caf\u00e9"},
                      {"otherNormalFormBack", {"/cafe\u0301"}, "/caf\u00e9/x", "/cafe\u0301"},
                      {"letterCase", {"/a"}, "/A/b", std::nullopt},
                      {"accentAfterTheRoot", {"/e"}, "/e\u0301/x", std::nullopt},
                      {"markOnTheSlash", {"/a"}, "/a/\u0301b", std::nullopt},
                      {"markOnALaterSlash", {"/a"}, "/a/b/\u0301c", "/a"},
                      {"joinerOnTheSlash", {"/a"}, "/a/\u200db", std::nullopt},
                      {"prependedToTheSlash", {"/a\u0600"}, "/a\u0600/b", "/a\u0600"},
                      {"hangul", {"/\u1112\u1161\u11ab"}, "/\ud55c/x", "/\u1112\u1161\u11ab"}};
  for (const Row& row : rows) {
    EXPECT_EQ(rootAround(row.item, rootsAt(row.roots)), row.enclosing) << row.name;
  }
}

TEST(EnclosingWarpRoot, hasTheFirstSpellingOfEqualRoots) {
  const Paths spellings = {"/e\u0301\u0323", "/\u1eb9\u0301", "/e\u0323\u0301"};
  for (const Text& first : spellings) {
    Paths paths = {"/e", first};
    paths.insert(paths.end(), spellings.begin(), spellings.end());
    const WarpRoots roots = rootsAt(paths);
    for (const Text& item : spellings) {
      const std::optional<Text> root = rootAround(item.utf8() + "/x", roots);
      ASSERT_TRUE(root.has_value());
      EXPECT_EQ(root->utf8(), first.utf8());
    }
  }
}

TEST(EnclosingWarpRoot, agreesWithTheAnsweredCases) {
  const std::vector<AnsweredCase> cases = readAnsweredCases("extension/enclosing.jsonl");
  ASSERT_FALSE(cases.empty());
  for (const AnsweredCase& answered : cases) {
    const WarpRoots roots = rootsAt(Paths(answered.paths.begin(), answered.paths.end()));
    EXPECT_EQ(rootAround(answered.input, roots), Text(answered.expect<std::string>()))
        << answered.name;
  }
}

/// The rule as documented: the matching root with the most characters.
std::optional<Text> enclosingRootBySearch(const Text& item, const Paths& paths) {
  const Text path = standardizer.standardizedPath(item);
  std::optional<Text> longest;
  for (const Text& given : paths) {
    const Text root = standardizer.standardizedPath(given);
    const bool matches =
        path == root || root == Text("/") || hasCharacterPrefix(path, root.utf8() + "/");
    if (hasCharacterPrefix(path, "/") && hasCharacterPrefix(root, "/") && matches &&
        (!longest.has_value() || characterCount(root) > characterCount(*longest))) {
      longest = root;
    }
  }
  return longest;
}

TEST(EnclosingWarpRoot, agreesWithASearchOfAllRoots) {
  const std::vector<std::string> names = {"a",       "ab",     "e",       "e\u0301", "\u00e9",
                                          "\u0301b", "\u0600", "x\u0600", "日",      "\u200d"};
  std::mt19937 random(20260301);
  const auto randomPath = [&](unsigned maximalDepth) {
    std::string path;
    for (auto depth = random() % (maximalDepth + 1); depth > 0; --depth) {
      path += "/" + names[random() % names.size()];
    }
    return Text(path.empty() ? "/" : path);
  };
  int enclosedCount = 0;
  for (int round = 0; round < 3000; ++round) {
    Paths paths;
    for (auto count = random() % 6; count > 0; --count) {
      paths.push_back(randomPath(3));
    }
    const Text item = randomPath(5);
    const std::optional<Text> expected = enclosingRootBySearch(item, paths);
    ASSERT_EQ(rootAround(item, rootsAt(paths)), expected) << item.utf8();
    enclosedCount += expected.has_value() ? 1 : 0;
  }
  EXPECT_GT(enclosedCount, 300);
}

TEST(StandardizedPath, isMadeByThePlatform) {
  EXPECT_EQ(standardized("/a/../b/", PosixPathStandardizer()), StandardizedPath{"/b"});
  EXPECT_EQ(standardized("/caf\u00e9", PosixPathStandardizer()), StandardizedPath{"/cafe\u0301"});
}

TEST(PathAndAncestors, goFromTheItemToTheRoot) {
  const std::pair<const char*, Paths> rows[] = {{"", {}},
                                                {"a/b", {}},
                                                {"/\u0301a", {}},
                                                {"/", {"/"}},
                                                {"/a", {"/a", "/"}},
                                                {"/a/b/c", {"/a/b/c", "/a/b", "/a", "/"}},
                                                {"/a/\u0301b", {"/a/\u0301b", "/"}},
                                                {"/a\u0600/b", {"/a\u0600/b", "/a\u0600", "/"}}};
  for (const auto& [path, folders] : rows) {
    EXPECT_EQ(pathAndAncestors({path}), folders) << path;
  }
}

}  // namespace
}  // namespace velmora

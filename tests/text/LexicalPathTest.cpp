#include "tests/support/AnsweredCases.h"
#include "text/LexicalPath.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace velmora {
namespace {

struct PathCase {
  std::string_view name;
  std::string_view path;
  std::string_view standardized;
};

constexpr PathCase pathCases[] = {
    {"root", "/", "/"},
    {"leadingSlashes", "//a", "/a"},
    {"innerSlashes", "/Users//a", "/Users/a"},
    {"dot", "/a/./b", "/a/b"},
    {"dotAtEnd", "/a/.", "/a"},
    {"onlyDot", "/.", "/"},
    {"up", "/a/../b", "/b"},
    {"upToRoot", "/a/..", "/"},
    {"upFromRoot", "/..", "/"},
    {"upAcrossSlashes", "/a/b//../c", "/a/c"},
    {"hiddenName", "/a/.hidden/..b/c..", "/a/.hidden/..b/c.."},
    {"backslash", "/a\\..\\b", "/a\\..\\b"},
    {"nul", {"/a\0/..", 6}, "/"},
    {"notUTF8", "/\xFF/./\xFE", "/\xFF/\xFE"},
    // A path is resolved by bytes: the mark after the "/" begins a name.
    {"markAfterSlash", "/a//\u0301b", "/a/\u0301b"},
    {"upFromMarkedName", "/a/\u0301b/..", "/a"},
    {"dotWithMark", "/a/.\u0301/b", "/a/.\u0301/b"},
    {"empty", "", ""},
    {"relativeDot", ".", "."},
    {"dotSlash", "./", "."},
    {"relative", "a", "a"},
    {"relativeTrailingSlash", "a/", "a"},
    {"leadingDot", "./a//b", "a/b"},
    {"toNothing", "a/..", "."},
    {"throughNothing", "a/../b", "b"},
    {"relativeUp", "..", ".."},
    {"upTwice", "../..", "../.."},
    {"upThenDown", "../a", "../a"},
    {"upAndBack", "../a/..", ".."},
    {"upBeyondBeginning", "a/../../b", "../b"},
    {"upFromUp", "../a/../..", "../.."},
    {"upFromOneName", "a/b/..", "a"},
    {"tilde", "~/x", "~/x"},
};

void expectStandardized(std::string_view path, std::string_view standardized) {
  EXPECT_EQ(lexicallyStandardized(path), standardized);
  EXPECT_EQ(lexicallyStandardized(standardized), standardized);
}

TEST(LexicalPathTest, standardizesAbsolutePathsAndKeepsRelativeOnesRelative) {
  for (const PathCase& row : pathCases) {
    SCOPED_TRACE(row.name);
    expectStandardized(row.path, row.standardized);
  }
  const std::vector<AnsweredCase> cases = readAnsweredCases("text/standardizedFileURL.jsonl");
  EXPECT_EQ(cases.size(), 37U);
  for (const AnsweredCase& row : cases) {
    SCOPED_TRACE(row.name);
    expectStandardized(row.input, row.expect<std::string>());
  }
}

TEST(LexicalPathTest, longChainsOfUpAreNotQuadratic) {
  constexpr int steps = 300'000;
  std::string up;
  std::string downAndUp;
  for (int step = 0; step < steps; ++step) {
    up += "/..";
    downAndUp.insert(downAndUp.end(), {'/', 'n', 'a', 'm', 'e'});
  }
  EXPECT_EQ(lexicallyStandardized(up), "/");
  EXPECT_EQ(lexicallyStandardized("a" + up), up.substr(4));
  EXPECT_EQ(lexicallyStandardized(downAndUp + up + "/c"), "/c");
}

TEST(LexicalPathTest, appendsAComponent) {
  EXPECT_EQ(appendingPathComponent("/a", "b"), "/a/b");
  EXPECT_EQ(appendingPathComponent("/", "b"), "/b");
  EXPECT_EQ(appendingPathComponent("/a/", "b"), "/a/b");
  EXPECT_EQ(appendingPathComponent("", "b"), "b");
  EXPECT_EQ(appendingPathComponent("/a/..", "./b"), "/a/.././b");
}

}  // namespace
}  // namespace velmora

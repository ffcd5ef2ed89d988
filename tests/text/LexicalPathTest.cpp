#include "tests/support/AnsweredCases.h"
#include "text/LexicalPath.h"

#include <gtest/gtest.h>

namespace velmora {
namespace {

struct PathCase {
  std::string_view name;
  std::string_view path;
  std::string_view standardized;
};

constexpr PathCase absoluteCases[] = {
    {.name = "root", .path = "/", .standardized = "/"},
    {.name = "twoSlashes", .path = "//", .standardized = "/"},
    {.name = "leadingSlashes", .path = "//a", .standardized = "/a"},
    {.name = "innerSlashes", .path = "/Users//a", .standardized = "/Users/a"},
    {.name = "trailingSlash", .path = "/a/", .standardized = "/a"},
    {.name = "dot", .path = "/a/./b", .standardized = "/a/b"},
    {.name = "dotAtEnd", .path = "/a/.", .standardized = "/a"},
    {.name = "dotAndSlashes", .path = "/a/.//b", .standardized = "/a/b"},
    {.name = "onlyDot", .path = "/.", .standardized = "/"},
    {.name = "up", .path = "/a/../b", .standardized = "/b"},
    {.name = "upToRoot", .path = "/a/..", .standardized = "/"},
    {.name = "upFromRoot", .path = "/..", .standardized = "/"},
    {.name = "upFromRootThenDown", .path = "/../a", .standardized = "/a"},
    {.name = "upBeyondRoot", .path = "/a/b/../../../c", .standardized = "/c"},
    {.name = "upAcrossSlashes", .path = "/a/b//../c", .standardized = "/a/c"},
    {.name = "threeDots", .path = "/a/...", .standardized = "/a/..."},
    {.name = "hiddenName", .path = "/a/.hidden/..b/c..", .standardized = "/a/.hidden/..b/c.."},
    {.name = "tilde", .path = "/~/x", .standardized = "/~/x"},
    {.name = "privateFolder", .path = "/private/tmp", .standardized = "/private/tmp"},
    {.name = "backslash", .path = "/a\\..\\b", .standardized = "/a\\..\\b"},
    {.name = "nul", .path = {"/a\0/..", 6}, .standardized = "/"},
    {.name = "notUTF8", .path = "/\xFF/./\xFE", .standardized = "/\xFF/\xFE"},
    // A path is resolved by bytes: the mark after the "/" begins a name.
    {.name = "markAfterSlash", .path = "/a//\u0301b", .standardized = "/a/\u0301b"},
    {.name = "upFromMarkedName", .path = "/a/\u0301b/..", .standardized = "/a"},
    {.name = "dotWithMark", .path = "/a/.\u0301/b", .standardized = "/a/.\u0301/b"},
};

constexpr PathCase relativeCases[] = {
    {.name = "empty", .path = "", .standardized = ""},
    {.name = "dot", .path = ".", .standardized = "."},
    {.name = "dotSlash", .path = "./", .standardized = "."},
    {.name = "plain", .path = "a", .standardized = "a"},
    {.name = "trailingSlash", .path = "a/", .standardized = "a"},
    {.name = "leadingDot", .path = "./a//b", .standardized = "a/b"},
    {.name = "toNothing", .path = "a/..", .standardized = "."},
    {.name = "throughNothing", .path = "a/../b", .standardized = "b"},
    {.name = "up", .path = "..", .standardized = ".."},
    {.name = "upTwice", .path = "../..", .standardized = "../.."},
    {.name = "upThenDown", .path = "../a", .standardized = "../a"},
    {.name = "upAndBack", .path = "../a/..", .standardized = ".."},
    {.name = "upBeyondBeginning", .path = "a/../../b", .standardized = "../b"},
    {.name = "upFromUp", .path = "../a/../..", .standardized = "../.."},
    {.name = "upFromOneName", .path = "a/b/..", .standardized = "a"},
    {.name = "tilde", .path = "~/x", .standardized = "~/x"},
};

void expectStandardized(const PathCase& row) {
  SCOPED_TRACE(row.name);
  EXPECT_EQ(lexicallyStandardized(row.path), row.standardized);
  EXPECT_EQ(lexicallyStandardized(row.standardized), row.standardized);
}

TEST(LexicalPathTest, standardizesAbsolutePaths) {
  for (const PathCase& row : absoluteCases) {
    expectStandardized(row);
  }
}

TEST(LexicalPathTest, keepsRelativePathsRelative) {
  for (const PathCase& row : relativeCases) {
    expectStandardized(row);
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

TEST(LexicalPathTest, answersTheStandardizationCases) {
  const std::vector<AnsweredCase> cases = readAnsweredCases("text/standardizedFileURL.jsonl");
  EXPECT_EQ(cases.size(), 37U);
  for (const AnsweredCase& row : cases) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(lexicallyStandardized(row.input), row.expect<std::string>());
  }
}

struct AppendCase {
  std::string_view name;
  std::string_view directory;
  std::string_view component;
  std::string_view path;
};

constexpr AppendCase appendCases[] = {
    {.name = "folder", .directory = "/a", .component = "b", .path = "/a/b"},
    {.name = "root", .directory = "/", .component = "b", .path = "/b"},
    {.name = "trailingSlash", .directory = "/a/", .component = "b", .path = "/a/b"},
    {.name = "emptyDirectory", .directory = "", .component = "b", .path = "b"},
    {.name = "notStandardized", .directory = "/a/..", .component = "./b", .path = "/a/.././b"},
};

TEST(LexicalPathTest, appendsAComponent) {
  for (const AppendCase& row : appendCases) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(appendingPathComponent(row.directory, row.component), row.path);
  }
}

}  // namespace
}  // namespace velmora

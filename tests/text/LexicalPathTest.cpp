#include "tests/support/AnsweredCases.h"
#include "tests/text/Answers.h"
#include "text/LexicalPath.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace velmora::internal {
namespace {

struct PathCase {
  std::string_view path;
  std::string_view standardized;
};

constexpr PathCase pathCases[] = {
    {"/", "/"},
    {"//a", "/a"},
    {"/Users//a", "/Users/a"},
    {"/a/./b", "/a/b"},
    {"/a/.", "/a"},
    {"/.", "/"},
    {"/a/../b", "/b"},
    {"/a/..", "/"},
    {"/..", "/"},
    {"/a/b//../c", "/a/c"},
    {"/a/.hidden/..b/c..", "/a/.hidden/..b/c.."},
    {"/a\\..\\b", "/a\\..\\b"},
    {{"/a\0/..", 6}, "/"},
    {"/\xFF/./\xFE", "/\xFF/\xFE"},
    // The path is resolved by bytes, so a combining mark after "/" begins a name.
    {"/a//\u0301b", "/a/\u0301b"},
    {"/a/\u0301b/..", "/a"},
    {"/a/.\u0301/b", "/a/.\u0301/b"},
    {"", ""},
    {".", "."},
    {"./", "."},
    {"a", "a"},
    {"a/", "a"},
    {"./a//b", "a/b"},
    {"a/..", "."},
    {"a/../b", "b"},
    {"..", ".."},
    {"../..", "../.."},
    {"../a", "../a"},
    {"../a/..", ".."},
    {"a/../../b", "../b"},
    {"../a/../..", "../.."},
    {"a/b/..", "a"},
    {"~/x", "~/x"},
};

TEST(LexicalPathTest, standardizesAbsolutePathsAndKeepsRelativeOnesRelative) {
  for (const PathCase& row : pathCases) {
    SCOPED_TRACE(row.path);
    EXPECT_EQ(lexicallyStandardized(row.path), row.standardized);
    EXPECT_EQ(lexicallyStandardized(row.standardized), row.standardized);
  }
  expectAnswers<std::string>("text/standardizedFileURL.jsonl", 37, [](const AnsweredCase& row) {
    return lexicallyStandardized(row.input);
  });
}

TEST(LexicalPathTest, longChainsOfParentsAreNotQuadratic) {
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
}  // namespace velmora::internal

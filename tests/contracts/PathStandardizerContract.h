// The contract of every PathStandardizer. Instantiated with an adapter for each implementation.
#pragma once

#include "platform/PathStandardizer.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

namespace velmora {

/// An adapter has `const PathStandardizer& paths()`.
template <class Adapter>
class PathStandardizerContract : public testing::Test {
 protected:
  std::string fileURLPath(const Text& path) {
    return adapter.paths().standardizedFileURLPath(path).utf8();
  }
  std::vector<Text> places(const Text& path) { return adapter.paths().pathsStandardizedTo(path); }
  std::string path(const Text& path) { return adapter.paths().standardizedPath(path).utf8(); }

  Adapter adapter;
};

TYPED_TEST_SUITE_P(PathStandardizerContract);

TYPED_TEST_P(PathStandardizerContract, standardizesAbsolutePaths) {
  const std::pair<std::string, std::string> rows[] = {
      {"/", "/"},           {"/a b/c", "/a b/c"},   {"/a/", "/a"},
      {"/a//b", "/a/b"},    {"//a", "/a"},          {"/a/./b/.", "/a/b"},
      {"/a/../c", "/c"},    {"/../c", "/c"},        {"/復元/e\u0301", "/復元/e\u0301"},
      {"/~/x", "/~/x"},     {"/100%25", "/100%25"}, {"/a?b#c", "/a?b#c"},
      {"/a/b/../c", "/a/c"}};
  for (const auto& [given, standardized] : rows) {
    EXPECT_EQ(this->fileURLPath(given), standardized);
    EXPECT_EQ(this->path(given), standardized);
  }
}

TYPED_TEST_P(PathStandardizerContract, leavesStandardizedPathsUnchanged) {
  for (const char* given : {"/", "/a/../b//c/.", "/private/tmp/a", "/.."}) {
    const std::string once = this->path(given);
    EXPECT_EQ(this->path(once), once);
    EXPECT_EQ(this->fileURLPath(once), once);
    EXPECT_EQ(this->fileURLPath(given), once);
  }
}

TYPED_TEST_P(PathStandardizerContract, resolvesRelativePathsOfURLsInTheWorkingDirectory) {
  const std::string workingDirectory = this->path(std::filesystem::current_path().string());
  EXPECT_EQ(this->fileURLPath("a/../b/"), workingDirectory + "/b");
  EXPECT_EQ(this->fileURLPath("."), workingDirectory);
  EXPECT_EQ(this->fileURLPath(""), workingDirectory);
}

TYPED_TEST_P(PathStandardizerContract, leavesRelativePathsRelative) {
  EXPECT_EQ(this->path("a/./b"), "a/b");
  EXPECT_EQ(this->path(""), "");
}

TYPED_TEST_P(PathStandardizerContract, expandsALeadingTildeOfAKnownUser) {
  const std::string home = this->path("~");
  EXPECT_TRUE(home.starts_with('/')) << home;
  EXPECT_EQ(this->path("~/x"), this->path(home + "/x"));
  EXPECT_EQ(this->path("~no such user/x"), "~no such user/x");
}

TYPED_TEST_P(PathStandardizerContract, listsThePathsThatStandardizeToAPath) {
  const std::vector<Text> places = this->places("/a/b");
  ASSERT_FALSE(places.empty());
  EXPECT_EQ(places.front().utf8(), "/a/b");
}

REGISTER_TYPED_TEST_SUITE_P(PathStandardizerContract, standardizesAbsolutePaths,
                            leavesStandardizedPathsUnchanged,
                            resolvesRelativePathsOfURLsInTheWorkingDirectory,
                            leavesRelativePathsRelative, expandsALeadingTildeOfAKnownUser,
                            listsThePathsThatStandardizeToAPath);

}  // namespace velmora

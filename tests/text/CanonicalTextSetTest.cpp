#include "tests/text/RandomTexts.h"
#include "tests/text/TextPairs.h"
#include "text/CanonicalTextSet.h"
#include "text/Text.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <limits>
#include <stdexcept>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace velmora::internal {
namespace {

TEST(CanonicalTextSetTest, holdsEachTextOnce) {
  CanonicalTextSet set;
  EXPECT_TRUE(set.empty());
  EXPECT_FALSE(set.contains("/a"));
  EXPECT_TRUE(set.insert("/a"));
  EXPECT_TRUE(set.insert("/b"));
  EXPECT_FALSE(set.insert("/a"));
  EXPECT_TRUE(set.insert("/A"));
  EXPECT_EQ(set.size(), 3U);
  EXPECT_TRUE(set.contains("/b"));
  EXPECT_FALSE(set.contains("/B"));
  EXPECT_FALSE(set.contains("/"));
}

TEST(CanonicalTextSetTest, equivalentTextsAreOneElement) {
  for (const TextPair& row : textPairs) {
    SCOPED_TRACE(row.name);
    CanonicalTextSet set;
    EXPECT_TRUE(set.insert(row.a));
    EXPECT_EQ(set.contains(row.b), row.areEqual);
    EXPECT_EQ(set.insert(row.b), !row.areEqual);
    EXPECT_EQ(set.size(), row.areEqual ? 1U : 2U);
  }
}

TEST(CanonicalTextSetTest, emptyTextIsAnElement) {
  CanonicalTextSet set;
  EXPECT_FALSE(set.contains(""));
  EXPECT_TRUE(set.insert(std::string_view()));
  EXPECT_FALSE(set.insert(""));
  EXPECT_TRUE(set.insert({"\0", 1}));
  EXPECT_FALSE(set.insert({"\0", 1}));
  EXPECT_EQ(set.size(), 2U);
}

// Paths of one folder, which differ in a few characters only.
std::vector<std::string> numberedPaths(std::size_t count) {
  std::vector<std::string> paths;
  for (std::size_t number = 0; number < count; ++number) {
    std::string digits = std::to_string(number);
    paths.push_back("/Users/a/Documents/" + std::string(7 - digits.size(), '0') + digits);
  }
  return paths;
}

void expectAllNew(CanonicalTextSet& set, const std::vector<std::string>& paths) {
  for (const std::string& path : paths) {
    ASSERT_TRUE(set.insert(path)) << path;
  }
  EXPECT_EQ(set.size(), paths.size());
}

void expectAllThere(CanonicalTextSet& set, const std::vector<std::string>& paths) {
  for (const std::string& path : paths) {
    ASSERT_TRUE(set.contains(path)) << path;
    ASSERT_FALSE(set.insert(std::string(path))) << path;
  }
  EXPECT_EQ(set.size(), paths.size());
}

TEST(CanonicalTextSetTest, keepsItsTextsWhenItGrows) {
  const std::vector<std::string> paths = numberedPaths(200);
  CanonicalTextSet set;
  for (std::size_t count = 0; count < paths.size(); ++count) {
    EXPECT_TRUE(set.insert(paths[count]));
    for (std::size_t number = 0; number < paths.size(); ++number) {
      ASSERT_EQ(set.contains(paths[number]), number <= count) << number << " of " << count;
    }
  }
}

TEST(CanonicalTextSetTest, holdsManyTextsOfOneLength) {
  const std::vector<std::string> paths = numberedPaths(65'536);
  CanonicalTextSet set;
  expectAllNew(set, paths);
  expectAllThere(set, paths);
  EXPECT_FALSE(set.contains("/Users/a/Documents/0065536"));
}

TEST(CanonicalTextSetTest, clearedSetHoldsNothing) {
  const std::vector<std::string> many = numberedPaths(5'000);
  const std::vector<std::string> few = numberedPaths(50);
  CanonicalTextSet set;
  set.clear();
  // Clearing works differently for a large table with few texts.
  for (const std::vector<std::string>* paths : {&many, &few, &few, &many}) {
    expectAllNew(set, *paths);
    expectAllThere(set, *paths);
    set.clear();
    EXPECT_TRUE(set.empty());
    for (const std::string& path : many) {
      ASSERT_FALSE(set.contains(path)) << path;
    }
  }
}

TEST(CanonicalTextSetTest, reservedRoomHoldsTexts) {
  const std::vector<std::string> paths = numberedPaths(1'000);
  CanonicalTextSet set;
  set.reserve(10);
  set.reserve(0);
  EXPECT_TRUE(set.insert(paths.front()));
  set.reserve(paths.size());
  EXPECT_FALSE(set.insert(paths.front()));
  set.reserve(1);
  for (const std::string& path : paths) {
    EXPECT_EQ(set.insert(path), &path != &paths.front());
  }
  expectAllThere(set, paths);
}

TEST(CanonicalTextSetTest, refusesToReserveTooMuch) {
  CanonicalTextSet set;
  EXPECT_TRUE(set.insert("/a"));
  EXPECT_THROW(set.reserve((std::size_t{1} << 30U) + 1), std::length_error);
  EXPECT_THROW(set.reserve(std::numeric_limits<std::size_t>::max()), std::length_error);
  EXPECT_FALSE(set.insert("/a"));
}

TEST(CanonicalTextSetTest, agreesWithASetOfTexts) {
  RandomTexts texts({"a", "e", "\u00e9", "\u0301", "\u0323", "\u1e69", "\u212a", "K", "/", "\xFF"},
                    20240303);
  std::vector<std::string> all;
  for (int count = 0; count < 20'000; ++count) {
    all.push_back(texts.next(5));
  }
  CanonicalTextSet set;
  std::unordered_set<Text> reference;
  for (const std::string& text : all) {
    ASSERT_EQ(set.contains(text), reference.contains(Text(text)));
    ASSERT_EQ(set.insert(text), reference.insert(Text(text)).second);
    ASSERT_EQ(set.size(), reference.size());
  }
}

}  // namespace
}  // namespace velmora::internal

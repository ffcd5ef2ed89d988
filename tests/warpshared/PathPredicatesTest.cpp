#include "tests/support/AnsweredCases.h"
#include "text/Characters.h"
#include "text/LexicalPath.h"
#include "text/Text.h"
#include "warpshared/PathPredicates.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

namespace velmora {
namespace {

struct PredicateCase {
  std::string_view name;
  std::string_view text;
  bool holds;
};

constexpr PredicateCase pathCases[] = {
    {.name = "root", .text = "/", .holds = true},
    {.name = "folder", .text = "/a", .holds = true},
    {.name = "longPath", .text = "/Users/a/Documents/Holiday photos/2025/a.jpg", .holds = true},
    {.name = "hiddenNames", .text = "/Users/a/.config/..b/c../...", .holds = true},
    {.name = "privateFolder", .text = "/private/tmp", .holds = true},
    {.name = "tilde", .text = "/~/a", .holds = true},
    {.name = "backslash", .text = "/a\\..\\b", .holds = true},
    {.name = "accent", .text = "/\u00e9/e\u0301", .holds = true},
    {.name = "notUTF8", .text = "/\xFF/\xFE", .holds = true},
    {.name = "empty", .text = "", .holds = false},
    {.name = "relative", .text = "Users/a", .holds = false},
    {.name = "relativeDot", .text = ".", .holds = false},
    {.name = "trailingSlash", .text = "/Users/a/", .holds = false},
    {.name = "dot", .text = "/Users/./a", .holds = false},
    {.name = "dotAtEnd", .text = "/Users/a/.", .holds = false},
    {.name = "up", .text = "/Users/a/../b", .holds = false},
    {.name = "upAtEnd", .text = "/Users/a/..", .holds = false},
    {.name = "onlyDot", .text = "/.", .holds = false},
    {.name = "onlyUp", .text = "/..", .holds = false},
    {.name = "leadingSlashes", .text = "//a", .holds = false},
    {.name = "onlySlashes", .text = "//", .holds = false},
    {.name = "innerSlashes", .text = "/Users//a", .holds = false},
    {.name = "nul", .text = {"/Users/a\0b", 10}, .holds = false},
    {.name = "nulAtEnd", .text = {"/\0", 2}, .holds = false},
    // The path begins with another character than "/".
    {.name = "markAfterRoot", .text = "/\u0301a", .holds = false},
    // The file system takes the byte for a separator all the same.
    {.name = "markAfterInnerSlashes", .text = "/a//\u0301b", .holds = false},
    {.name = "markAfterSlashAtEnd", .text = "/a/./\u0301", .holds = false},
    {.name = "slashAfterPrependedMark", .text = "/a\u0600//b", .holds = false},
};

constexpr PredicateCase keyCases[] = {
    {.name = "oneName", .text = "a", .holds = true},
    {.name = "twoNames", .text = "a/b", .holds = true},
    {.name = "hiddenName", .text = "a/.b", .holds = true},
    {.name = "hiddenFirst", .text = ".a/b", .holds = true},
    {.name = "twoDotsAndMore", .text = "..a/b../..c", .holds = true},
    {.name = "threeDots", .text = "a/...", .holds = true},
    {.name = "onlyThreeDots", .text = "...", .holds = true},
    {.name = "backslash", .text = "a\\b", .holds = true},
    {.name = "space", .text = " / ", .holds = true},
    {.name = "accent", .text = "\u00e9/e\u0301", .holds = true},
    {.name = "longKey", .text = "warp/objects/2025/03/01/0123456789abcdef.bin", .holds = true},
    {.name = "notUTF8", .text = "\xFF/\xFE", .holds = true},
    {.name = "empty", .text = "", .holds = false},
    {.name = "onlySlash", .text = "/", .holds = false},
    {.name = "absolute", .text = "/a", .holds = false},
    {.name = "trailingSlash", .text = "a/", .holds = false},
    {.name = "innerSlashes", .text = "a//b", .holds = false},
    {.name = "dotFirst", .text = "./a", .holds = false},
    {.name = "dot", .text = "a/./b", .holds = false},
    {.name = "dotAtEnd", .text = "a/.", .holds = false},
    {.name = "onlyDot", .text = ".", .holds = false},
    {.name = "upFirst", .text = "../a", .holds = false},
    {.name = "up", .text = "a/../b", .holds = false},
    {.name = "upAtEnd", .text = "a/..", .holds = false},
    {.name = "onlyUp", .text = "..", .holds = false},
    {.name = "nul", .text = {"a\0b", 3}, .holds = false},
    {.name = "onlyNUL", .text = {"\0", 1}, .holds = false},
    {.name = "nulInMarkedKey", .text = {"a//\u0301\0", 6}, .holds = false},
    {.name = "notUTF8AndUp", .text = "\xFF/../a", .holds = false},
    // A "/" that is part of a larger character neither begins a key nor separates.
    {.name = "markAfterFirstSlash", .text = "/\u0301a", .holds = true},
    {.name = "markAfterInnerSlashes", .text = "a//\u0301b", .holds = true},
    {.name = "markAfterSlashAfterDot", .text = "./\u0301", .holds = true},
    {.name = "markAfterSlashAfterUp", .text = "a/../\u0301b", .holds = true},
    {.name = "prependedToLastSlash", .text = "a\u0600/", .holds = true},
    {.name = "markAfterOneSlashOnly", .text = "a/\u0301b//c", .holds = false},
};

TEST(PathPredicatesTest, canonicalPathsAreAbsoluteAndStandardized) {
  for (const PredicateCase& row : pathCases) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(isCanonicalAbsolutePath(row.text), row.holds);
  }
}

TEST(PathPredicatesTest, safeKeysAreRelativeAndMadeOfNames) {
  for (const PredicateCase& row : keyCases) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(isSafeRelativeObjectKey(row.text), row.holds);
  }
}

TEST(PathPredicatesTest, answersThePathCases) {
  const std::vector<AnsweredCase> cases = readAnsweredCases("warpshared/canonicalPath.jsonl");
  EXPECT_EQ(cases.size(), 42U);
  for (const AnsweredCase& row : cases) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(isCanonicalAbsolutePath(row.input), row.expect<bool>());
  }
}

TEST(PathPredicatesTest, answersTheKeyCases) {
  const std::vector<AnsweredCase> cases = readAnsweredCases("warpshared/objectKey.jsonl");
  EXPECT_EQ(cases.size(), 12U);
  for (const AnsweredCase& row : cases) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(isSafeRelativeObjectKey(row.input), row.expect<bool>());
  }
}

// The rules, word by word.
bool holdsNUL(std::string_view text) { return text.find('\0') != std::string_view::npos; }

bool isCanonicalByTheRules(std::string_view path) {
  return hasCharacterPrefix(path, "/") && !holdsNUL(path) &&
         canonicallyEqual(path, lexicallyStandardized(path));
}

bool isSafeByTheRules(std::string_view key) {
  return !key.empty() && !hasCharacterPrefix(key, "/") && !holdsNUL(key) &&
         std::ranges::none_of(splitAtCharacter(key, '/'), [](std::string_view component) {
           return component.empty() || canonicallyEqual(component, ".") ||
                  canonicallyEqual(component, "..");
         });
}

void expectAsTheRulesSay(std::string_view text) {
  ASSERT_EQ(isCanonicalAbsolutePath(text), isCanonicalByTheRules(text))
      << testing::PrintToString(text);
  ASSERT_EQ(isSafeRelativeObjectKey(text), isSafeByTheRules(text)) << testing::PrintToString(text);
}

// Whatever is special at every position of texts of every length up to some words: each lies in
// every part of the bytes that are looked at together, and across their ends.
TEST(PathPredicatesTest, answersAreTheRulesAtEveryPosition) {
  constexpr std::string_view inserted[] = {
      "//", "/./",     "/../", "/.",       "/..",    "/",    ".",        "..", "/.a", "/..a",
      "/.", {"\0", 1}, "/...", "/\u0301/", "//\xFF", "\x01", {"/\0", 2}, "0",  "/0/", "\u0600//"};
  for (std::size_t length = 0; length < 45; ++length) {
    for (std::size_t position = 0; position <= length; ++position) {
      for (const std::string_view part : inserted) {
        std::string text(length, 'a');
        text.insert(position, part);
        expectAsTheRulesSay(text);
        expectAsTheRulesSay("/" + text);
      }
    }
  }
}

// For sanitizers to see: the memory ends with the text.
TEST(PathPredicatesTest, readNothingBeyondTheEnd) {
  for (std::size_t length = 0; length < 100; ++length) {
    std::vector<char> bytes(length, 'a');
    for (std::size_t position = 0; position < length; position += 7) {
      bytes[position] = '/';
    }
    const std::string_view text(bytes.data(), bytes.size());
    expectAsTheRulesSay(text);
    expectAsTheRulesSay(text.substr(std::min<std::size_t>(length, 1)));
  }
}

class RandomPaths {
 public:
  std::string next() {
    static constexpr std::string_view parts[] = {
        "/", "/",        ".",      "..",     "a",      "name",       "0123456789", "/a/bc/",
        "/", {"\0", 1},  "\u0301", "\u00e9", "\u0600", "\U0001F600", "\xFF",       "\r\n",
        "a", "/folder/", "b",      "\u65e5", "/x",     "a name"};
    // Most often none of what is refused, or long paths would never pass.
    const std::size_t kinds = upTo(1) == 0 ? std::size(parts) : 0;
    std::string text = upTo(1) == 0 ? "/" : "";
    for (std::size_t count = upTo(30); count > 0; --count) {
      text += kinds != 0 ? parts[upTo(kinds - 1)] : ordinary[upTo(std::size(ordinary) - 1)];
    }
    return text;
  }

 private:
  static constexpr std::string_view ordinary[] = {"a", "bc/d", ".e", "f.g/h", "name", "\u00e9"};

  std::size_t upTo(std::size_t last) {
    return std::uniform_int_distribution<std::size_t>(0, last)(engine_);
  }

  std::mt19937_64 engine_{20240301};
};

TEST(PathPredicatesTest, answersAreTheRulesForAnyText) {
  RandomPaths paths;
  int canonical = 0;
  int safe = 0;
  for (int count = 0; count < 100'000; ++count) {
    const std::string path = paths.next();
    expectAsTheRulesSay(path);
    canonical += isCanonicalAbsolutePath(path) ? 1 : 0;
    safe += isSafeRelativeObjectKey(path) ? 1 : 0;
  }
  // Else the comparison would say little.
  EXPECT_GT(canonical, 5'000);
  EXPECT_GT(safe, 5'000);
}

// All texts of up to seven bytes from those that matter.
TEST(PathPredicatesTest, answersAreTheRulesForAllShortTexts) {
  constexpr std::string_view bytes = {"/.a\0\xCC\x81", 6};
  std::vector<std::string> texts = {""};
  for (int length = 0; length <= 7; ++length) {
    std::vector<std::string> longer;
    for (const std::string& text : texts) {
      expectAsTheRulesSay(text);
      if (length < 7) {
        for (const char byte : bytes) {
          longer.push_back(text + byte);
        }
      }
    }
    texts = std::move(longer);
  }
}

}  // namespace
}  // namespace velmora

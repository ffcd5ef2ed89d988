#include "text/FileURL.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <string_view>

namespace velmora {
namespace {

struct URLCase {
  std::string_view name;
  std::string_view url;
  std::optional<std::string_view> path;
};

constexpr URLCase urlCases[] = {
    {"noAuthority", "file:/a", "/a"},
    {"emptyAuthority", "file:///a", "/a"},
    {"localhost", "file://localhost/a", "/a"},
    {"localhostInAnyCase", "file://LocalHost/a", "/a"},
    {"schemeInAnyCase", "FILE:///a%20b", "/a b"},
    {"root", "file:///", "/"},
    {"rootWithoutAuthority", "file:/", "/"},
    {"notStandardized", "file:////a/../b/", "//a/../b/"},
    {"query", "file:///a?b/c", "/a"},
    {"fragment", "file:///a#b?c", "/a"},
    {"malformedQuery", "file:///a?%2", "/a"},
    {"encodedQuestionMark", "file:///a%3Fb%23c", "/a?b#c"},
    {"encodedPercent", "file:///100%25%32%35", "/100%25"},
    {"lowerCaseDigits", "file:///%c3%a9", "/\u00e9"},
    {"upperCaseDigits", "file:///%C3%A9", "/\u00e9"},
    {"highestDigits", "file:///%f0%9f%98%80%5A", "/\U0001F600Z"},
    {"rawNonASCII", "file:///\u65e5\u672c", "/\u65e5\u672c"},
    {"rawBlankAndControls", "file:///a b\n\t\"\\", "/a b\n\t\"\\"},
    {"plusIsPlus", "file:///a+b", "/a+b"},
    {"halfRawHalfEncoded", "file:///\xC3%A9", "/\u00e9"},
    {"empty", "", {}},
    {"schemeOnly", "file:", {}},
    {"schemeWithoutColon", "file", {}},
    {"emptyPath", "file://", {}},
    {"localhostWithoutPath", "file://localhost", {}},
    {"queryWithoutPath", "file://?/a", {}},
    {"relativePath", "file:a", {}},
    {"otherAuthority", "file://server/a", {}},
    {"authorityBeginningWithLocalhost", "file://localhosts/a", {}},
    {"authorityWithPort", "file://localhost:80/a", {}},
    {"authorityWithUser", "file://me@localhost/a", {}},
    {"otherScheme", "https:///a", {}},
    {"schemeBeginningWithFile", "files:///a", {}},
    {"schemeLikeFileInUnicode", "f\u0131le:///a", {}},
    {"path", "/a", {}},
    {"blankBefore", " file:///a", {}},
    {"encodedSlash", "file:///a%2Fb", {}},
    {"encodedSlashInLowerCase", "file:///a%2fb", {}},
    {"encodedFirstSlash", "file:%2Fa", {}},
    {"encodedNul", "file:///a%00", {}},
    {"rawNul", {"file:///a\0b", 11}, {}},
    {"escapeWithoutDigits", "file:///a%", {}},
    {"escapeWithOneDigit", "file:///a%2", {}},
    {"escapeCutByTheEndOfTheView", {"file:///a%20", 11}, {}},
    {"escapeCutByQuery", "file:///a%2?0", {}},
    {"escapeWithBadFirstDigit", "file:///%g0", {}},
    {"escapeWithBadSecondDigit", "file:///%0G", {}},
    {"escapeWithSign", "file:///%+1", {}},
    {"digitBeforeZero", "file:///%/0", {}},
    {"digitAfterNine", "file:///%:0", {}},
    {"digitBeforeA", "file:///%`0", {}},
    {"encodedNotUTF8", "file:///%FF", {}},
    {"encodedOverlongSlash", "file:///a%C0%AFb", {}},
    {"rawNotUTF8", "file:///\xFF", {}},
};

TEST(FileURLTest, readsFileURLsAndNothingElse) {
  for (const URLCase& row : urlCases) {
    SCOPED_TRACE(row.name);
    const std::optional<FileURL> url = fileURLFromURLText(row.url);
    EXPECT_EQ(url.has_value(), row.path.has_value());
    if (url && row.path) {
      EXPECT_EQ(url->path.utf8(), *row.path);
    }
  }
}

struct PathCase {
  std::string_view name;
  std::string_view path;
  bool isAccepted;
};

constexpr PathCase pathCases[] = {
    {"root", "/", true},
    {"plain", "/a", true},
    {"notStandardized", "//a/../", true},
    {"percentIsPercent", "/100%25", true},
    {"nonASCII", "/e\u0301", true},
    {"empty", "", false},
    {"relative", "a", false},
    {"tilde", "~/a", false},
    {"nul", {"/a\0", 3}, false},
    {"notUTF8", "/\xFF", false},
};

TEST(FileURLTest, namesAbsolutePathsAsTheyStand) {
  for (const PathCase& row : pathCases) {
    SCOPED_TRACE(row.name);
    const std::optional<FileURL> url = fileURLFromAbsolutePath(row.path);
    EXPECT_EQ(url.has_value(), row.isAccepted);
    if (url) {
      EXPECT_EQ(url->path.utf8(), row.path);
    }
  }
}

TEST(FileURLTest, everyByteComesBackFromItsEscape) {
  constexpr std::string_view digits = "0123456789ABCDEF";
  for (unsigned byte = 1; byte < 0x80; ++byte) {
    const std::string escape = {'%', digits[byte / 16], digits[byte % 16]};
    const std::optional<FileURL> url = fileURLFromURLText("file:///" + escape);
    ASSERT_EQ(url.has_value(), byte != '/') << escape;
    if (url) {
      EXPECT_EQ(url->path.utf8(), std::string("/") + static_cast<char>(byte)) << escape;
    }
  }
}

TEST(FileURLTest, equalPathsMakeEqualURLs) {
  EXPECT_EQ(fileURLFromURLText("file:///%C3%A9"), fileURLFromAbsolutePath("/e\u0301"));
  EXPECT_NE(fileURLFromAbsolutePath("/a"), fileURLFromAbsolutePath("/a/"));
}

}  // namespace
}  // namespace velmora

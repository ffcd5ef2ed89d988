#include "text/FileURL.h"

#include <gtest/gtest.h>

namespace velmora {
namespace {

struct URLCase {
  std::string_view name;
  std::string_view url;
  std::optional<std::string_view> path;
};

constexpr URLCase urlCases[] = {
    {.name = "noAuthority", .url = "file:/a", .path = "/a"},
    {.name = "emptyAuthority", .url = "file:///a", .path = "/a"},
    {.name = "localhost", .url = "file://localhost/a", .path = "/a"},
    {.name = "localhostInAnyCase", .url = "file://LocalHost/a", .path = "/a"},
    {.name = "schemeInAnyCase", .url = "FILE:///a%20b", .path = "/a b"},
    {.name = "root", .url = "file:///", .path = "/"},
    {.name = "rootWithoutAuthority", .url = "file:/", .path = "/"},
    {.name = "notStandardized", .url = "file:////a/../b/", .path = "//a/../b/"},
    {.name = "query", .url = "file:///a?b/c", .path = "/a"},
    {.name = "fragment", .url = "file:///a#b?c", .path = "/a"},
    {.name = "malformedQuery", .url = "file:///a?%2", .path = "/a"},
    {.name = "encodedQuestionMark", .url = "file:///a%3Fb%23c", .path = "/a?b#c"},
    {.name = "encodedPercent", .url = "file:///100%25%32%35", .path = "/100%25"},
    {.name = "lowerCaseDigits", .url = "file:///%c3%a9", .path = "/\u00e9"},
    {.name = "upperCaseDigits", .url = "file:///%C3%A9", .path = "/\u00e9"},
    {.name = "highestDigits", .url = "file:///%f0%9f%98%80%5A", .path = "/\U0001F600Z"},
    {.name = "rawNonASCII", .url = "file:///\u65e5\u672c", .path = "/\u65e5\u672c"},
    {.name = "rawBlankAndControls", .url = "file:///a b\n\t\"\\", .path = "/a b\n\t\"\\"},
    {.name = "plusIsPlus", .url = "file:///a+b", .path = "/a+b"},
    {.name = "halfRawHalfEncoded", .url = "file:///\xC3%A9", .path = "/\u00e9"},
    {.name = "empty", .url = "", .path = {}},
    {.name = "schemeOnly", .url = "file:", .path = {}},
    {.name = "schemeWithoutColon", .url = "file", .path = {}},
    {.name = "emptyPath", .url = "file://", .path = {}},
    {.name = "localhostWithoutPath", .url = "file://localhost", .path = {}},
    {.name = "queryWithoutPath", .url = "file://?/a", .path = {}},
    {.name = "relativePath", .url = "file:a", .path = {}},
    {.name = "otherAuthority", .url = "file://server/a", .path = {}},
    {.name = "authorityBeginningWithLocalhost", .url = "file://localhosts/a", .path = {}},
    {.name = "authorityWithPort", .url = "file://localhost:80/a", .path = {}},
    {.name = "authorityWithUser", .url = "file://me@localhost/a", .path = {}},
    {.name = "otherScheme", .url = "https:///a", .path = {}},
    {.name = "schemeBeginningWithFile", .url = "files:///a", .path = {}},
    {.name = "schemeLikeFileInUnicode", .url = "f\u0131le:///a", .path = {}},
    {.name = "path", .url = "/a", .path = {}},
    {.name = "blankBefore", .url = " file:///a", .path = {}},
    {.name = "encodedSlash", .url = "file:///a%2Fb", .path = {}},
    {.name = "encodedSlashInLowerCase", .url = "file:///a%2fb", .path = {}},
    {.name = "encodedFirstSlash", .url = "file:%2Fa", .path = {}},
    {.name = "encodedNul", .url = "file:///a%00", .path = {}},
    {.name = "rawNul", .url = {"file:///a\0b", 11}, .path = {}},
    {.name = "escapeWithoutDigits", .url = "file:///a%", .path = {}},
    {.name = "escapeWithOneDigit", .url = "file:///a%2", .path = {}},
    {.name = "escapeCutByTheEndOfTheView", .url = {"file:///a%20", 11}, .path = {}},
    {.name = "escapeCutByQuery", .url = "file:///a%2?0", .path = {}},
    {.name = "escapeWithBadFirstDigit", .url = "file:///%g0", .path = {}},
    {.name = "escapeWithBadSecondDigit", .url = "file:///%0G", .path = {}},
    {.name = "escapeWithSign", .url = "file:///%+1", .path = {}},
    {.name = "digitBeforeZero", .url = "file:///%/0", .path = {}},
    {.name = "digitAfterNine", .url = "file:///%:0", .path = {}},
    {.name = "digitBeforeA", .url = "file:///%`0", .path = {}},
    {.name = "encodedNotUTF8", .url = "file:///%FF", .path = {}},
    {.name = "encodedSurrogate", .url = "file:///%ED%A0%80", .path = {}},
    {.name = "encodedOverlongSlash", .url = "file:///a%C0%AFb", .path = {}},
    {.name = "rawNotUTF8", .url = "file:///\xFF", .path = {}},
};

TEST(FileURLTest, readsFileURLsAndNothingElse) {
  for (const URLCase& row : urlCases) {
    SCOPED_TRACE(row.name);
    const std::optional<FileURL> url = fileURLFromURLText(row.url);
    ASSERT_EQ(url.has_value(), row.path.has_value());
    if (url) {
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
    {.name = "root", .path = "/", .isAccepted = true},
    {.name = "plain", .path = "/a", .isAccepted = true},
    {.name = "notStandardized", .path = "//a/../", .isAccepted = true},
    {.name = "percentIsPercent", .path = "/100%25", .isAccepted = true},
    {.name = "nonASCII", .path = "/e\u0301", .isAccepted = true},
    {.name = "empty", .path = "", .isAccepted = false},
    {.name = "relative", .path = "a", .isAccepted = false},
    {.name = "tilde", .path = "~/a", .isAccepted = false},
    {.name = "nul", .path = {"/a\0", 3}, .isAccepted = false},
    {.name = "notUTF8", .path = "/\xFF", .isAccepted = false},
    {.name = "truncated", .path = "/\xC3", .isAccepted = false},
};

TEST(FileURLTest, namesAbsolutePathsAsTheyStand) {
  for (const PathCase& row : pathCases) {
    SCOPED_TRACE(row.name);
    const std::optional<FileURL> url = fileURLFromAbsolutePath(row.path);
    ASSERT_EQ(url.has_value(), row.isAccepted);
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

#include "tests/text/Words.h"
#include "text/FileURL.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace velmora::internal {
namespace {

using std::string_view_literals::operator""sv;

struct URLCase {
  std::string_view url;
  std::string_view path;
};

constexpr URLCase urlCases[] = {
    {"file:/a", "/a"},
    {"file:///a", "/a"},
    {"file://localhost/a", "/a"},
    {"file://LocalHost/a", "/a"},
    {"FILE:///a%20b", "/a b"},
    {"file:///", "/"},
    {"file:/", "/"},
    {"file:////a/../b/", "//a/../b/"},
    {"file:///a?b/c", "/a"},
    {"file:///a#b?c", "/a"},
    {"file:///a?%2", "/a"},
    {"file:///a%3Fb%23c", "/a?b#c"},
    {"file:///100%25%32%35", "/100%25"},
    {"file:///%c3%a9", "/\u00e9"},
    {"file:///%C3%A9", "/\u00e9"},
    {"file:///%f0%9f%98%80%5A", "/\U0001F600Z"},
    {"file:///\u65e5\u672c", "/\u65e5\u672c"},
    {"file:///a b\n\t\"\\", "/a b\n\t\"\\"},
    {"file:///a+b", "/a+b"},
    {"file:///\xC3%A9", "/\u00e9"},
};

TEST(FileURLTest, readsFileURLs) {
  for (const URLCase& row : urlCases) {
    EXPECT_EQ(fileURLFromURLText(row.url).value_or(FileURL{}).path.utf8(), row.path) << row.url;
  }
}

TEST(FileURLTest, refusesOtherTexts) {
  std::vector<std::string> refused = wordsOf(
      // Another form or scheme, or an authority.
      "file: file file:// file://localhost file://?/a file:a file://server/a file://localhosts/a "
      "file://localhost:80/a file://me@localhost/a https:///a files:///a f\u0131le:///a /a "
      // Bytes that must not be encoded.
      "file:///a%2Fb file:///a%2fb file:%2Fa file:///a%00 file:///%FF file:///a%C0%AFb "
      // Invalid escapes.
      "file:///a% file:///a%2 file:///a%2?0 file:///%g0 file:///%0G file:///%+1 file:///%/0 "
      "file:///%:0 file:///%`0 file:///\xFF");
  refused.insert(refused.end(), {"", " file:///a", {"file:///a\0b", 11}});
  for (const std::string& url : refused) {
    EXPECT_FALSE(fileURLFromURLText(url)) << url;
  }
  EXPECT_FALSE(fileURLFromURLText({"file:///a%20", 11}));
}

TEST(FileURLTest, keepsAbsolutePathsUnchanged) {
  for (const std::string_view path : {"/", "/a", "//a/../", "/100%25", "/e\u0301"}) {
    EXPECT_EQ(fileURLFromAbsolutePath(path).value_or(FileURL{}).path.utf8(), path);
  }
  for (const std::string_view path : {""sv, "a"sv, "~/a"sv, "/a\0"sv, "/\xFF"sv}) {
    EXPECT_FALSE(fileURLFromAbsolutePath(path)) << path;
  }
}

TEST(FileURLTest, everyByteIsReadFromItsEscape) {
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
}  // namespace velmora::internal

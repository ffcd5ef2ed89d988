#include "json/JSONWriting.h"
#include "tests/json/ReadDocument.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace velmora::internal {
namespace {

std::string written(std::string_view text, SlashStyle slashes = SlashStyle::plain) {
  std::string json;
  appendJSONString(json, text, slashes);
  return json;
}

struct WritingCase {
  const char* name;
  std::string_view text;
  std::string_view json;
};

constexpr WritingCase writingCases[] = {
    {"empty", "", R"("")"},
    {"plain", "a b", R"("a b")"},
    {"quote", "a\"b", R"("a\"b")"},
    {"backslash", "a\\b", R"("a\\b")"},
    {"slash", "a/b", R"("a/b")"},
    {"shortEscapes", "\b\f\n\r\t", R"("\b\f\n\r\t")"},
    {"nul", {"a\0b", 3}, R"("a\u0000b")"},
    {"controls", "\x01\x0B\x0E\x1F", R"("\u0001\u000b\u000e\u001f")"},
    {"delete", "\x7F", "\"\x7F\""},
    {"beyondASCII", "\u0080\u00e9\u2028\u65e5\U0001F600", "\"\u0080\u00e9\u2028\u65e5\U0001F600\""},
    {"markup", "<a href='&'>", R"("<a href='&'>")"},
};

TEST(JSONWritingTest, escapesOnlyTheRequiredCharacters) {
  for (const WritingCase& row : writingCases) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(written(row.text), row.json);
  }
}

TEST(JSONWritingTest, escapesSlashesOnRequest) {
  EXPECT_EQ(written("/a//b/", SlashStyle::escaped), R"("\/a\/\/b\/")");
  EXPECT_EQ(written("/\\/", SlashStyle::escaped), R"("\/\\\/")");
}

TEST(JSONWritingTest, appendsToTheText) {
  std::string json = "[";
  appendJSONString(json, "a");
  appendJSONString(json, "b");
  EXPECT_EQ(json, R"(["a""b")");
}

TEST(JSONWritingTest, writtenTextReadsBack) {
  std::string all;
  for (char character = 0; character < 0x7F; ++character) {
    all += character;
    all += "\u00e9";
    EXPECT_EQ(ReadDocument(written({&character, 1})).value().text(),
              std::string_view(&character, 1));
  }
  EXPECT_EQ(ReadDocument(written(all)).value().text(), all);
  EXPECT_EQ(ReadDocument(written(all, SlashStyle::escaped)).value().text(), all);
}

}  // namespace
}  // namespace velmora::internal

#include "common/DisplayText.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace velmora {
namespace {

using std::string_literals::operator""s;

TEST(ForeignText, thatIsSafeIsUnchanged) {
  for (const char* text :
       {"", "a b/c", "日本語", "cafe\u0301", "👩‍👩‍👧", "\uFFFD", "a\u00a0b"}) {
    EXPECT_EQ(repairedUTF8(text), text);
    EXPECT_EQ(displayText(text), text);
  }
}

TEST(ForeignText, hasReplacementsForBytesThatAreNotUTF8) {
  const struct {
    std::string bytes;
    std::string repaired;
    std::string shown;
  } rows[] = {
      {"a\xff\xfe z", "a\uFFFD\uFFFD z", "a\\xff\\xfe z"},
      {"caf\xe9", "caf\uFFFD", "caf\\xe9"},
      {"cut short\xe6\x97", "cut short\uFFFD\uFFFD", "cut short\\xe6\\x97"},
      {"overlong\xc0\xaf", "overlong\uFFFD\uFFFD", "overlong\\xc0\\xaf"},
      {"surrogate\xed\xa0\x80", "surrogate\uFFFD\uFFFD\uFFFD", "surrogate\\xed\\xa0\\x80"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(repairedUTF8(row.bytes), row.repaired);
    EXPECT_EQ(displayText(row.bytes), row.shown);
  }
}

TEST(ForeignText, hasUnsafeCharactersEscaped) {
  const std::pair<std::string, std::string> rows[] = {
      {"two\nlines\r", "two\\nlines\\r"},
      {"a\tb", "a\\tb"},
      {"\x1b[31mred", "\\u{1b}[31mred"},
      {"a\0b"s, "a\\u{0}b"},
      {"\x7f", "\\u{7f}"},
      {"\u009b2J", "\\u{9b}2J"},
      {"line ends \u2028\u2029", "line ends \\u{2028}\\u{2029}"},
      {"right to left \u202egpj.exe\u202c", "right to left \\u{202e}gpj.exe\\u{202c}"},
      {"isolate \xe2\x81\xa6\xe2\x81\xa9", "isolate \\u{2066}\\u{2069}"},
      {"marks \xe2\x80\x8e\xe2\x80\x8f\xd8\x9c", "marks \\u{200e}\\u{200f}\\u{61c}"},
      {"a\\n", "a\\\\n"},
  };
  for (const auto& [text, shown] : rows) {
    EXPECT_EQ(repairedUTF8(text), text);
    EXPECT_EQ(displayText(text), shown);
  }
}

}  // namespace
}  // namespace velmora

#include "DisplayText.h"
#include "tests/support/RowName.h"

#include <gtest/gtest.h>

namespace velmora::inspect {
namespace {

struct TextCase {
  const char* name;
  std::string bytes;
  std::string repaired;
  std::string shown;
};

class ForeignText : public testing::TestWithParam<TextCase> {};

TEST_P(ForeignText, isRepairedForPrograms) {
  EXPECT_EQ(repairedUTF8(GetParam().bytes), GetParam().repaired);
}

TEST_P(ForeignText, steersNoTerminal) {
  EXPECT_EQ(displayText(GetParam().bytes), GetParam().shown);
}

TextCase same(const char* name, const std::string& text) { return {name, text, text, text}; }

TextCase escaped(const char* name, const std::string& text, const std::string& shown) {
  return {name, text, text, shown};
}

using std::string_literals::operator""s;

INSTANTIATE_TEST_SUITE_P(
    Texts, ForeignText,
    testing::Values(
        same("empty", ""), same("plain", "a b/c"), same("japanese", "日本語"),
        same("decomposed", "cafe\u0301"), same("emoji", "👩‍👩‍👧"),
        same("replacement", "\uFFFD"), same("noBreakSpace", "a\u00a0b"),
        TextCase{"notUTF8", "a\xff\xfe z", "a\uFFFD\uFFFD z", "a\uFFFD\uFFFD z"},
        TextCase{"latin1", "caf\xe9", "caf\uFFFD", "caf\uFFFD"},
        TextCase{"cutShort", "\xe6\x97", "\uFFFD\uFFFD", "\uFFFD\uFFFD"},
        TextCase{"overlong", "\xc0\xaf", "\uFFFD\uFFFD", "\uFFFD\uFFFD"},
        TextCase{"surrogate", "\xed\xa0\x80", "\uFFFD\uFFFD\uFFFD", "\uFFFD\uFFFD\uFFFD"},
        escaped("newline", "two\nlines\r", "two\\nlines\\r"), escaped("tab", "a\tb", "a\\tb"),
        escaped("escapeSequence", "\x1b[31mred", "\\u{1b}[31mred"),
        escaped("nul", "a\0b"s, "a\\u{0}b"), escaped("del", "\x7f", "\\u{7f}"),
        escaped("controlBeyondASCII", "\u009b2J", "\\u{9b}2J"),
        escaped("lineSeparators", "\u2028\u2029", "\\u{2028}\\u{2029}"),
        escaped("rightToLeftOverride", "a\u202egpj.exe\u202c", "a\\u{202e}gpj.exe\\u{202c}"),
        escaped("isolate", "\xe2\x81\xa6\xe2\x81\xa9", "\\u{2066}\\u{2069}"),
        escaped("directionMarks", "\xe2\x80\x8e\xe2\x80\x8f\xd8\x9c", "\\u{200e}\\u{200f}\\u{61c}"),
        escaped("backslash", "a\\n", "a\\\\n")),
    RowName());

TEST(Counts, haveTheirNumber) {
  EXPECT_EQ(counted(0, "file", "files"), "0 files");
  EXPECT_EQ(counted(1, "file", "files"), "1 file");
  EXPECT_EQ(counted(2, "entry", "entries"), "2 entries");
}

}  // namespace
}  // namespace velmora::inspect

#include "platform/linux/StringsTable.h"
#include "tests/support/RowName.h"

#include <gtest/gtest.h>

#include <optional>
#include <ostream>
#include <string>

namespace velmora {
namespace {

using namespace std::string_literals;

struct TableCase {
  std::string name;
  std::string text;
  /// None for a fault.
  std::optional<StringsTable> table;
};

std::ostream& operator<<(std::ostream& out, const TableCase& row) { return out << row.name; }

class StringsTableText : public testing::TestWithParam<TableCase> {};

TEST_P(StringsTableText, isReadLikeThis) {
  EXPECT_EQ(parseStringsTable(GetParam().text), GetParam().table);
}

constexpr std::nullopt_t fault = std::nullopt;

StringsTable only(const std::string& value) { return {{"k", value}}; }

INSTANTIATE_TEST_SUITE_P(
    Layout, StringsTableText,
    testing::Values(
        TableCase{"empty", "", StringsTable()}, TableCase{"blanks", " \t\r\n\v\f", StringsTable()},
        TableCase{"onePair", "\"k\" = \"v\";", only("v")},
        TableCase{"noBlanks", "\"k\"=\"v\";\"l\"=\"w\";", StringsTable{{"k", "v"}, {"l", "w"}}},
        TableCase{"commentsEverywhere", "/* a */\"k\"/**/=// b\n\"v\"/* ; */;// c", only("v")},
        TableCase{"lineCommentEndsAtCarriageReturn", "// a\r\"k\"=\"v\";", only("v")},
        TableCase{"commentWithStars", "/*** \"x\" * / **/\"k\"=\"v\";", only("v")},
        TableCase{"commentSignsInQuotes", "\"k\"=\"// /* v\";", only("// /* v")},
        TableCase{"byteOrderMark", "\xEF\xBB\xBF\"k\"=\"v\";", only("v")},
        TableCase{"lastDuplicateWins", "\"k\"=\"a\";\"k\"=\"b\";", only("b")},
        TableCase{"emptyValue", "\"k\"=\"\";", only("")},
        TableCase{"emptyKey", "\"\"=\"v\";", StringsTable{{"", "v"}}},
        TableCase{"newlineInQuotes", "\"k\"=\"a\nb\";", only("a\nb")},
        TableCase{"unicode", "\"k\"=\"復元 😀\";", only("復元 😀")},
        TableCase{"nulInQuotes", "\"k\"=\"a\0b\";"s, only("a\0b"s)},
        TableCase{"noFinalSemicolon", "\"k\"=\"v\"", fault},
        TableCase{"noSemicolonBetween", "\"k\"=\"v\" \"l\"=\"w\";", fault},
        TableCase{"twoSemicolons", "\"k\"=\"v\";;", fault},
        TableCase{"noEqualsSign", "\"k\" \"v\";", fault}, TableCase{"noValue", "\"k\";", fault},
        TableCase{"valueMissing", "\"k\"=;", fault}, TableCase{"unquotedKey", "k=\"v\";", fault},
        TableCase{"unquotedValue", "\"k\"=v;", fault}, TableCase{"singleQuotes", "'k'='v';", fault},
        TableCase{"openQuotes", "\"k\"=\"v;", fault},
        TableCase{"openComment", "\"k\"=\"v\";/* a", fault},
        TableCase{"commentEndsWithinItsBeginning", "/*/", fault},
        TableCase{"loneSlash", "/ \"k\"=\"v\";", fault},
        TableCase{"textAfterwards", "\"k\"=\"v\";x", fault},
        TableCase{"faultAfterAPair", "\"k\"=\"v\";\"l\"=", fault},
        TableCase{"nulOutsideQuotes", "\"k\"=\"v\";\0"s, fault},
        TableCase{"secondByteOrderMark", "\xEF\xBB\xBF\xEF\xBB\xBF\"k\"=\"v\";", fault},
        TableCase{"notUTF8", "\"k\"=\"\xFF\";", fault},
        TableCase{"notUTF8InAComment", "/* \xC3 */\"k\"=\"v\";", fault},
        TableCase{"encodedSurrogate", "\"k\"=\"\xED\xA0\x80\";", fault}),
    RowName());

INSTANTIATE_TEST_SUITE_P(
    Escapes, StringsTableText,
    testing::Values(
        TableCase{"quoteAndBackslash", R"("k"="\"\\";)", only("\"\\")},
        TableCase{"controls", R"("k"="\a\b\f\n\r\t\v";)", only("\a\b\f\n\r\t\v")},
        TableCase{"inKeys", R"("\U006B"="v";)", only("v")},
        TableCase{"octal", R"("k"="\101\7\60";)", only("A\a0")},
        TableCase{"octalTakesThreeDigits", R"("k"="\1011";)", only("A1")},
        TableCase{"octalEndsAtOtherDigits", R"("k"="\78";)", only("\a8")},
        TableCase{"octalNul", R"("k"="\0";)", only("\0"s)},
        TableCase{"octalLastOfASCII", R"("k"="\177";)", only("\x7F")},
        TableCase{"octalBeyondASCII", R"("k"="\200";)", fault},
        TableCase{"utf16OneByte", R"("k"="\U0041\U007f";)", only("A\x7F")},
        TableCase{"utf16TwoBytes", R"("k"="\U0080\U00E9\U07FF";)", only("\u0080é\u07FF")},
        TableCase{"utf16ThreeBytes", R"("k"="\U0800\U5fa9\UFFFF";)", only("\u0800復\uFFFF")},
        TableCase{"utf16EitherCase", R"("k"="\U00aB";)", only("\u00AB")},
        TableCase{"utf16TakesFourDigits", R"("k"="\U00411";)", only("A1")},
        TableCase{"firstPair", R"("k"="\UD800\UDC00";)", only("\U00010000")},
        TableCase{"pair", R"("k"="\UD83D\UDE00";)", only("😀")},
        TableCase{"lastPair", R"("k"="\UDBFF\UDFFF";)", only("\U0010FFFF")},
        TableCase{"lastBeforeSurrogates", R"("k"="\UD7FF";)", only("\uD7FF")},
        TableCase{"firstAfterSurrogates", R"("k"="\UE000";)", only("\uE000")},
        TableCase{"loneHighSurrogate", R"("k"="\UD83D";)", fault},
        TableCase{"highSurrogateAndText", R"("k"="\UD83Dx";)", fault},
        TableCase{"twoHighSurrogates", R"("k"="\UD83D\UD83D";)", fault},
        TableCase{"highSurrogateAndOther", R"("k"="\UD83D\U0041";)", fault},
        TableCase{"loneLowSurrogate", R"("k"="\UDE00";)", fault},
        TableCase{"pairInWrongOrder", R"("k"="\UDE00\UD83D";)", fault},
        TableCase{"threeDigits", R"("k"="\U041";)", fault},
        TableCase{"noHexadecimalDigit", R"("k"="\U004G";)", fault},
        TableCase{"lowerCaseU", R"("k"="\u0041";)", fault},
        TableCase{"hexadecimal", R"("k"="\x41";)", fault},
        TableCase{"unknownLetter", R"("k"="\q";)", fault},
        TableCase{"singleQuote", R"("k"="\'";)", fault}, TableCase{"eight", R"("k"="\8";)", fault},
        TableCase{"newline", "\"k\"=\"\\\n\";", fault}, TableCase{"nul", "\"k\"=\"\\\0\";"s, fault},
        TableCase{"endOfText", R"("k"="\)", fault},
        TableCase{"endOfTextInDigits", R"("k"="\U00)", fault}),
    RowName());

}  // namespace
}  // namespace velmora

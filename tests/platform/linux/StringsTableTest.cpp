#include "platform/linux/StringsTable.h"

#include <gtest/gtest.h>

#include <optional>
#include <span>
#include <string>

namespace velmora {
namespace {

using namespace std::string_literals;

constexpr std::nullopt_t fault = std::nullopt;

StringsTable only(const std::string& value) { return {{"k", value}}; }

struct TableCase {
  const char* name;
  std::string text;
  /// std::nullopt for a fault.
  std::optional<StringsTable> table;
};

void expectReadLikeThis(std::span<const TableCase> rows) {
  for (const TableCase& row : rows) {
    EXPECT_EQ(parseStringsTable(row.text), row.table) << row.name;
  }
}

TEST(StringsTableText, hasThisSyntax) {
  const TableCase rows[] = {
      {"empty", "", StringsTable()},
      {"blanks", " \t\r\n\v\f", StringsTable()},
      {"onePair", "\"k\" = \"v\";", only("v")},
      {"noBlanks", "\"k\"=\"v\";\"l\"=\"w\";", StringsTable{{"k", "v"}, {"l", "w"}}},
      {"commentsEverywhere", "/* a */\"k\"/**/=// b\n\"v\"/* ; */;// c", only("v")},
      {"lineCommentEndsAtCarriageReturn", "// a\r\"k\"=\"v\";", only("v")},
      {"commentWithStars", "/*** \"x\" * / **/\"k\"=\"v\";", only("v")},
      {"commentSignsInQuotes", "\"k\"=\"// /* v\";", only("// /* v")},
      {"byteOrderMark", "\xEF\xBB\xBF\"k\"=\"v\";", only("v")},
      {"lastDuplicateWins", "\"k\"=\"a\";\"k\"=\"b\";", only("b")},
      {"emptyValue", "\"k\"=\"\";", only("")},
      {"emptyKey", "\"\"=\"v\";", StringsTable{{"", "v"}}},
      {"newlineInQuotes", "\"k\"=\"a\nb\";", only("a\nb")},
      {"unicode", "\"k\"=\"復元 😀\";", only("復元 😀")},
      {"nulInQuotes", "\"k\"=\"a\0b\";"s, only("a\0b"s)},
      {"noFinalSemicolon", "\"k\"=\"v\"", fault},
      {"noSemicolonBetween", "\"k\"=\"v\" \"l\"=\"w\";", fault},
      {"twoSemicolons", "\"k\"=\"v\";;", fault},
      {"noEqualsSign", "\"k\" \"v\";", fault},
      {"noValue", "\"k\";", fault},
      {"valueMissing", "\"k\"=;", fault},
      {"unquotedKey", "k=\"v\";", fault},
      {"unquotedValue", "\"k\"=v;", fault},
      {"singleQuotes", "'k'='v';", fault},
      {"openQuotes", "\"k\"=\"v;", fault},
      {"openComment", "\"k\"=\"v\";/* a", fault},
      {"commentEndsWithinItsBeginning", "/*/", fault},
      {"loneSlash", "/ \"k\"=\"v\";", fault},
      {"textAfterwards", "\"k\"=\"v\";x", fault},
      {"faultAfterAPair", "\"k\"=\"v\";\"l\"=", fault},
      {"nulOutsideQuotes", "\"k\"=\"v\";\0"s, fault},
      {"secondByteOrderMark", "\xEF\xBB\xBF\xEF\xBB\xBF\"k\"=\"v\";", fault},
      {"notUTF8", "\"k\"=\"\xFF\";", fault},
      {"notUTF8InAComment", "/* \xC3 */\"k\"=\"v\";", fault},
      {"encodedSurrogate", "\"k\"=\"\xED\xA0\x80\";", fault},
  };
  expectReadLikeThis(rows);
}

TEST(StringsTableText, hasTheseEscapes) {
  const TableCase rows[] = {
      {"quoteAndBackslash", R"("k"="\"\\";)", only("\"\\")},
      {"controls", R"("k"="\a\b\f\n\r\t\v";)", only("\a\b\f\n\r\t\v")},
      {"inKeys", R"("\U006B"="v";)", only("v")},
      {"octal", R"("k"="\101\7\60";)", only("A\a0")},
      {"octalTakesThreeDigits", R"("k"="\1011";)", only("A1")},
      {"octalEndsAtOtherDigits", R"("k"="\78";)", only("\a8")},
      {"octalNul", R"("k"="\0";)", only("\0"s)},
      {"octalLastOfASCII", R"("k"="\177";)", only("\x7F")},
      {"octalBeyondASCII", R"("k"="\200";)", fault},
      {"utf16OneByte", R"("k"="\U0041\U007f";)", only("A\x7F")},
      {"utf16TwoBytes", R"("k"="\U0080\U00E9\U07FF";)", only("\u0080é\u07FF")},
      {"utf16ThreeBytes", R"("k"="\U0800\U5fa9\UFFFF";)", only("\u0800復\uFFFF")},
      {"utf16EitherCase", R"("k"="\U00aB";)", only("\u00AB")},
      {"utf16TakesFourDigits", R"("k"="\U00411";)", only("A1")},
      {"firstPair", R"("k"="\UD800\UDC00";)", only("\U00010000")},
      {"pair", R"("k"="\UD83D\UDE00";)", only("😀")},
      {"lastPair", R"("k"="\UDBFF\UDFFF";)", only("\U0010FFFF")},
      {"lastBeforeSurrogates", R"("k"="\UD7FF";)", only("\uD7FF")},
      {"firstAfterSurrogates", R"("k"="\UE000";)", only("\uE000")},
      {"loneHighSurrogate", R"("k"="\UD83D";)", fault},
      {"highSurrogateAndText", R"("k"="\UD83Dx";)", fault},
      {"twoHighSurrogates", R"("k"="\UD83D\UD83D";)", fault},
      {"highSurrogateAndOther", R"("k"="\UD83D\U0041";)", fault},
      {"loneLowSurrogate", R"("k"="\UDE00";)", fault},
      {"pairInWrongOrder", R"("k"="\UDE00\UD83D";)", fault},
      {"threeDigits", R"("k"="\U041";)", fault},
      {"noHexadecimalDigit", R"("k"="\U004G";)", fault},
      {"lowerCaseU", R"("k"="\u0041";)", fault},
      {"hexadecimal", R"("k"="\x41";)", fault},
      {"unknownLetter", R"("k"="\q";)", fault},
      {"singleQuote", R"("k"="\'";)", fault},
      {"eight", R"("k"="\8";)", fault},
      {"newline", "\"k\"=\"\\\n\";", fault},
      {"nul", "\"k\"=\"\\\0\";"s, fault},
      {"endOfText", R"("k"="\)", fault},
      {"endOfTextInDigits", R"("k"="\U00)", fault},
  };
  expectReadLikeThis(rows);
}

}  // namespace
}  // namespace velmora

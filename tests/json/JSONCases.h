// Documents and numbers for all readers of JSON. The strict reader reports each fault. The
// streaming reader accepts or refuses.
#pragma once

#include "json/TokenFinder.h"
#include "tests/support/Repeated.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace velmora::internal {

using std::string_literals::operator""s;

struct ReadCase {
  const char* name;
  std::string document;
  /// The value written again without blanks.
  std::string rewritten;
};

inline const ReadCase readCases[] = {
    {"null", "null", "null"},
    {"true", "true", "true"},
    {"false", "false", "false"},
    {"emptyString", R"("")", R"("")"},
    {"string", R"("x y")", R"("x y")"},
    {"emptyArray", "[]", "[]"},
    {"emptyArrayWithBlanks", "[ \t\r\n]", "[]"},
    {"emptyObject", "{}", "{}"},
    {"emptyObjectWithBlanks", "{ \t\r\n}", "{}"},
    {"array", "[1,null,[],{}]", "[1,null,[],{}]"},
    {"object", R"({"a":1,"b":[{}]})", R"({"a":1,"b":[{}]})"},
    {"duplicateKeys", R"({"a":1,"a":2})", R"({"a":1,"a":2})"},
    {"emptyKey", R"({"":{"":0}})", R"({"":{"":0}})"},
    {"blanksEverywhere", " \t\r\n{ \"a\"\n:\t[ 1 ,\r2 ] , \"b\" : true } \n",
     R"({"a":[1,2],"b":true})"},
    {"blanksAroundScalar", "\n\n 7 \t", "7"},
    {"byteOrderMark", "\xEF\xBB\xBF[1]", "[1]"},
    {"byteOrderMarkInString", "\"\uFEFF\"", "\"\uFEFF\""},
    {"numbers", "[0,-0,-0.50,1e5,1E5,1e+5,1e-5,1.5E-05]", "[0,-0,-0.50,1e5,1E5,1e+5,1e-5,1.5E-05]"},
    {"numberBeyondDouble", "[1e400,-1e400,1e-400]", "[1e400,-1e400,1e-400]"},
    {"thousandDigits", repeated("1234567890", 100), repeated("1234567890", 100)},
    {"thousandDigitsInExponent", "1e" + repeated("1234567890", 100),
     "1e" + repeated("1234567890", 100)},
    {"simpleEscapes", R"("\"\\\/\b\f\n\r\t")", R"("\"\\/\b\f\n\r\t")"},
    {"escapedQuote", R"("\"")", R"("\"")"},
    {"escapedBackslash", R"("\\")", R"("\\")"},
    {"escapedSlashes", R"("\/a\/b")", R"("/a/b")"},
    {"escapedCodePoints", R"("\u0041\u00e9\u65E5")", "\"A\u00e9\u65e5\""},
    {"escapedNUL", R"("a\u0000b")", R"("a\u0000b")"},
    {"escapedSurrogatePair", R"("\ud834\uDD1E")", "\"\U0001D11E\""},
    {"escapedNoncharacter", R"("\uFFFF")", "\"\uFFFF\""},
    {"escapedKey", R"({"\u0061\/":1})", R"({"a/":1})"},
    {"nonASCII", "\"\u00e9\U0001F600\"", "\"\u00e9\U0001F600\""},
    {"delete", "\"\x7F\"", "\"\x7F\""},
    {"maxCodePointLength", "\"\U0010FFFF\"", "\"\U0010FFFF\""},
    {"punctuationInString", R"(["{[,:]}",{"],":"}"}])", R"(["{[,:]}",{"],":"}"}])"},
    {"tokensInString", R"("},{\"a\":[1],null")", R"("},{\"a\":[1],null")"},
    {"backslashBeforeClosingQuote", R"(["\\","\\\"",""])", R"(["\\","\\\"",""])"},
    {"longString", '"' + repeated("x", 20'000) + '"', '"' + repeated("x", 20'000) + '"'},
    {"longStringWithEscape", '"' + repeated("x", 20'000) + R"(\t")",
     '"' + repeated("x", 20'000) + R"(\t")"},
};

struct RefusedCase {
  const char* name;
  std::string document;
  /// As the strict reader reports it; `nowhere` for a fault of the whole document.
  std::size_t byteOffset;
  const char* what;
  /// The fault that the search for tokens already finds.
  TokenFault tokens = TokenFault::none;
};

inline constexpr std::size_t nowhere = std::string::npos;
inline constexpr auto isEmpty = "The document is empty.";
inline constexpr auto isNotUTF8 = "The document is not UTF-8.";
inline constexpr auto hasControl = "A string holds an unescaped control character.";
inline constexpr auto hasNoEnd = "A string does not end.";
inline constexpr auto hasBackslash = "A backslash stands outside of strings.";
inline constexpr auto badEscape = "A string holds an escape that is none of JSON's.";
inline constexpr auto endsEarly = "The document ends early.";
inline constexpr auto noValue = "Expected a value.";
inline constexpr auto noKey = "Expected a key.";
inline constexpr auto noColon = "Expected a colon after the key.";
inline constexpr auto noEndOfArray = "Expected a comma or the end of the array.";
inline constexpr auto noEndOfObject = "Expected a comma or the end of the object.";
inline constexpr auto goesOn = "Something follows the document's value.";

inline const RefusedCase refusedCases[] = {
    {"empty", "", nowhere, isEmpty, TokenFault::empty},
    {"space", " ", nowhere, isEmpty, TokenFault::empty},
    {"blanks", " \t\r\n" + repeated(" ", 200), nowhere, isEmpty, TokenFault::empty},
    {"onlyByteOrderMark", "\xEF\xBB\xBF", nowhere, isEmpty},
    {"twoByteOrderMarks", "\xEF\xBB\xBF\xEF\xBB\xBF[]", 3, noValue},
    {"byteOrderMarkAfterBlank", " \xEF\xBB\xBF[]", 1, noValue},
    {"byteOrderMarkAtEnd", "[]\xEF\xBB\xBF", 2, goesOn},
    {"utf16", "[\0]\0"s, 1, noValue},
    {"otherBlank", "[\f1]", 1, noValue},
    {"noBreakSpace", "[\u00a01]", 1, noValue},
    {"nulAfterValue", "[]\0"s, 2, goesOn},
    {"nulAsValue", "\0"s, 0, noValue},
    {"twoValues", "1 2", 2, goesOn},
    {"twoLines", "{}\n{}", 3, goesOn},
    {"commaAfterValue", "[],", 2, goesOn},
    {"closingAfterValue", "[]]", 2, goesOn},
    {"stringAfterString", R"("a""b")", 3, goesOn},
    {"wordAfterString", R"("a"b)", 3, goesOn},
    {"stringAfterNumber", R"(1"a")", 0, noValue},
    {"onlyComma", ",", 0, noValue},
    {"onlyColon", ":", 0, noValue},
    {"onlyClosing", "]", 0, noValue},
    {"comment", "[1 /* one */]", 3, noEndOfArray},
    {"singleQuotes", "'a'", 0, noValue},
    {"letter", "a", 0, noValue},
    {"bareWord", "[a]", 1, noValue},
    {"upperCaseLiteral", "True", 0, noValue},
    {"cutTrue", "tru", 0, noValue},
    {"cutFalse", "fals", 0, noValue},
    {"cutNull", "nul", 0, noValue},
    {"longTrue", "truex", 0, noValue},
    {"longNull", "nulls", 0, noValue},
    {"literalWithNUL", "true\0"s, 0, noValue},
    {"literalWithNULInArray", "[false\0]"s, 1, noValue},
    {"blankInLiteral", "tr ue", 0, noValue},
    {"literalsWithoutComma", "[null null]", 6, noEndOfArray},
    {"minusBlank", "[- 1]", 1, noValue},
    {"arrayOpen", "[", 1, endsEarly},
    {"arrayOpenAfterElement", "[1", 2, endsEarly},
    {"arrayOpenAfterComma", "[1, ", 4, endsEarly},
    {"arrayClosedAsObject", "[1}", 2, noEndOfArray},
    {"emptyArrayClosedAsObject", "[}", 1, noValue},
    {"trailingCommaInArray", "[1,]", 3, noValue},
    {"leadingCommaInArray", "[,1]", 1, noValue},
    {"twoCommasInArray", "[1,,2]", 3, noValue},
    {"colonInArray", R"(["a":1])", 4, noEndOfArray},
    {"objectOpen", "{", 1, endsEarly},
    {"objectOpenAfterKey", R"({"a")", 4, endsEarly},
    {"objectOpenAfterColon", R"({"a":)", 5, endsEarly},
    {"objectOpenAfterValue", R"({"a":1)", 6, endsEarly},
    {"objectOpenAfterComma", R"({"a":1,)", 7, endsEarly},
    {"objectClosedAsArray", R"({"a":1])", 6, noEndOfObject},
    {"emptyObjectClosedAsArray", "{]", 1, noKey},
    {"trailingCommaInObject", R"({"a":1,})", 7, noKey},
    {"leadingCommaInObject", R"({,"a":1})", 1, noKey},
    {"noCommaInObject", R"({"a":1 "b":2})", 7, noEndOfObject},
    {"noColon", R"({"a" 1})", 5, noColon},
    {"commaForColon", R"({"a",1})", 4, noColon},
    {"keyOnly", R"({"a"})", 4, noColon},
    {"noValue", R"({"a":})", 5, noValue},
    {"twoColons", R"({"a"::1})", 5, noValue},
    {"numberAsKey", "{1:1}", 1, noKey},
    {"wordAsKey", "{a:1}", 1, noKey},
    {"arrayAsKey", "{[]:1}", 1, noKey},
    {"openString", R"(["a)", 1, hasNoEnd, TokenFault::unclosedString},
    {"onlyQuote", "\"", 0, hasNoEnd, TokenFault::unclosedString},
    {"escapedClosingQuote", R"(["a\"])", 1, hasNoEnd, TokenFault::unclosedString},
    {"openStringAfterOther", R"(["\"a", "b])", 8, hasNoEnd, TokenFault::unclosedString},
    {"backslashAtEnd", R"(["\)", 1, hasNoEnd, TokenFault::unclosedString},
    {"lineBreakInString", "[\"ab\n\"]", 4, hasControl, TokenFault::controlCharacter},
    {"tabInString", "[\"\\\"\t\"]", 4, hasControl, TokenFault::controlCharacter},
    {"nulInString", "[\"\0\"]"s, 2, hasControl, TokenFault::controlCharacter},
    {"controlInKey", "{\"\x1F\":1}", 2, hasControl, TokenFault::controlCharacter},
    {"controlInOpenString", "[\"\\\"\",\"b\n]", 8, hasControl, TokenFault::unclosedString},
    {"lineBreakAfterABackslash", "[\"a\\\nb\",1]", 4, hasControl, TokenFault::controlCharacter},
    {"controlAfterABackslash", "[\"a\\\x01\"]", 4, hasControl, TokenFault::controlCharacter},
    {"backslashOutsideString", R"([\n])", 1, noValue},
    {"backslashBeforeString", R"([\"a"])", 1, hasBackslash, TokenFault::unclosedString},
    {"backslashBeforeStringWithControl", "[\"\\\"\", \\\"a\", \"\n\"]", 7, hasBackslash,
     TokenFault::unclosedString},
    {"backslashBeforeOneOfTwoStrings", R"(\"a" ")", 0, noValue},
    {"unknownEscape", R"([1,"a\x"])", 3, badEscape},
    {"unknownEscapeAlone", R"("\x")", 0, badEscape},
    {"escapedBlank", R"("\ ")", 0, badEscape},
    {"cutEscape", R"("\u12")", 0, badEscape},
    {"halfOfAPair", R"("\uD83D")", 0, badEscape},
    {"badEscapeInKey", R"({"a":0,"\'":1})", 7, badEscape},
    {"loneContinuation", "[\"a\x80\"]", 3, isNotUTF8, TokenFault::notUTF8},
    {"cutCodePoint", "[\"\xE6\x97\"]", 2, isNotUTF8, TokenFault::notUTF8},
    {"cutCodePointAtEnd", "\xE6\x97", 0, isNotUTF8, TokenFault::notUTF8},
    {"cutCodePointAfterString", "\"\" \xC3", 3, isNotUTF8, TokenFault::notUTF8},
    {"overlongNUL", "\"\xC0\x80\"", 1, isNotUTF8, TokenFault::notUTF8},
    {"overlongSlash", "[\"\xC0\xAF\"]", 2, isNotUTF8, TokenFault::notUTF8},
    {"surrogateInUTF8", "[\"\xED\xA0\x80\"]", 2, isNotUTF8, TokenFault::notUTF8},
    {"beyondUnicode", "[\"\xF4\x90\x80\x80\"]", 2, isNotUTF8, TokenFault::notUTF8},
    {"latin1", "{\"\xE9\":1}", 2, isNotUTF8, TokenFault::notUTF8},
    {"lastByteOutsideOfStrings", "1 \xFF", 2, isNotUTF8, TokenFault::notUTF8},
    {"byteThatMarksResolvedStrings", "\xFF\"\"", 0, isNotUTF8, TokenFault::notUTF8},
    {"byteOrderMarkOfUTF16", "\xFE\xFF[]", 0, isNotUTF8, TokenFault::notUTF8},
};

/// Texts that are numbers, and texts that are not.
struct NumberCase {
  /// The value of all `texts`, or one of the constants below.
  std::string_view value;
  /// Separated by blanks (Words.h).
  std::string texts;
};

inline constexpr std::string_view itself = "itself";
/// The value has a fraction, or needs more than 64 bits.
inline constexpr std::string_view noInteger = "no integer";
inline constexpr std::string_view noNumber = "no number";

inline const NumberCase numberCases[] = {
    {itself,
     "0 1 -1 10 100 255 256 65535 65536 1234567 12345678 123456789 1234567890 "
     "4294967295 4294967296 1234567890123456 98765432109876543 9007199254740993 "
     "9223372036854775807 9223372036854775808 -9223372036854775808 "
     "-9223372036854775809 9999999999999999999 10000000000000000000 "
     "18446744073709551615 -18446744073709551615"},
    {"0", "-0"},
    {"0", "-0.0 0.0 0e0 0.0e-0 0e999 0e999999999999 -0.000e-999999999999"},
    {"1", "1.0 1e0 1E0 1e+0 1e-0"},
    {"4", "4.0 4e0 40e-1 0.0004e4 4e-" + repeated("0", 1000)},
    {"-4", "-400E-2"},
    {"7", "7." + repeated("0", 1000) + " 0." + repeated("0", 1000) + "7e1001"},
    {"10", "1.0e01"},
    {"12", "12" + repeated("0", 1000) + "e-1000"},
    {"40", "4e" + repeated("0", 1000) + "1"},
    {"100", "1E2"},
    {"125", "1.25e2"},
    {"1250", "1.25e+3"},
    {"-1500", "-1.5e3"},
    {"100000", "1E+05"},
    {"9007199254740993", "9007199254740993.0"},
    {"10000000000000000000", "1e19"},
    {"18446744073709551615", "18446744073709551615.000 1.8446744073709551615e19"},
    {noInteger,
     "0.5 -0.5 -0.50 1.25e1 41e-1 9e-9 1E-05 -9.99E+99 1234.678 1e20 1e99 1e400 "
     "1e-400 1e9999 1e18446744073709551616 1e-18446744073709551616 "
     "4.00000000000000000000000001"},
    // Just over 64 bits, around twice the smallest number of 20 digits, and numbers that wrap
    // around to 20 digits again.
    {noInteger,
     "18446744073709551616 -18446744073709551616 19999999999999999999 "
     "20000000000000000000 28446744073709551616 46893488147419103231 "
     "99999999999999999999 100000000000000000000 120680464442257309696 184467440737095516160"},
    {noInteger, "1" + repeated("0", 999) + " 12" + repeated("0", 1000) + "e-1002 " +
                    repeated("7", 1000) + "e-990"},
    {noNumber,
     "- +1 + 01 00 -01 -00 .5 -.5 1. -1. 1.e 1.e5 1e 1E 1e+ 1e- 1e+-1 e5 -e5 . "
     "1.5.5 1e5e5 1e5.5 1e1.5 1_000 0x1 0x10 1f 1x x NaN Infinity -Infinity --1 "
     "1- 1-2 1+1"},
    {noNumber,
     "1234x678 123456-8 1+345678 1234/678 123456781/345678 1234?678 "
     "123456\u00e9 \u0661 1\u0661 1\0 1234\000678"s},
};

}  // namespace velmora::internal

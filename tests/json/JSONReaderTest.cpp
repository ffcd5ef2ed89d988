#include "json/JSONReader.h"
#include "tests/support/AnsweredDocuments.h"
#include "tests/json/Faults.h"
#include "tests/support/JSONJudge.h"
#include "tests/support/JSONRewriting.h"
#include "tests/json/ReadDocument.h"

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

namespace velmora {
namespace {

using namespace std::string_literals;

std::string repeated(std::string_view text, std::size_t count) {
  std::string result;
  for (; count > 0; --count) {
    result += text;
  }
  return result;
}

/// The document's value, written anew without blanks.
std::string rewrittenDocument(const std::string& document) {
  return rewritten(ReadDocument(document).value());
}

std::string faultOfDocument(const std::string& document) {
  return faultOf([&document] { const ReadDocument read(document); });
}

struct GoodCase {
  const char* name;
  std::string document;
  std::string rewritten;
};

const GoodCase goodCases[] = {
    {.name = "null", .document = "null", .rewritten = "null"},
    {.name = "true", .document = "true", .rewritten = "true"},
    {.name = "false", .document = "false", .rewritten = "false"},
    {.name = "emptyString", .document = R"("")", .rewritten = R"("")"},
    {.name = "string", .document = R"("x y")", .rewritten = R"("x y")"},
    {.name = "emptyArray", .document = "[]", .rewritten = "[]"},
    {.name = "emptyArrayWithBlanks", .document = "[ \t\r\n]", .rewritten = "[]"},
    {.name = "emptyObject", .document = "{}", .rewritten = "{}"},
    {.name = "emptyObjectWithBlanks", .document = "{ \t\r\n}", .rewritten = "{}"},
    {.name = "array", .document = "[1,null,[],{}]", .rewritten = "[1,null,[],{}]"},
    {.name = "object", .document = R"({"a":1,"b":[{}]})", .rewritten = R"({"a":1,"b":[{}]})"},
    {.name = "duplicateKeys", .document = R"({"a":1,"a":2})", .rewritten = R"({"a":1,"a":2})"},
    {.name = "emptyKey", .document = R"({"":{"":0}})", .rewritten = R"({"":{"":0}})"},
    {.name = "blanksEverywhere",
     .document = " \t\r\n{ \"a\"\n:\t[ 1 ,\r2 ] , \"b\" : true } \n",
     .rewritten = R"({"a":[1,2],"b":true})"},
    {.name = "blanksAroundScalar", .document = "\n\n 7 \t", .rewritten = "7"},
    {.name = "byteOrderMark", .document = "\xEF\xBB\xBF[1]", .rewritten = "[1]"},
    {.name = "byteOrderMarkInString", .document = "\"\uFEFF\"", .rewritten = "\"\uFEFF\""},
    {.name = "zero", .document = "0", .rewritten = "0"},
    {.name = "negativeZero", .document = "-0", .rewritten = "-0"},
    {.name = "fraction", .document = "-0.50", .rewritten = "-0.50"},
    {.name = "exponents",
     .document = "[1e5,1E5,1e+5,1e-5,1.5E-05]",
     .rewritten = "[1e5,1E5,1e+5,1e-5,1.5E-05]"},
    {.name = "numberBeyondDouble",
     .document = "[1e400,-1e400,1e-400]",
     .rewritten = "[1e400,-1e400,1e-400]"},
    {.name = "thousandDigits",
     .document = repeated("1234567890", 100),
     .rewritten = repeated("1234567890", 100)},
    {.name = "thousandDigitsInExponent",
     .document = "1e" + repeated("1234567890", 100),
     .rewritten = "1e" + repeated("1234567890", 100)},
    {.name = "simpleEscapes",
     .document = R"("\"\\\/\b\f\n\r\t")",
     .rewritten = R"("\"\\/\b\f\n\r\t")"},
    {.name = "escapedCodePoints",
     .document = R"("\u0041\u00e9\u65E5")",
     .rewritten = "\"A\u00e9\u65e5\""},
    {.name = "escapedNUL", .document = R"("\u0000")", .rewritten = R"("\u0000")"},
    {.name = "escapedSurrogatePair",
     .document = R"("\ud834\uDD1E")",
     .rewritten = "\"\U0001D11E\""},
    {.name = "escapedNoncharacter", .document = R"("\uFFFF")", .rewritten = "\"\uFFFF\""},
    {.name = "escapedKey", .document = R"({"\u0061\/":1})", .rewritten = R"({"a/":1})"},
    {.name = "delete", .document = "\"\x7F\"", .rewritten = "\"\x7F\""},
    {.name = "longestCodePoint", .document = "\"\U0010FFFF\"", .rewritten = "\"\U0010FFFF\""},
    {.name = "punctuationInString",
     .document = R"(["{[,:]}",{"],":"}"}])",
     .rewritten = R"(["{[,:]}",{"],":"}"}])"},
    {.name = "backslashBeforeClosingQuote",
     .document = R"(["\\","\\\"",""])",
     .rewritten = R"(["\\","\\\"",""])"},
};

TEST(JSONReaderTest, readsWhatTheGrammarAllows) {
  for (const GoodCase& row : goodCases) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(faultOfDocument(row.document), "none");
    EXPECT_EQ(rewrittenDocument(row.document), row.rewritten);
  }
}

struct BadCase {
  const char* name;
  std::string document;
  /// Where and what, as describe (Faults.h) has it behind the kind.
  std::string fault;
};

const BadCase badCases[] = {
    {.name = "empty", .document = "", .fault = ": The document is empty."},
    {.name = "blank", .document = " \t\r\n", .fault = ": The document is empty."},
    {.name = "onlyByteOrderMark", .document = "\xEF\xBB\xBF", .fault = ": The document is empty."},
    {.name = "twoByteOrderMarks",
     .document = "\xEF\xBB\xBF\xEF\xBB\xBF[]",
     .fault = " @3: Expected a value."},
    {.name = "lineFeedBehindABackslash",
     .document = "[\"a\\\nb\",1]",
     .fault = " @4: A string holds an unescaped control character."},
    {.name = "controlCharacterBehindABackslash",
     .document = "[\"a\\\x01\"]",
     .fault = " @4: A string holds an unescaped control character."},
    {.name = "byteOrderMarkBehindBlank",
     .document = " \xEF\xBB\xBF[]",
     .fault = " @1: Expected a value."},
    {.name = "byteOrderMarkAtEnd",
     .document = "[]\xEF\xBB\xBF",
     .fault = " @2: Something follows the document's value."},
    {.name = "utf16", .document = "[\0]\0"s, .fault = " @1: Expected a value."},
    {.name = "otherBlank", .document = "[\f1]", .fault = " @1: Expected a value."},
    {.name = "noBreakSpace", .document = "[\u00a01]", .fault = " @1: Expected a value."},
    {.name = "nulBehindValue",
     .document = "[]\0"s,
     .fault = " @2: Something follows the document's value."},
    {.name = "nulAsValue", .document = "\0"s, .fault = " @0: Expected a value."},
    {.name = "twoValues",
     .document = "1 2",
     .fault = " @2: Something follows the document's value."},
    {.name = "twoLines",
     .document = "{}\n{}",
     .fault = " @3: Something follows the document's value."},
    {.name = "commaBehindValue",
     .document = "[],",
     .fault = " @2: Something follows the document's value."},
    {.name = "closingBehindValue",
     .document = "[]]",
     .fault = " @2: Something follows the document's value."},
    {.name = "stringBehindString",
     .document = R"("a""b")",
     .fault = " @3: Something follows the document's value."},
    {.name = "wordBehindString",
     .document = R"("a"b)",
     .fault = " @3: Something follows the document's value."},
    {.name = "stringBehindNumber", .document = R"(1"a")", .fault = " @0: Expected a value."},
    {.name = "onlyComma", .document = ",", .fault = " @0: Expected a value."},
    {.name = "onlyColon", .document = ":", .fault = " @0: Expected a value."},
    {.name = "onlyClosing", .document = "]", .fault = " @0: Expected a value."},
    {.name = "comment",
     .document = "[1 /* one */]",
     .fault = " @3: Expected a comma or the end of the array."},
    {.name = "singleQuotes", .document = "'a'", .fault = " @0: Expected a value."},
    {.name = "bareWord", .document = "[a]", .fault = " @1: Expected a value."},
    {.name = "upperCaseLiteral", .document = "[True]", .fault = " @1: Expected a value."},
    {.name = "shortLiteral", .document = "[tru]", .fault = " @1: Expected a value."},
    {.name = "longLiteral", .document = "[nulls]", .fault = " @1: Expected a value."},
    {.name = "literalWithNUL", .document = "[false\0]"s, .fault = " @1: Expected a value."},
    {.name = "literalsWithoutComma",
     .document = "[null null]",
     .fault = " @6: Expected a comma or the end of the array."},
    {.name = "notANumber", .document = "[NaN]", .fault = " @1: Expected a value."},
    {.name = "infinity", .document = "[-Infinity]", .fault = " @1: Expected a value."},
    {.name = "leadingZero", .document = "[01]", .fault = " @1: Expected a value."},
    {.name = "negativeLeadingZero", .document = "[-01]", .fault = " @1: Expected a value."},
    {.name = "plus", .document = "[+1]", .fault = " @1: Expected a value."},
    {.name = "onlyMinus", .document = "[-]", .fault = " @1: Expected a value."},
    {.name = "twoMinus", .document = "[--1]", .fault = " @1: Expected a value."},
    {.name = "minusBlank", .document = "[- 1]", .fault = " @1: Expected a value."},
    {.name = "noWholeDigits", .document = "[.5]", .fault = " @1: Expected a value."},
    {.name = "noFractionDigits", .document = "[1.]", .fault = " @1: Expected a value."},
    {.name = "noFractionDigitsBeforeExponent",
     .document = "[1.e5]",
     .fault = " @1: Expected a value."},
    {.name = "noExponentDigits", .document = "[1e]", .fault = " @1: Expected a value."},
    {.name = "noExponentDigitsBehindSign", .document = "[1e+]", .fault = " @1: Expected a value."},
    {.name = "fractionInExponent", .document = "[1e1.5]", .fault = " @1: Expected a value."},
    {.name = "hexadecimal", .document = "[0x10]", .fault = " @1: Expected a value."},
    {.name = "digitsOfAnotherScript", .document = "[\u0661]", .fault = " @1: Expected a value."},
    {.name = "arrayOpen", .document = "[", .fault = " @1: The document ends early."},
    {.name = "arrayOpenBehindElement", .document = "[1", .fault = " @2: The document ends early."},
    {.name = "arrayOpenBehindComma", .document = "[1, ", .fault = " @4: The document ends early."},
    {.name = "arrayClosedAsObject",
     .document = "[1}",
     .fault = " @2: Expected a comma or the end of the array."},
    {.name = "emptyArrayClosedAsObject", .document = "[}", .fault = " @1: Expected a value."},
    {.name = "trailingCommaInArray", .document = "[1,]", .fault = " @3: Expected a value."},
    {.name = "leadingCommaInArray", .document = "[,1]", .fault = " @1: Expected a value."},
    {.name = "twoCommasInArray", .document = "[1,,2]", .fault = " @3: Expected a value."},
    {.name = "colonInArray",
     .document = R"(["a":1])",
     .fault = " @4: Expected a comma or the end of the array."},
    {.name = "objectOpen", .document = "{", .fault = " @1: The document ends early."},
    {.name = "objectOpenBehindKey",
     .document = R"({"a")",
     .fault = " @4: The document ends early."},
    {.name = "objectOpenBehindColon",
     .document = R"({"a":)",
     .fault = " @5: The document ends early."},
    {.name = "objectOpenBehindValue",
     .document = R"({"a":1)",
     .fault = " @6: The document ends early."},
    {.name = "objectOpenBehindComma",
     .document = R"({"a":1,)",
     .fault = " @7: The document ends early."},
    {.name = "objectClosedAsArray",
     .document = R"({"a":1])",
     .fault = " @6: Expected a comma or the end of the object."},
    {.name = "emptyObjectClosedAsArray", .document = "{]", .fault = " @1: Expected a key."},
    {.name = "trailingCommaInObject", .document = R"({"a":1,})", .fault = " @7: Expected a key."},
    {.name = "leadingCommaInObject", .document = R"({,"a":1})", .fault = " @1: Expected a key."},
    {.name = "noCommaInObject",
     .document = R"({"a":1 "b":2})",
     .fault = " @7: Expected a comma or the end of the object."},
    {.name = "noColon", .document = R"({"a" 1})", .fault = " @5: Expected a colon behind the key."},
    {.name = "commaForColon",
     .document = R"({"a",1})",
     .fault = " @4: Expected a colon behind the key."},
    {.name = "keyOnly", .document = R"({"a"})", .fault = " @4: Expected a colon behind the key."},
    {.name = "noValue", .document = R"({"a":})", .fault = " @5: Expected a value."},
    {.name = "twoColons", .document = R"({"a"::1})", .fault = " @5: Expected a value."},
    {.name = "numberAsKey", .document = "{1:1}", .fault = " @1: Expected a key."},
    {.name = "wordAsKey", .document = "{a:1}", .fault = " @1: Expected a key."},
    {.name = "arrayAsKey", .document = "{[]:1}", .fault = " @1: Expected a key."},
    {.name = "openString", .document = R"(["a)", .fault = " @1: A string does not end."},
    {.name = "onlyQuote", .document = "\"", .fault = " @0: A string does not end."},
    {.name = "escapedClosingQuote",
     .document = R"(["a\"])",
     .fault = " @1: A string does not end."},
    {.name = "openStringBehindOther",
     .document = R"(["\"a", "b])",
     .fault = " @8: A string does not end."},
    {.name = "backslashAtEnd", .document = R"(["\)", .fault = " @1: A string does not end."},
    {.name = "lineBreakInString",
     .document = "[\"ab\n\"]",
     .fault = " @4: A string holds an unescaped control character."},
    {.name = "tabInString",
     .document = "[\"\\\"\t\"]",
     .fault = " @4: A string holds an unescaped control character."},
    {.name = "nulInString",
     .document = "[\"\0\"]"s,
     .fault = " @2: A string holds an unescaped control character."},
    {.name = "controlCharacterInKey",
     .document = "{\"\x1F\":1}",
     .fault = " @2: A string holds an unescaped control character."},
    {.name = "unknownEscape",
     .document = R"([1,"a\x"])",
     .fault = " @3: A string holds an escape that is none of JSON's."},
    {.name = "upperCaseEscape",
     .document = R"(["\N"])",
     .fault = " @1: A string holds an escape that is none of JSON's."},
    {.name = "escapeWithoutDigits",
     .document = R"(["\u"])",
     .fault = " @1: A string holds an escape that is none of JSON's."},
    {.name = "escapeWithThreeDigits",
     .document = R"(["\u00e"])",
     .fault = " @1: A string holds an escape that is none of JSON's."},
    {.name = "escapeWithOtherDigit",
     .document = R"(["\u00g0"])",
     .fault = " @1: A string holds an escape that is none of JSON's."},
    {.name = "loneLeadingSurrogate",
     .document = R"(["\uD834"])",
     .fault = " @1: A string holds an escape that is none of JSON's."},
    {.name = "loneTrailingSurrogate",
     .document = R"(["\uDD1E"])",
     .fault = " @1: A string holds an escape that is none of JSON's."},
    {.name = "surrogatesSwapped",
     .document = R"(["\uDD1E\uD834"])",
     .fault = " @1: A string holds an escape that is none of JSON's."},
    {.name = "twoLeadingSurrogates",
     .document = R"(["\uD834\uD834"])",
     .fault = " @1: A string holds an escape that is none of JSON's."},
    {.name = "surrogateBeforeText",
     .document = R"(["\uD834x"])",
     .fault = " @1: A string holds an escape that is none of JSON's."},
    {.name = "surrogateBeforeOtherEscape",
     .document = R"(["\uD834\n"])",
     .fault = " @1: A string holds an escape that is none of JSON's."},
    {.name = "badEscapeInKey",
     .document = R"({"a":0,"\'":1})",
     .fault = " @7: A string holds an escape that is none of JSON's."},
    {.name = "backslashOutsideString", .document = R"([\n])", .fault = " @1: Expected a value."},
    {.name = "backslashBeforeString",
     .document = R"([\"a"])",
     .fault = " @1: A backslash stands outside of strings."},
    {.name = "backslashBeforeStringWithControlCharacter",
     .document = "[\"\\\"\", \\\"a\", \"\n\"]",
     .fault = " @7: A backslash stands outside of strings."},
    {.name = "controlCharacterInOpenString",
     .document = "[\"\\\"\",\"b\n]",
     .fault = " @8: A string holds an unescaped control character."},
    {.name = "loneContinuation",
     .document = "[\"a\x80\"]",
     .fault = " @3: The document is not UTF-8."},
    {.name = "cutCodePoint",
     .document = "[\"\xE6\x97\"]",
     .fault = " @2: The document is not UTF-8."},
    {.name = "cutCodePointAtEnd",
     .document = "\xE6\x97",
     .fault = " @0: The document is not UTF-8."},
    {.name = "overlongSlash",
     .document = "[\"\xC0\xAF\"]",
     .fault = " @2: The document is not UTF-8."},
    {.name = "surrogateInUTF8",
     .document = "[\"\xED\xA0\x80\"]",
     .fault = " @2: The document is not UTF-8."},
    {.name = "beyondUnicode",
     .document = "[\"\xF4\x90\x80\x80\"]",
     .fault = " @2: The document is not UTF-8."},
    {.name = "latin1", .document = "{\"\xE9\":1}", .fault = " @2: The document is not UTF-8."},
    {.name = "byteThatMarksResolvedStrings",
     .document = "\xFF\"\"",
     .fault = " @0: The document is not UTF-8."},
    {.name = "byteOrderMarkOfUTF16",
     .document = "\xFE\xFF[]",
     .fault = " @0: The document is not UTF-8."},
};

TEST(JSONReaderTest, refusesEverythingElseAndTellsWhere) {
  for (const BadCase& row : badCases) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(faultOfDocument(row.document), "dataCorrupted" + row.fault);
  }
}

TEST(JSONReaderTest, theWholeDocumentIsReadStrictly) {
  for (const BadCase& row : badCases) {
    if (row.document.starts_with("[") && row.document.find('\0') == std::string::npos) {
      SCOPED_TRACE(row.name);
      EXPECT_NE(faultOfDocument(R"({"used":1,"ignored":)" + row.document + "}"), "none");
      EXPECT_NE(faultOfDocument(R"({"ignored":)" + row.document + R"(,"used":1})"), "none");
    }
  }
}

// The search for tokens looks at 64 bytes at a time.
TEST(JSONReaderTest, faultsShowInTheirPlaceWhereverTheyStand) {
  for (const BadCase& row : badCases) {
    const std::size_t at = row.fault.find('@');
    if (at == std::string::npos || row.document.starts_with("\xEF\xBB\xBF")) {
      continue;
    }
    SCOPED_TRACE(row.name);
    const std::size_t colon = row.fault.find(':');
    const std::size_t offset = std::stoul(row.fault.substr(at + 1, colon - at - 1));
    for (std::size_t blanks = 1; blanks <= 130; ++blanks) {
      EXPECT_EQ(faultOfDocument(std::string(blanks, ' ') + row.document),
                "dataCorrupted @" + std::to_string(offset + blanks) + row.fault.substr(colon));
    }
  }
}

TEST(JSONReaderTest, readsTheSameWhereverItStands) {
  for (const GoodCase& row : goodCases) {
    if (row.document.starts_with("\xEF\xBB\xBF")) {
      continue;
    }
    SCOPED_TRACE(row.name);
    for (std::size_t blanks = 1; blanks <= 130; ++blanks) {
      EXPECT_EQ(rewrittenDocument(std::string(blanks, '\n') + row.document), row.rewritten);
    }
  }
}

TEST(JSONReaderTest, byteOrderMarkCountsInOffsets) {
  EXPECT_EQ(ReadDocument("\xEF\xBB\xBF[1]").value().byteOffset(), 3U);
  EXPECT_EQ(faultOfDocument("\xEF\xBB\xBF[1}"),
            "dataCorrupted @5: Expected a comma or the end of the array.");
  EXPECT_EQ(faultOfDocument("\xEF\xBB\xBF[\"\x80\"]"),
            "dataCorrupted @5: The document is not UTF-8.");
}

struct Nesting {
  const char* name;
  std::string_view opening;
  std::string_view closing;
  /// How many levels the opening opens.
  std::size_t levels;
};

constexpr Nesting nestings[] = {
    {.name = "arrays", .opening = "[", .closing = "]", .levels = 1},
    {.name = "arraysBehindElements", .opening = "[0,", .closing = "]", .levels = 1},
    {.name = "objects", .opening = "{\"\":", .closing = "}", .levels = 1},
    {.name = "both", .opening = "[{\"\":", .closing = "}]", .levels = 2},
    {.name = "bothBehindOthers", .opening = "{\"a\":[],\"b\":[0,", .closing = "]}", .levels = 2},
};

TEST(JSONReaderTest, readsFiveHundredAndTwelveLevelsAndNoMore) {
  ASSERT_EQ(deepestJSONNesting, 512U);
  for (const Nesting& row : nestings) {
    SCOPED_TRACE(row.name);
    const std::size_t count = deepestJSONNesting / row.levels;
    const std::string opening = repeated(row.opening, count);
    const std::string closing = repeated(row.closing, count);
    EXPECT_EQ(rewrittenDocument(opening + "0" + closing), opening + "0" + closing);
    const std::string fault = "dataCorrupted @" + std::to_string(opening.size()) +
                              ": Arrays and objects lie too deeply in each other.";
    EXPECT_EQ(faultOfDocument(opening + "[]" + closing), fault);
    EXPECT_EQ(faultOfDocument(opening + "{}" + closing), fault);
  }
}

TEST(JSONReaderTest, levelsThatEndedDoNotCount) {
  const std::string document = "[" + repeated("[[]],{\"\":{}},", 1000) + "0]";
  EXPECT_EQ(rewrittenDocument(document), document);
}

TEST(JSONReaderTest, readsWithoutRecursion) {
  EXPECT_EQ(faultOfDocument(std::string(1'000'000, '[')),
            "dataCorrupted @512: Arrays and objects lie too deeply in each other.");
}

TEST(JSONReaderTest, oneReaderReadsManyDocuments) {
  JSONReader reader;
  std::vector<std::string> documents;
  for (const GoodCase& row : goodCases) {
    documents.push_back(row.document);
    documents.push_back("[" + repeated("[\"\\n\", 1], ", 100) + "{}]");
  }
  documents.push_back("[" + repeated("{\"k\":[true]},", 20'000) + "0]");
  documents.push_back("[]");
  for (std::size_t index = 0; index < documents.size(); ++index) {
    SCOPED_TRACE(index);
    std::string bad = badCases[index % std::size(badCases)].document;
    EXPECT_EQ(faultOf([&] { static_cast<void>(reader.read(bad)); }),
              "dataCorrupted" + badCases[index % std::size(badCases)].fault);
    std::string bytes = documents[index];
    EXPECT_EQ(rewritten(reader.read(bytes)), rewrittenDocument(documents[index]));
  }
}

TEST(JSONReaderTest, answersTheDocumentCases) {
  const std::vector<AnsweredDocument> cases = readAnsweredDocuments("json/json.jsonl");
  EXPECT_EQ(cases.size(), 52U);
  for (const AnsweredDocument& row : cases) {
    SCOPED_TRACE(row.name);
    ASSERT_NE(row.okJSON(), nullptr);
    EXPECT_EQ(faultOfDocument(row.bytes) == "none" ? "true" : "false", *row.okJSON());
  }
}

// Every kind of token, escape and code point, and numbers of many shapes.
const std::string richDocument =
    "\xEF\xBB\xBF{\"a\\u0062\":[0,-1.5e+3,12e-2,1E9],\n\t\"\\\"\\\\\\/\\b\\f\\n\\r\\t\":"
    "{\"\\uD834\\udd1E\":null,\"\":\"\"},\r\n \"\u00e9\u65e5\U0001F600\" : [ true , false,[ ],{ }, "
    "18446744073709551615, -9223372036854775808],\"long\":\"plain text of more than sixty-four "
    "bytes, so that it crosses a block: \\u0000\"}";

class AgreementCounter {
 public:
  void ask(const std::string& document) {
    const JSONAgreement agreement = judge_.ask(document);
    read_ += agreement == JSONAgreement::bothRead ? 1 : 0;
    refused_ += agreement == JSONAgreement::bothRefuse ? 1 : 0;
    EXPECT_NE(agreement, JSONAgreement::differ) << document;
  }

  [[nodiscard]] std::size_t read() const { return read_; }
  [[nodiscard]] std::size_t refused() const { return refused_; }

 private:
  JSONJudge judge_;
  std::size_t read_ = 0;
  std::size_t refused_ = 0;
};

TEST(JSONReaderTest, agreesWithTheJudgeOnTheTables) {
  AgreementCounter counter;
  for (const GoodCase& row : goodCases) {
    counter.ask(row.document);
  }
  EXPECT_EQ(counter.read(), std::size(goodCases));
  for (const BadCase& row : badCases) {
    counter.ask(row.document);
  }
  EXPECT_EQ(counter.refused(), std::size(badCases));
}

TEST(JSONReaderTest, agreesWithTheJudgeOnAllPrefixes) {
  AgreementCounter counter;
  for (std::size_t length = 0; length < richDocument.size(); ++length) {
    counter.ask(richDocument.substr(0, length));
  }
  EXPECT_EQ(counter.refused(), richDocument.size());
  counter.ask(richDocument);
  EXPECT_EQ(counter.read(), 1U);
}

TEST(JSONReaderTest, agreesWithTheJudgeOnAllDocumentsWithoutOneByte) {
  AgreementCounter counter;
  for (std::size_t position = 0; position < richDocument.size(); ++position) {
    std::string document = richDocument;
    counter.ask(document.erase(position, 1));
  }
  EXPECT_GT(counter.read(), 50U);
  EXPECT_GT(counter.refused(), 50U);
}

TEST(JSONReaderTest, agreesWithTheJudgeOnAllDocumentsWithAnotherByte) {
  AgreementCounter counter;
  for (std::size_t position = 0; position < richDocument.size(); ++position) {
    std::string document = richDocument;
    for (int byte = 0; byte <= std::numeric_limits<unsigned char>::max(); ++byte) {
      document[position] = static_cast<char>(byte);
      counter.ask(document);
    }
  }
  EXPECT_GT(counter.read(), 5000U);
  EXPECT_GT(counter.refused(), 5000U);
}

TEST(JSONReaderTest, agreesWithTheJudgeOnAllDocumentsWithOneMoreByte) {
  constexpr std::string_view telling = "\"\\{}[]:,0-.eE+u/tfn \t\n\x01\x7F\x80\xC3\xEF\xFF";
  AgreementCounter counter;
  for (std::size_t position = 0; position <= richDocument.size(); ++position) {
    for (const char byte : telling) {
      std::string document = richDocument;
      counter.ask(document.insert(position, 1, byte));
    }
  }
  EXPECT_GT(counter.read(), 1000U);
  EXPECT_GT(counter.refused(), 1000U);
}

// Resolved in place: what stands before, behind and in a string must come out whole, whatever the
// place of its escapes.
TEST(JSONReaderTest, resolvesEscapesInEveryPlace) {
  constexpr std::array<std::pair<std::string_view, std::string_view>, 5> escapes = {{
      {"\\\"", "\""},
      {"\\\\", "\\"},
      {"\\u0000", {"\0", 1}},
      {"\\u00e9", "\u00e9"},
      {"\\uD83D\\uDE00", "\U0001F600"},
  }};
  for (std::size_t before = 0; before <= 17; ++before) {
    for (std::size_t behind = 0; behind <= 17; ++behind) {
      for (const auto& [escape, resolved] : escapes) {
        const std::string left(before, 'l');
        const std::string right(behind, 'r');
        const std::string content = left + std::string(escape) + right + std::string(escape);
        const ReadDocument document("[\"before\", \"" + content + "\" , 1,{\"" + content +
                                    "\":\"behind\"}]");
        JSONElements elements(document.value());
        EXPECT_EQ(elements.value().text(), "before");
        elements.advance();
        const std::string expected = left + std::string(resolved) + right + std::string(resolved);
        EXPECT_EQ(elements.value().text(), expected);
        EXPECT_EQ(elements.value().byteOffset(), 11U);
        elements.advance();
        EXPECT_EQ(elements.value().number(), "1");
        EXPECT_EQ(elements.value().byteOffset(), 11 + content.size() + 5);
        elements.advance();
        EXPECT_EQ(elements.value().byteOffset(), 11 + content.size() + 7);
        const JSONMembers members(elements.value());
        EXPECT_EQ(members.key(), expected);
        EXPECT_EQ(members.value().text(), "behind");
        EXPECT_EQ(members.value().byteOffset(), 11 + content.size() + 7 + content.size() + 4);
      }
    }
  }
}

TEST(JSONReaderTest, stringsOfNothingButEscapesKeepTheirPlace) {
  const std::string content = repeated("\\u0041", 1000);
  const ReadDocument document("[\"" + content + "\",\"" + content + "\",{}]");
  JSONElements elements(document.value());
  EXPECT_EQ(elements.value().text(), std::string(1000, 'A'));
  EXPECT_EQ(elements.value().byteOffset(), 1U);
  elements.advance();
  EXPECT_EQ(elements.value().text(), std::string(1000, 'A'));
  EXPECT_EQ(elements.value().byteOffset(), 1 + content.size() + 3);
  elements.advance();
  EXPECT_EQ(elements.value().byteOffset(), 1 + 2 * (content.size() + 3));
}

TEST(JSONReaderTest, aResolvedStringMayBeTheWholeDocument) {
  const ReadDocument document(repeated("\\u0041", 20).insert(0, "\"") + "\"");
  EXPECT_EQ(document.value().text(), std::string(20, 'A'));
  EXPECT_EQ(document.value().byteOffset(), 0U);
}

TEST(JSONReaderTest, aFaultBehindResolvedStringsShowsInItsPlace) {
  EXPECT_EQ(faultOfDocument(R"(["\u0041\u0041","\u0041",x])"),
            "dataCorrupted @25: Expected a value.");
  EXPECT_EQ(faultOfDocument(R"(["\u0041\u0041","\u0041\q"])"),
            "dataCorrupted @16: A string holds an escape that is none of JSON's.");
}

}  // namespace
}  // namespace velmora

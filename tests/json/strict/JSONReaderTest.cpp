#include "json/strict/JSONReader.h"
#include "tests/json/Faults.h"
#include "tests/json/JSONCases.h"
#include "tests/json/ReadDocument.h"
#include "tests/support/AnsweredDocuments.h"
#include "tests/support/JSONJudge.h"
#include "tests/support/JSONRewriting.h"
#include "tests/text/Words.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <iterator>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace velmora::internal {
namespace {

/// The document's value, written again without blanks.
std::string rewrittenDocument(const std::string& document) {
  return rewritten(ReadDocument(document).value());
}

std::string faultOfDocument(const std::string& document) {
  return faultOf([&document] { const ReadDocument read(document); });
}

/// The fault of the row's document after this number of blanks.
std::string faultAfter(std::size_t blanks, const RefusedCase& row) {
  return describe(DecodingError(
      DecodingErrorKind::dataCorrupted, row.what,
      row.byteOffset == nowhere ? std::nullopt : std::optional(row.byteOffset + blanks)));
}

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

// Up to 130 blanks precede the document, because the search for tokens reads blocks of 64 bytes.
TEST(JSONReaderTest, readsEveryValidDocumentAtAnyOffset) {
  for (const ReadCase& row : readCases) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(faultOfDocument(row.document), "none");
    for (std::size_t blanks = 0; blanks <= 130; ++blanks) {
      if (blanks == 0 || !row.document.starts_with(byteOrderMark)) {
        EXPECT_EQ(rewrittenDocument(std::string(blanks, '\n') + row.document), row.rewritten);
      }
    }
  }
}

TEST(JSONReaderTest, refusesInvalidDocumentsWithTheirOffset) {
  for (const RefusedCase& row : refusedCases) {
    SCOPED_TRACE(row.name);
    for (std::size_t blanks = 0; blanks <= 130; ++blanks) {
      if (blanks == 0 || !row.document.starts_with(byteOrderMark)) {
        EXPECT_EQ(faultOfDocument(std::string(blanks, ' ') + row.document),
                  faultAfter(blanks, row));
      }
    }
  }
}

TEST(JSONReaderTest, readsTheWholeDocumentStrictly) {
  for (const RefusedCase& row : refusedCases) {
    SCOPED_TRACE(row.name);
    EXPECT_NE(faultOfDocument(R"({"used":1,"ignored":)" + row.document + "}"), "none");
    EXPECT_NE(faultOfDocument(R"({"ignored":)" + row.document + R"(,"used":1})"), "none");
  }
}

TEST(JSONReaderTest, readsNumbersAndNothingSimilar) {
  for (const NumberCase& row : numberCases) {
    for (const std::string& text : wordsOf(row.texts)) {
      SCOPED_TRACE(text);
      EXPECT_EQ(faultOfDocument("[" + text + "]"),
                row.value == noNumber ? "dataCorrupted @1: Expected a value." : "none");
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
  std::string_view opening;
  std::string_view closing;
  /// The number of levels in `opening`.
  std::size_t levels;
};

constexpr Nesting nestings[] = {
    {"[", "]", 1},
    {"[0,", "]", 1},
    {"{\"\":", "}", 1},
    {"[{\"\":", "}]", 2},
    {"{\"a\":[],\"b\":[0,", "]}", 2},
};

TEST(JSONReaderTest, readsAtMostFiveHundredAndTwelveLevels) {
  ASSERT_EQ(maxJSONNesting, 512U);
  for (const Nesting& row : nestings) {
    SCOPED_TRACE(row.opening);
    const std::size_t count = maxJSONNesting / row.levels;
    const std::string opening = repeated(row.opening, count);
    const std::string closing = repeated(row.closing, count);
    EXPECT_EQ(rewrittenDocument(opening + "0" + closing), opening + "0" + closing);
    const std::string fault = "dataCorrupted @" + std::to_string(opening.size()) +
                              ": Arrays and objects lie too deeply in each other.";
    EXPECT_EQ(faultOfDocument(opening + "[]" + closing), fault);
    EXPECT_EQ(faultOfDocument(opening + "{}" + closing), fault);
  }
}

TEST(JSONReaderTest, closedLevelsDoNotCount) {
  const std::string document = "[" + repeated("[[]],{\"\":{}},", 1000) + "0]";
  EXPECT_EQ(rewrittenDocument(document), document);
}

TEST(JSONReaderTest, refusesADocumentThatTakesTooMuchMemory) {
  constexpr std::size_t maxMemory = 100'000;
  struct {
    const char* name;
    std::string document;
    bool isRead;
  } const rows[] = {
      {"longText", '"' + std::string(90'000, 'x') + '"', true},
      {"longNumber", std::string(90'000, '1'), true},
      {"tooLongText", '"' + std::string(maxMemory, 'x') + '"', false},
      {"shortAndDense", "[" + repeated("[],", 900) + "1]", true},
      {"longAndDense", "[" + repeated("[],", 10'000) + "1]", false},
      {"numbers", "[" + repeated("1,", 20'000) + "1]", false},
  };
  for (const auto& row : rows) {
    JSONReader reader(maxMemory);
    std::string document = row.document;
    const std::string fault = faultOf([&] { static_cast<void>(reader.read(document)); });
    EXPECT_EQ(fault, row.isRead ? "none" : "dataCorrupted: The document takes too much memory.")
        << row.name;
    document = row.document;
    EXPECT_EQ(faultOf([&] { static_cast<void>(JSONReader().read(document)); }), "none");
  }
}

TEST(JSONReaderTest, readsWithoutRecursion) {
  EXPECT_EQ(faultOfDocument(std::string(1'000'000, '[')),
            "dataCorrupted @512: Arrays and objects lie too deeply in each other.");
}

TEST(JSONReaderTest, oneReaderReadsManyDocuments) {
  JSONReader reader;
  std::vector<std::string> documents;
  for (const ReadCase& row : readCases) {
    documents.push_back(row.document);
    documents.push_back("[" + repeated("[\"\\n\", 1], ", 100) + "{}]");
  }
  documents.push_back("[" + repeated("{\"k\":[true]},", 20'000) + "0]");
  documents.push_back("[]");
  for (std::size_t index = 0; index < documents.size(); ++index) {
    SCOPED_TRACE(index);
    const RefusedCase& refused = refusedCases[index % std::size(refusedCases)];
    std::string bad = refused.document;
    EXPECT_EQ(faultOf([&] { static_cast<void>(reader.read(bad)); }), faultAfter(0, refused));
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

// Holds every kind of token, escape and code point, and numbers of many forms.
const std::string richDocument =
    "\xEF\xBB\xBF{\"a\\u0062\":[0,-1.5e+3,12e-2,1E9],\n\t\"\\\"\\\\\\/\\b\\f\\n\\r\\t\":"
    "{\"\\uD834\\udd1E\":null,\"\":\"\"},\r\n \"\u00e9\u65e5\U0001F600\" : [ true , false,[ ],{ }, "
    "18446744073709551615, -9223372036854775808],\"long\":\"plain text of more than sixty-four "
    "bytes, so that it crosses a block: \\u0000\"}";

class AgreementCounter {
 public:
  void ask(const std::string& document) {
    const JSONAgreement agreement = judge_.ask(document);
    read += agreement == JSONAgreement::bothRead ? 1 : 0;
    refused += agreement == JSONAgreement::bothRefuse ? 1 : 0;
    EXPECT_NE(agreement, JSONAgreement::differ) << document;
  }

  std::size_t read = 0;
  std::size_t refused = 0;

 private:
  JSONJudge judge_;
};

TEST(JSONReaderTest, agreesWithTheJudgeOnTheTables) {
  AgreementCounter counter;
  for (const ReadCase& row : readCases) {
    counter.ask(row.document);
  }
  EXPECT_EQ(counter.read, std::size(readCases));
  for (const RefusedCase& row : refusedCases) {
    counter.ask(row.document);
  }
  EXPECT_EQ(counter.refused, std::size(refusedCases));
}

TEST(JSONReaderTest, agreesWithTheJudgeOnAllPrefixes) {
  AgreementCounter counter;
  for (std::size_t length = 0; length < richDocument.size(); ++length) {
    counter.ask(richDocument.substr(0, length));
  }
  EXPECT_EQ(counter.refused, richDocument.size());
  counter.ask(richDocument);
  EXPECT_EQ(counter.read, 1U);
}

TEST(JSONReaderTest, agreesWithTheJudgeAfterAnyChangeOfOneByte) {
  constexpr std::string_view telling = "\"\\{}[]:,0-.eE+u/tfn \t\n\x01\x7F\x80\xC3\xEF\xFF";
  AgreementCounter without;
  AgreementCounter with;
  AgreementCounter changed;
  for (std::size_t position = 0; position <= richDocument.size(); ++position) {
    for (const char byte : telling) {
      with.ask(std::string(richDocument).insert(position, 1, byte));
    }
    if (position < richDocument.size()) {
      without.ask(std::string(richDocument).erase(position, 1));
      for (int byte = 0; byte < 256; ++byte) {
        changed.ask(std::string(richDocument).replace(position, 1, 1, static_cast<char>(byte)));
      }
    }
  }
  for (const auto& [counter, minimum] :
       {std::pair{&without, 50}, {&with, 1000}, {&changed, 5000}}) {
    EXPECT_GT(counter->read, minimum);
    EXPECT_GT(counter->refused, minimum);
  }
}

// Escapes are resolved in place. The text around a string must not change, at any position of its
// escapes.
TEST(JSONReaderTest, resolvesEscapesAtEveryPosition) {
  constexpr std::pair<std::string_view, std::string_view> escapes[] = {
      {"\\\"", "\""},
      {"\\\\", "\\"},
      {"\\u0000", {"\0", 1}},
      {"\\u00e9", "\u00e9"},
      {"\\uD83D\\uDE00", "\U0001F600"},
  };
  for (std::size_t before = 0; before <= 17; ++before) {
    for (std::size_t after = 0; after <= 17; ++after) {
      for (const auto& [escape, resolved] : escapes) {
        const std::string left(before, 'l');
        const std::string right(after, 'r');
        const std::string content = left + std::string(escape) + right + std::string(escape);
        const ReadDocument document("[\"before\", \"" + content + "\" , 1,{\"" + content +
                                    "\":\"after\"}]");
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
        EXPECT_EQ(members.value().text(), "after");
        EXPECT_EQ(members.value().byteOffset(), 11 + content.size() + 7 + content.size() + 4);
      }
    }
  }
}

TEST(JSONReaderTest, stringsOfEscapesKeepTheirOffset) {
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

TEST(JSONReaderTest, resolvedStringMayBeTheWholeDocument) {
  const ReadDocument document(repeated("\\u0041", 20).insert(0, "\"") + "\"");
  EXPECT_EQ(document.value().text(), std::string(20, 'A'));
  EXPECT_EQ(document.value().byteOffset(), 0U);
}

TEST(JSONReaderTest, faultAfterResolvedStringsKeepsItsOffset) {
  EXPECT_EQ(faultOfDocument(R"(["\u0041\u0041","\u0041",x])"),
            "dataCorrupted @25: Expected a value.");
  EXPECT_EQ(faultOfDocument(R"(["\u0041\u0041","\u0041\q"])"),
            "dataCorrupted @16: A string holds an escape that is none of JSON's.");
}

}  // namespace
}  // namespace velmora::internal

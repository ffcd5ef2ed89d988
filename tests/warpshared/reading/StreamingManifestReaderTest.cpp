#include "tests/json/JSONCases.h"
#include "tests/warpshared/ManifestCases.h"
#include "tests/warpshared/PlainManifests.h"
#include "warpshared/reading/StreamingManifestReader.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace velmora::internal {
namespace {

using std::string_literals::operator""s;

const JSONTree twoEntriesDocument =
    plainManifestDocument({plainEntryDocument("/a/x"), plainEntryDocument("/a/y")});
const std::string twoEntries = twoEntriesDocument.text();
const std::string noEntries = plainManifestDocument().text();
const JSONStyle pretty = jsonStyles.back();

/// The manifest with its entries before its other members.
std::string entriesFirst(const JSONStyle& style) {
  JSONTree manifest = twoEntriesDocument;
  JSONTree::Object& members = manifest.members();
  std::rotate(members.begin(), members.end() - 1, members.end());
  return manifest.text(style);
}

std::string withCarriageReturns(std::string text) {
  for (std::size_t place = 0; (place = text.find('\n', place)) != std::string::npos; place += 2) {
    text.insert(place, "\r");
  }
  return text;
}

std::string withALineBreakAfterEachToken(std::string_view document) {
  std::string text;
  bool isInString = false;
  for (const char byte : document) {
    isInString = isInString != (byte == '"');
    text += byte;
    text += !isInString && std::string_view("{}[]:,\"").find(byte) != std::string_view::npos ? "\n"
                                                                                             : "";
  }
  return text;
}

/// `text` with the first `old` replaced. `old` must exist.
std::string replaced(std::string text, std::string_view old, std::string_view by) {
  const std::size_t place = text.find(old);
  if (place == std::string::npos) {
    throw std::out_of_range("no " + std::string(old));
  }
  return text.replace(place, old.size(), by);
}

std::string replaced(std::string_view old, std::string_view by) {
  return replaced(twoEntries, old, by);
}

/// Values of unknown keys.
const std::string longArray = "[" + repeated("0,-1.5e9, [null,true],{},\n", 40) + "[]]";
const std::string longObject = "{" + repeated(R"("a":{"b":"},{","\u00e9":[]} , )", 30) + "\"\":1}";
const std::string longText = '"' + repeated(R"(text \n \ud83d\ude00 },{\" )", 40) + '"';
const std::string deepValue = repeated("[{\"a\":", 200) + "1" + repeated("}]", 200);

/// twoEntries with an unknown member of this value before the member that begins with `place`.
std::string withUnknown(std::string_view place, std::string_view value) {
  return replaced(place, "\"unknown\" :\n " + std::string(value) + "," + std::string(place));
}

/// A manifest as text.
struct TextCase {
  const char* name;
  std::string text;
  bool isAccepted = false;
};

const std::string blanks(300, ' ');

const std::vector<TextCase> texts = {
    {"compact", twoEntries, true},
    {"pretty", twoEntriesDocument.text(pretty), true},
    {"carriageReturns", withCarriageReturns(twoEntriesDocument.text(pretty)), true},
    {"entriesFirst", entriesFirst(jsonStyles.front()), true},
    {"entriesFirstPretty", entriesFirst(pretty), true},
    {"noEntries", noEntries, true},
    {"noEntriesPretty", plainManifestDocument().text(pretty), true},
    {"noEntriesWithLineBreaks", replaced(noEntries, "\"entries\":[]", "\"entries\":[\n\n  ]"),
     true},
    {"noEntriesWithBlanksAndLineBreaks",
     replaced(noEntries, "\"entries\":[]", "\"entries\":[\n" + blanks + "\n" + blanks + "]"), true},
    {"blanksBefore", blanks + "\n" + twoEntries, true},
    {"blanksAfter", twoEntries + "\n" + blanks + "\n" + blanks, true},
    {"blanksBetweenEntries", replaced("},{", "}" + blanks + ",\n" + blanks + "{"), true},
    {"lineBreakAfterEachToken", withALineBreakAfterEachToken(twoEntries), true},
    {"cutsInAPath", replaced("/a/x", R"(/a/},{\"b},{\"c\\},{)"), true},
    {"onlyCutsInAPath",
     replaced(replaced("/a/x", R"(/a/x\\\"},{\"version\":5,\"x\":\")"), "},{", "}, {"), true},
    {"longPath", replaced("/a/x", "/a/" + std::string(2000, 'x')), true},
    {"letterAfterEntries", replaced("}]", "}x]")},
    {"noCutAtAll", replaced("},{", "}, {"), true},
    {"unknownArray", withUnknown("\"version\"", longArray), true},
    {"unknownArrayInAnEntry", withUnknown("\"kind\"", longArray), true},
    {"unknownObject", withUnknown("\"warpID\"", longObject), true},
    {"unknownObjectInTheRoot", withUnknown("\"absolutePath\":\"/a\"", longObject), true},
    {"unknownText", withUnknown("\"entries\"", longText), true},
    {"unknownTextInAnEntry", withUnknown("\"absolutePath\":\"/a/y\"", longText), true},
    {"unknownNumber", withUnknown("\"version\"", std::string(300, '1')), true},
    {"unknownDeepValue", withUnknown("\"size\"", deepValue), true},
    {"unknownKeyThatIsLong", replaced("\"size\"", longText + ":0,\"size\""), true},
    {"unknownMembersInARow",
     replaced("\"size\"", "\"x\":" + longArray + ",\"y\":" + longText + ",\"z\":1,\"size\""), true},
    {"laterDuplicatesOfOtherTypes",
     replaced(",\"warpID\"", ",\"version\":" + longArray + ",\"version\":{},\"warpID\""), true},
    {"secondListsOfEntries",
     replaced(noEntries, "\"entries\":[]",
              "\"entries\":[],\"entries\":[1],\"entries\":" + longObject),
     true},
    {"unknownArrayThatIsBroken", withUnknown("\"version\"", longArray + "]")},
    {"unknownArrayWithAFaultAtItsEnd", withUnknown("\"kind\"", replaced(longArray, "[]]", "[}]"))},
    {"unknownTextWithABadEscapeAtItsEnd",
     withUnknown("\"kind\"", longText.substr(0, longText.size() - 1) + "\\x\"")},
    {"unknownTextWithHalfAPairAtItsEnd",
     withUnknown("\"kind\"", longText.substr(0, longText.size() - 1) + "\\ud83d\"")},
    {"unknownTextThatIsNotUTF8",
     withUnknown("\"kind\"", longText.substr(0, longText.size() - 1) + "\xE2\x82\"")},
    {"unknownTextWithALineBreak",
     withUnknown("\"kind\"", longText.substr(0, longText.size() - 1) + "\n\"")},
    {"unknownValueThatIsTooDeep", withUnknown("\"size\"", repeated("[", 511) + repeated("]", 511))},
    {"unknownNumberThatIsNone", withUnknown("\"version\"", std::string(300, '1') + "-")},
    {"empty", ""},
    {"blanksOnly", blanks},
    {"lineBreaksOnly", std::string(300, '\n')},
    {"nothing", "{}"},
    {"list", "[" + twoEntries + "]"},
    {"twice", twoEntries + "\n" + twoEntries},
    {"byteOrderMark", "\xEF\xBB\xBF" + twoEntries, true},
    {"byteOrderMarkTwice", "\xEF\xBB\xBF\xEF\xBB\xBF" + twoEntries},
    {"moreTextAfter", twoEntries + "\n" + blanks + "x"},
    {"braceAfter", twoEntries + "\n}"},
    {"commaAfter", twoEntries + ","},
    {"NULAfter", twoEntries + "\0"s},
    {"NULAndBlanksAfter", twoEntries + "\n\0\n"s},
    {"NULBeforeAnEntry", replaced("},{", "},\0{"s)},
    {"NULInAString", replaced("/a/x", "/a/x\0"s)},
    {"lineBreakInAString", replaced("/a/x", "/a/\nx")},
    {"tabInAString", replaced("/a/x", "/a/\tx")},
    {"cutInAStringThatDoesNotEnd", replaced("/a/x\"", "/a/x},{\"b")},
    {"quotesAroundALineBreak", replaced("/a/x", "\n\"\"\n")},
    {"noEndOfTheLastString", twoEntries + "\""},
    {"notUTF8InAString", replaced("/a/x", "/a/\xFF")},
    {"notUTF8OverALineBreak", replaced("},{", "},\xC3\n\xA9{")},
    {"notUTF8OverACut", replaced("},{", "\xE2\x82},{")},
    {"notUTF8After", twoEntries + "\n\xFF"},
    {"cutCodePointAtTheEnd", twoEntries + "\xE6\x97"},
    {"cutCodePointAfterALineBreak", twoEntries + "\n\xE6\x97"},
    {"cutCodePointBeforeALineBreak", replaced("},{", "},\xE6\x97\n{")},
    {"cutCodePointInAPath", replaced("/a/x", "/a/x\xE6\x97")},
    {"noDate", replaced("2025-03-01T12:00:00Z", "2025-03-01")},
    {"loneSurrogateForADate", replaced("\"2025-03-01T12:00:00Z\"", R"("\ud800")")},
    {"loneSurrogateAfterADate", replaced("12:00:00Z", R"(12:00:00Z\ud800)")},
    {"escapedDate", replaced("12:00:00Z", R"(12:00:00\u005a)"), true},
    {"twoCommasBetweenEntries", replaced("},{", "},,{")},
    {"twoCommasWithALineBreak", replaced("},{", "},\n,{")},
    {"noCommaBetweenEntries", replaced("},{", "}\n{")},
    {"commaAfterTheLastEntry", replaced("}]", "},\n]")},
    {"commaBeforeTheFirstEntry", replaced("\"entries\":[", "\"entries\":[\n,")},
    {"commaForNoEntry", replaced(noEntries, "\"entries\":[]", "\"entries\":[\n,\n]")},
    {"endOfTheListTwice", replaced("}]", "}]\n]")},
    {"braceForTheListsEnd", replaced("}]", "}\n}")},
    {"commaAfterTheLastMember", replaced(noEntries, "\"entries\":[]", "\"entries\":[],\n")},
    {"commaBeforeTheFirstMember", replaced("{", "{\n,")},
    {"braceForAComma", replaced(",\"warpID\"", "\n{\"warpID\"")},
    {"numberOverALineBreak", replaced("\"size\":1000", "\"size\":10\n00")},
    {"literalOverALineBreak", replaced("true", "tr\nue")},
    {"lineFeedForBackslash", replaced("\"version\"", "\\\n\"version\"")},
    {"formFeed", replaced("},{", "},\f{")},
    {"formFeedForAComma", replaced(",\"warpID\"", "\f\"warpID\"")},
    {"substituteForAColon", replaced("\"warpID\":", "\"warpID\"\x1A")},
    {"verticalTab", replaced("},{", "},\v{")},
    {"noBreakSpace", replaced("},{", "},\u00a0{")},
    {"commentAfter", twoEntries + "// end"},
};

TEST(StreamingManifestReaderTest, readsTheSameForAnyChunkLength) {
  for (const auto& [name, text, isAccepted] : texts) {
    SCOPED_TRACE(name);
    ManifestReaders readers;
    const ManifestReading expected = isAccepted ? readers.diagnosed(text) : std::nullopt;
    EXPECT_EQ(expected.has_value(), isAccepted);
    expectStreamed(expected, readers, text, text.size() + 1);
    for (std::size_t length = 1; length < text.size() + 150; length += length < 40 ? 1 : 149) {
      expectStreamed(expected, readers, text, length);
    }
  }
}

TEST(StreamingManifestReaderTest, acceptsNoIncompleteDocument) {
  ManifestReaders readers;
  for (const std::string& text : {twoEntries, twoEntriesDocument.text(pretty)}) {
    for (std::size_t length = 0; length < text.size(); ++length) {
      std::string beginning = text.substr(0, length);
      ASSERT_EQ(readers.streamed(beginning), std::nullopt) << length;
      ASSERT_EQ(readers.streamed(beginning, 50), std::nullopt) << length;
    }
  }
}

TEST(StreamingManifestReaderTest, readsSeveralDocumentsInTurn) {
  ManifestReaders readers;
  for (const TextCase& before : texts) {
    for (std::string text : {twoEntries, entriesFirst(pretty), manifestDocument().text()}) {
      std::string bytes = before.text;
      EXPECT_EQ(readers.streamed(bytes, 64).has_value(), before.isAccepted) << before.name;
      const ManifestReading reading = readers.streamed(text);
      ASSERT_TRUE(reading.has_value()) << before.name;
      EXPECT_EQ(reading, readers.diagnosed(text)) << before.name;
    }
  }
}

std::string numberedPath(std::size_t number) { return "/a/" + std::to_string(number); }

/// A manifest of `count` entries, in which entry `second` has the path of entry `first`.
std::string withDuplicatePath(std::size_t count, std::size_t first, std::size_t second) {
  return plainManifestText(
      count, [=](std::size_t number) { return numberedPath(number == second ? first : number); });
}

TEST(StreamingManifestReaderTest, findsADuplicatePathAmongFewOrMany) {
  for (const std::size_t count : {2U, 1023U, 1024U, 1025U, 2500U}) {
    SCOPED_TRACE(count);
    ManifestReaders readers;
    std::string text = plainManifestText(count, numberedPath);
    const ManifestReading reading = readers.streamed(text);
    ASSERT_TRUE(reading.has_value());
    EXPECT_EQ(reading, readers.diagnosed(text));
    for (const auto& [first, second] : {std::pair(std::size_t{0}, std::size_t{1}),
                                        {0, count - 1},
                                        {(count - 1) / 2, count - 1}}) {
      text = withDuplicatePath(count, first, second);
      EXPECT_EQ(readers.streamed(text), std::nullopt) << first << ' ' << second;
    }
  }
}

TEST(StreamingManifestReaderTest, visitsEachEntryOnceInOrder) {
  const std::string text = plainManifestText(50, numberedPath);
  for (const std::size_t chunkLength : {1U, 100U, 500U, 1000U, 3000U, 100'000U}) {
    ChunkBuffer memory;
    StreamingManifestReader reader;
    std::size_t number = 0;
    const auto read = reader.read(
        [&] {
          return std::make_unique<ChunkedDocument>(portionsOf(text, 1000), memory, chunkLength);
        },
        {.begin = [] {},
         .sample = [](TextView) {},
         .entry =
             [&](const WarpSharedEntry<TextView>& entry) {
               EXPECT_EQ(entry.relativePath, numberedPath(number++));
             }});
    EXPECT_TRUE(read.has_value());
    EXPECT_EQ(number, 50);
  }
}

/// A stream that repeats a text for ever after its beginning.
ChunkedDocument::ReadSome endless(std::string beginning, std::string repeatedText) {
  return [text = std::move(beginning), repeatedText = std::move(repeatedText)](
             char* room, std::size_t size) mutable {
    while (text.size() < size) {
      text += repeatedText;
    }
    const std::size_t count = text.copy(room, size);
    text.erase(0, count);
    return count;
  };
}

/// `text` up to and with the first `last`.
std::string through(const std::string& text, std::string_view last) {
  return text.substr(0, text.find(last) + last.size());
}

TEST(StreamingManifestReaderTest, refusesWhatDoesNotFitIntoItsMemory) {
  const std::string inAnEntry = through(twoEntries, "\"kind\":\"file\",");
  struct {
    const char* name;
    std::string beginning;
    std::string repeatedText;
  } const rows[] = {
      {"textOfTheManifest", "{\"warpID\":\"", "x"},
      {"sample", "{\"verificationSampleAbsolutePaths\":[\"/", "x"},
      {"numberOfTheManifest", "{\"version\":", "4"},
      {"unknownKey", "{\"", "x"},
      {"unknownNumber", "{\"x\":", "1"},
      {"textOfAnEntry", inAnEntry + "\"aclText\":\"", "x"},
      {"listOfAnEntry", inAnEntry + "\"sparseExtents\":[",
       R"({"logicalOffset":0,"storedOffset":0,"length":0},)"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    ManifestReaders readers;
    EXPECT_THROW(readers.streamedOnce(endless(row.beginning, row.repeatedText)), std::length_error);
  }
}

TEST(StreamingManifestReaderTest, refusesTooManyPaths) {
  std::size_t number = 0;
  std::string text = "{\"verificationSampleAbsolutePaths\":[";
  ManifestReaders readers;
  EXPECT_THROW(readers.streamedOnce([&](char* room, std::size_t size) {
    while (text.size() < size) {
      text += "\"/" + std::to_string(number++) + "\",";
    }
    const std::size_t count = text.copy(room, size);
    text.erase(0, count);
    return count;
  }),
               std::length_error);
  EXPECT_GT(number, maxStreamedPathCount);
}

TEST(StreamingManifestReaderTest, refusesAtTheFirstChunkWhatIsNoManifest) {
  struct {
    const char* name;
    std::string beginning;
    std::string repeatedText;
  } const rows[] = {
      {"zeros", "", std::string(1, '\0')},
      {"brackets", "", "["},
      {"objects", "", "{\"a\":"},
      {"numbers", "", "1,"},
      {"digits", "", "1"},
      {"text", "\"", "x"},
      {"letters", "{\"version\":4,\"x\":", "x"},
      {"otherVersionOfAnotherType", "{\"version\":\"4\",", "\"x\":1,"},
      {"entryWithoutFields", "{\"entries\":[{}", " "},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    std::size_t readLength = 0;
    const ChunkedDocument::ReadSome readSome = endless(row.beginning, row.repeatedText);
    ManifestReaders readers;
    EXPECT_EQ(readers.streamedOnce([&](char* room, std::size_t size) {
      readLength += size;
      return readSome(room, size);
    }),
              std::nullopt);
    EXPECT_LE(readLength, 2 * documentChunkLength);
  }
}

TEST(StreamingManifestReaderTest, passesOnExceptions) {
  std::string text = twoEntries;
  ChunkBuffer memory;
  StreamingManifestReader reader;
  const auto open = [&] { return std::make_unique<ChunkedDocument>(text, memory); };
  const ManifestVisitor visitor = {
      .begin = [] {}, .sample = [](TextView) {}, .entry = [](const auto&) {}};
  ManifestVisitor failing = visitor;
  failing.entry = [](const auto&) { throw std::domain_error("enough"); };
  EXPECT_THROW(static_cast<void>(reader.read(open, failing)), std::domain_error);
  const auto openBroken = [&] {
    return std::make_unique<ChunkedDocument>(
        [](char*, std::size_t) -> std::size_t { throw std::domain_error("gone"); }, memory);
  };
  EXPECT_THROW(static_cast<void>(reader.read(openBroken, visitor)), std::domain_error);
  EXPECT_EQ(text, twoEntries);
  EXPECT_TRUE(reader.read(open, visitor).has_value());
}

}  // namespace
}  // namespace velmora::internal

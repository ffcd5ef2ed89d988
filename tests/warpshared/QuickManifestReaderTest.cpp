#include "tests/support/RowName.h"
#include "tests/warpshared/ManifestReadings.h"
#include "tests/warpshared/PlainManifests.h"
#include "tests/warpshared/SharedWarpDocuments.h"
#include "warpshared/QuickManifestReader.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <functional>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace velmora {
namespace {

using std::string_literals::operator""s;

using Change = std::function<void(JSONTree&)>;

/// In memory, which keeps its bytes, and from a stream.
void expectReading(const std::string& document, const ManifestReading& expected,
                   ManifestReaders& readers, std::size_t pieceLength = documentPieceLength) {
  std::string bytes = document;
  EXPECT_EQ(readers.quickly(bytes, pieceLength), expected) << pieceLength;
  EXPECT_TRUE(bytes == document) << pieceLength;
  for (const std::size_t portion : {1U, 2U, 7U, 100'000U}) {
    EXPECT_EQ(readers.quicklyFromStream(document, portion, pieceLength), expected)
        << pieceLength << ' ' << portion;
  }
}

struct AcceptedCase {
  const char* name;
  Change change;
};

class AcceptedManifests : public testing::TestWithParam<AcceptedCase> {};

TEST_P(AcceptedManifests, areReadAsTheyAreInEveryStyle) {
  JSONTree document = manifestDocument();
  GetParam().change(document);
  ManifestReaders readers;
  for (const JSONStyle& style : jsonStyles) {
    SCOPED_TRACE(style.name);
    const std::string text = document.text(style);
    const ManifestReading expected = readers.exactly(text);
    ASSERT_TRUE(expected.has_value());
    expectReading(text, expected, readers);
    expectReading(text, expected, readers, 100);
  }
}

Change setting(const char* key, const char* text) {
  return [=](JSONTree& manifest) { manifest[key] = text; };
}

/// Of the first entry.
Change settingOfAnEntry(const char* key, const char* text) {
  return [=](JSONTree& manifest) { manifest["entries"][0][key] = text; };
}

/// A change that leaves one entry, which is no hard link.
void leaveOneEntry(JSONTree& manifest) {
  manifest["entries"].elements().pop_back();
  manifest["entries"][0].erase("hardLinkIdentity");
  manifest["entries"][0].erase("hardLinkPrimaryPath");
}

/// A change that gives both entries other paths and no link.
Change naming(const std::string& first, const std::string& second) {
  return [=](JSONTree& manifest) {
    manifest["entries"][0]["absolutePath"] = '"' + first + '"';
    manifest["entries"][1]["absolutePath"] = '"' + second + '"';
    manifest["entries"][0].erase("hardLinkPrimaryPath");
  };
}

/// A change that swaps the entries, so that a primary comes before what is linked to it.
void swapEntries(JSONTree& manifest) { std::swap(manifest["entries"][0], manifest["entries"][1]); }

INSTANTIATE_TEST_SUITE_P(
    Table, AcceptedManifests,
    testing::Values(
        AcceptedCase{"everyField", [](JSONTree&) {}},
        AcceptedCase{"plain",
                     [](JSONTree& manifest) {
                       manifest = plainManifestDocument({plainEntryDocument("/a/x")});
                     }},
        AcceptedCase{"nothingInIt", [](JSONTree& manifest) { manifest = plainManifestDocument(); }},
        AcceptedCase{"nulls",
                     [](JSONTree& manifest) {
                       leaveOneEntry(manifest);
                       manifest["uploadedAt"] = "null";
                       manifest["failureDescription"] = "null";
                       manifest["entries"][0]["payloadKey"] = "null";
                       manifest["entries"][0]["aclText"] = "null";
                       manifest["entries"][0]["birthTimeNanoseconds"] = "null";
                     }},
        AcceptedCase{"oneEntry", leaveOneEntry}, AcceptedCase{"primaryBefore", swapEntries},
        AcceptedCase{"linkInOtherNormalForm",
                     [](JSONTree& manifest) {
                       manifest["entries"][0]["hardLinkPrimaryPath"] = "\"/Users/a/Docs/e\u0301\"";
                       manifest["entries"][1]["absolutePath"] = "\"/Users/a/Docs/\u00e9\"";
                     }},
        AcceptedCase{"linksInACircle",
                     [](JSONTree& manifest) {
                       manifest["entries"][1]["hardLinkPrimaryPath"] = "\"/Users/a/Docs/file\"";
                     }},
        AcceptedCase{"strayLinkOfTheRootEntry",
                     [](JSONTree& manifest) {
                       manifest["rootMetadata"]["hardLinkPrimaryPath"] = "\"/elsewhere\"";
                     }},
        AcceptedCase{"folderIsTheRoot",
                     [](JSONTree& manifest) {
                       leaveOneEntry(manifest);
                       manifest["originalFolderPath"] = "\"/\"";
                       manifest["rootMetadata"]["absolutePath"] = "\"/\"";
                     }},
        AcceptedCase{"folderInOtherNormalForm",
                     [](JSONTree& manifest) {
                       leaveOneEntry(manifest);
                       manifest["originalFolderPath"] = "\"/e\u0301\"";
                       manifest["rootMetadata"]["absolutePath"] = "\"/\u00e9\"";
                       manifest["entries"][0]["absolutePath"] = "\"/\u00e9/x\"";
                       manifest["verificationSampleAbsolutePaths"] =
                           JSONTree::Array{"\"/\u00e9/x\"", "\"/e\u0301/y\""};
                     }},
        AcceptedCase{"sampleThatIsNoEntry",
                     [](JSONTree& manifest) {
                       manifest["verificationSampleAbsolutePaths"][0] = "\"/Users/a/Docs/none\"";
                     }},
        AcceptedCase{"escapesEverywhere", naming(R"(/Users/\u0061/Docs/\"\\\b\f\n\r\t)",
                                                 R"(/Users/a/Docs/\ud83d\ude00\u0001\u00e9)")},
        AcceptedCase{"looksLikeTokens",
                     naming(R"(/Users/a/Docs/},{\"a\":[1],\n)", R"(/Users/a/Docs/\"},{\"b\":)")},
        AcceptedCase{"extremeNumbers",
                     [](JSONTree& manifest) {
                       JSONTree& entry = manifest["entries"][0];
                       entry["modificationTimeNanoseconds"] = "-9223372036854775808";
                       entry["statusChangeTimeNanoseconds"] = "9223372036854775807";
                       entry["birthTimeNanoseconds"] = "-0";
                       entry["ownerUserID"] = "4294967295";
                       entry["ownerGroupID"] = "0";
                       entry["posixPermissions"] = "65535";
                       entry["hardLinkIdentity"]["deviceID"] = "18446744073709551615";
                     }},
        AcceptedCase{"emptyTexts",
                     [](JSONTree& manifest) {
                       manifest["displayName"] = "\"\"";
                       manifest["failureDescription"] = "\"\"";
                       manifest["entries"][0]["displayName"] = "\"\"";
                       manifest["entries"][0]["aclText"] = "\"\"";
                     }},
        AcceptedCase{"longTexts",
                     [](JSONTree& manifest) {
                       const std::string text(20'000, 'x');
                       manifest["displayName"] = '"' + text + '"';
                       manifest["entries"][0]["aclText"] = '"' + text + "\\n\"";
                       manifest["entries"][1]["symlinkTarget"] = '"' + text + '"';
                     }}),
    RowName());

struct GivenUpCase {
  const char* name;
  Change change;
  /// Whether it is a manifest all the same.
  bool isValid = false;
};

class GivenUpManifests : public testing::TestWithParam<GivenUpCase> {};

TEST_P(GivenUpManifests, areGivenUpInEveryStyle) {
  JSONTree document = manifestDocument();
  GetParam().change(document);
  ManifestReaders readers;
  for (const JSONStyle& style : jsonStyles) {
    SCOPED_TRACE(style.name);
    const std::string text = document.text(style);
    EXPECT_EQ(readers.exactly(text).has_value(), GetParam().isValid);
    expectReading(text, std::nullopt, readers);
    expectReading(text, std::nullopt, readers, 100);
  }
}

Change sampling(std::vector<std::string> paths) {
  return [paths = std::move(paths)](JSONTree& manifest) {
    JSONTree::Array samples;
    for (const std::string& path : paths) {
      samples.emplace_back('"' + path + '"');
    }
    manifest["verificationSampleAbsolutePaths"] = samples;
  };
}

const std::vector<GivenUpCase> validButOdd = {
    {"unknownKey", [](JSONTree& manifest) { manifest.members().emplace_back("more", "1"); }, true},
    {"unknownKeyOfAnEntry",
     [](JSONTree& manifest) { manifest["entries"][1].members().emplace_back("more", "{}"); }, true},
    {"keyTwice", [](JSONTree& manifest) { manifest.members().emplace_back("version", "4"); }, true},
    {"entriesTwice",
     [](JSONTree& manifest) { manifest.members().emplace_back("entries", manifest["entries"]); },
     true},
    {"keyTwiceInAnEntry",
     [](JSONTree& manifest) { manifest["entries"][1].members().emplace_back("size", "1000"); },
     true},
    {"versionInOtherWriting", setting("version", "40e-1"), true},
    {"versionWithFraction", setting("version", "4.0"), true},
    {"sizeWithFraction", settingOfAnEntry("size", "1000.0000"), true},
    {"sizeWithExponent", settingOfAnEntry("size", "1e3"), true},
    {"sizeOfManyDigits", settingOfAnEntry("size", "1000.0000000000000000000000"), true},
    {"pathOfTheRoot", naming("/Users/a/Docs", "/Users/a/Docs/x"), true},
    {"markOnASeparatorFarBelow", naming("/Users/a/Docs/x/\u0301y", "/Users/a/Docs/x/z"), true},
    {"primaryWithoutIdentity",
     [](JSONTree& manifest) { manifest["entries"][1].erase("hardLinkIdentity"); }, true},
    {"primaryWithNullIdentity",
     [](JSONTree& manifest) { manifest["entries"][1]["hardLinkIdentity"] = "null"; }, true},
};

const std::vector<GivenUpCase> notValid = {
    {"version3", setting("version", "3")},
    {"versionBeyond", setting("version", "18446744073709551620")},
    {"versionWithEightDigitsAndAFraction", setting("version", "4.000001")},
    {"sizeWithAFractionOfManyDigits", settingOfAnEntry("size", "1234.678")},
    {"sizeWithAMinusInside", settingOfAnEntry("size", "1234-678")},
    {"sizeWithASlashInside", settingOfAnEntry("size", "1234/678")},
    {"negativeSize", settingOfAnEntry("size", "-1")},
    {"negativeStoredSize", settingOfAnEntry("storedSize", "-1")},
    {"emptyWarpID", setting("warpID", "\"\"")},
    {"emptyDeviceID", setting("deviceID", "\"\"")},
    {"absoluteManifestKey", setting("manifestKey", "\"/a\"")},
    {"relativeFolder", setting("originalFolderPath", "\"Users/a/Docs\"")},
    {"unknownStatus", setting("status", "\"Verified\"")},
    {"dateWithFraction", setting("createdAt", "\"2025-03-01T12:00:00.123Z\"")},
    {"noDate", setting("uploadedAt", "\"\"")},
    {"nullForText", setting("displayName", "null")},
    {"numberForText", setting("displayName", "1")},
    {"textForNumber", setting("version", "\"4\"")},
    {"nullForEntries", setting("entries", "null")},
    {"objectForEntries", setting("entries", "{}")},
    {"nullForRoot", setting("rootMetadata", "null")},
    {"keyMissing", [](JSONTree& manifest) { manifest.erase("deviceID"); }},
    {"entriesMissing", [](JSONTree& manifest) { manifest.erase("entries"); }},
    {"rootMissing", [](JSONTree& manifest) { manifest.erase("rootMetadata"); }},
    {"keyMissingInAnEntry", [](JSONTree& manifest) { manifest["entries"][1].erase("kind"); }},
    {"entryNull", [](JSONTree& manifest) { manifest["entries"][1] = "null"; }},
    {"entryEmpty", [](JSONTree& manifest) { manifest["entries"][1] = "{}"; }},
    {"entriesInAnotherList",
     [](JSONTree& manifest) { manifest["entries"] = JSONTree::Array{manifest["entries"]}; }},
    {"sampleNull",
     [](JSONTree& manifest) { manifest["verificationSampleAbsolutePaths"][1] = "null"; }},
    {"rootOfAnotherFolder",
     [](JSONTree& manifest) { manifest["rootMetadata"]["absolutePath"] = "\"/Users/a\""; }},
    {"faultyRoot", [](JSONTree& manifest) { manifest["rootMetadata"]["size"] = "-1"; }},
    {"pathTwice", naming("/Users/a/Docs/x", "/Users/a/Docs/x")},
    {"pathTwiceByAnEscape", naming("/Users/a/Docs/x", R"(/Users/a/Docs/\u0078)")},
    {"pathTwiceInOtherNormalForm", naming("/Users/a/Docs/e\u0301", "/Users/a/Docs/\u00e9")},
    {"pathOfASibling", naming("/Users/a/Docs/x", "/Users/a/Docsx")},
    {"pathOfTheParent", naming("/Users/a/Docs/x", "/Users/a")},
    {"markOnTheSeparator", naming("/Users/a/Docs/x", "/Users/a/Docs/\u0301x")},
    {"pathWithDot", naming("/Users/a/Docs/x", "/Users/a/Docs/./y")},
    {"pathWithNUL", naming("/Users/a/Docs/x", "/Users/a/Docs/\\u0000")},
    {"halfOfAPair", naming("/Users/a/Docs/x", "/Users/a/Docs/\\ud83d")},
    {"unknownEscape", naming("/Users/a/Docs/x", "/Users/a/Docs/\\x")},
    {"sampleTwice", sampling({"/Users/a/Docs/x", "/Users/a/Docs/x"})},
    {"sampleTwiceInOtherNormalForm", sampling({"/Users/a/Docs/e\u0301", "/Users/a/Docs/\u00e9"})},
    {"sampleElsewhere", sampling({"/Users/a/Docsx"})},
    {"sampleWithDotDot", sampling({"/Users/a/Docs/../Docs/x"})},
    {"sampleRelative", sampling({"Users/a/Docs/x"})},
    {"linkToItself", settingOfAnEntry("hardLinkPrimaryPath", "\"/Users/a/Docs/file\"")},
    {"linkToItselfInOtherNormalForm",
     [](JSONTree& manifest) {
       manifest["entries"][0]["absolutePath"] = "\"/Users/a/Docs/e\u0301\"";
       manifest["entries"][0]["hardLinkPrimaryPath"] = "\"/Users/a/Docs/\u00e9\"";
     }},
    {"linkToNothing", settingOfAnEntry("hardLinkPrimaryPath", "\"/Users/a/Docs/none\"")},
    {"linkToTheRoot", settingOfAnEntry("hardLinkPrimaryPath", "\"/Users/a/Docs\"")},
    {"linkToAPathInOtherLetterCase",
     settingOfAnEntry("hardLinkPrimaryPath", "\"/Users/a/Docs/Primary\"")},
    {"relativeLink", settingOfAnEntry("hardLinkPrimaryPath", "\"primary\"")},
};

INSTANTIATE_TEST_SUITE_P(ValidButOdd, GivenUpManifests, testing::ValuesIn(validButOdd), RowName());
INSTANTIATE_TEST_SUITE_P(NotValid, GivenUpManifests, testing::ValuesIn(notValid), RowName());

/// A manifest as text, with one place changed.
struct TextCase {
  const char* name;
  std::string text;
  bool isAccepted = false;
};

/// `text` with the first `old` replaced, which is there.
std::string replaced(std::string text, std::string_view old, std::string_view by) {
  const std::size_t place = text.find(old);
  if (place == std::string::npos) {
    throw std::out_of_range("no " + std::string(old));
  }
  return text.replace(place, old.size(), by);
}

const JSONStyle pretty = jsonStyles.back();

std::string twoEntries(const JSONStyle& style = jsonStyles.front()) {
  return plainManifestDocument({plainEntryDocument("/a/x"), plainEntryDocument("/a/y")})
      .text(style);
}

/// The entries in front, so that members of the manifest come behind them.
std::string entriesFirst(const JSONStyle& style) {
  JSONTree manifest =
      plainManifestDocument({plainEntryDocument("/a/x"), plainEntryDocument("/a/y")});
  JSONTree::Object& members = manifest.members();
  std::rotate(members.begin(), members.end() - 1, members.end());
  return manifest.text(style);
}

const std::string blanks(300, ' ');

const std::vector<TextCase> texts = {
    {"compact", twoEntries(), true},
    {"pretty", twoEntries(pretty), true},
    {"carriageReturns",
     [] {
       std::string text = twoEntries(pretty);
       for (std::size_t place = 0; (place = text.find('\n', place)) != std::string::npos;
            place += 2) {
         text.insert(place, "\r");
       }
       return text;
     }(),
     true},
    {"entriesFirst", entriesFirst(jsonStyles.front()), true},
    {"entriesFirstPretty", entriesFirst(pretty), true},
    {"noEntries", plainManifestDocument().text(), true},
    {"noEntriesPretty", plainManifestDocument().text(pretty), true},
    {"noEntriesWithLineBreaks",
     replaced(plainManifestDocument().text(), "\"entries\":[]", "\"entries\":[\n\n  ]"), true},
    {"noEntriesWithBlanksAndLineBreaks",
     replaced(plainManifestDocument().text(), "\"entries\":[]",
              "\"entries\":[\n" + blanks + "\n" + blanks + "]"),
     true},
    {"blanksBefore", blanks + "\n" + twoEntries(), true},
    {"blanksBehind", twoEntries() + "\n" + blanks + "\n" + blanks, true},
    {"blanksBetweenEntries", replaced(twoEntries(), "},{", "}" + blanks + ",\n" + blanks + "{"),
     true},
    {"lineBreakBehindEachToken",
     [] {
       std::string text;
       bool isInString = false;
       for (const char byte : twoEntries()) {
         isInString = isInString != (byte == '"');
         text += byte;
         text += !isInString && std::string_view("{}[]:,\"").find(byte) != std::string_view::npos
                     ? "\n"
                     : "";
       }
       return text;
     }(),
     true},
    {"cutsInAPath", replaced(twoEntries(), "/a/x", R"(/a/},{\"b},{\"c\\},{)"), true},
    {"onlyCutsInAPath",
     replaced(replaced(twoEntries(), "/a/x", R"(/a/x\\\"},{\"version\":5,\"x\":\")"), "},{",
              "}, {"),
     true},
    {"longPath", replaced(twoEntries(), "/a/x", "/a/" + std::string(2000, 'x')), true},
    {"letterBehindEntries", replaced(twoEntries(), "}]", "}x]")},
    {"noCutAtAll", replaced(twoEntries(), "},{", "}, {"), true},
    {"empty", ""},
    {"blanksOnly", blanks},
    {"lineBreaksOnly", std::string(300, '\n')},
    {"nothing", "{}"},
    {"list", "[" + twoEntries() + "]"},
    {"twice", twoEntries() + "\n" + twoEntries()},
    {"byteOrderMark", "\xEF\xBB\xBF" + twoEntries()},
    {"moreBehind", twoEntries() + "\n" + blanks + "x"},
    {"braceBehind", twoEntries() + "\n}"},
    {"commaBehind", twoEntries() + ","},
    {"NULBehind", twoEntries() + "\0"s},
    {"NULAndBlanksBehind", twoEntries() + "\n\0\n"s},
    {"NULBeforeAnEntry", replaced(twoEntries(), "},{", "},\0{"s)},
    {"NULInAString", replaced(twoEntries(), "/a/x", "/a/x\0"s)},
    {"lineBreakInAString", replaced(twoEntries(), "/a/x", "/a/\nx")},
    {"tabInAString", replaced(twoEntries(), "/a/x", "/a/\tx")},
    {"cutInAStringThatDoesNotEnd", replaced(twoEntries(), "/a/x\"", "/a/x},{\"b")},
    {"quotesAroundALineBreak", replaced(twoEntries(), "/a/x", "\n\"\"\n")},
    {"noEndOfTheLastString", twoEntries() + "\""},
    {"notUTF8InAString", replaced(twoEntries(), "/a/x", "/a/\xFF")},
    {"notUTF8OverALineBreak", replaced(twoEntries(), "},{", "},\xC3\n\xA9{")},
    {"notUTF8OverACut", replaced(twoEntries(), "},{", "\xE2\x82},{")},
    {"notUTF8Behind", twoEntries() + "\n\xFF"},
    {"twoCommasBetweenEntries", replaced(twoEntries(), "},{", "},,{")},
    {"twoCommasWithALineBreak", replaced(twoEntries(), "},{", "},\n,{")},
    {"noCommaBetweenEntries", replaced(twoEntries(), "},{", "}\n{")},
    {"commaBehindTheLastEntry", replaced(twoEntries(), "}]", "},\n]")},
    {"commaBeforeTheFirstEntry", replaced(twoEntries(), "\"entries\":[", "\"entries\":[\n,")},
    {"commaForNoEntry",
     replaced(plainManifestDocument().text(), "\"entries\":[]", "\"entries\":[\n,\n]")},
    {"endOfTheListTwice", replaced(twoEntries(), "}]", "}]\n]")},
    {"braceForTheListsEnd", replaced(twoEntries(), "}]", "}\n}")},
    {"commaBehindTheLastMember",
     replaced(plainManifestDocument().text(), "\"entries\":[]", "\"entries\":[],\n")},
    {"commaBeforeTheFirstMember", replaced(twoEntries(), "{", "{\n,")},
    {"braceForAComma", replaced(twoEntries(), ",\"warpID\"", "\n{\"warpID\"")},
    {"numberOverALineBreak", replaced(twoEntries(), "\"size\":1000", "\"size\":10\n00")},
    {"literalOverALineBreak", replaced(twoEntries(), "true", "tr\nue")},
    {"lineFeedForBackslash", replaced(twoEntries(), "\"version\"", "\\\n\"version\"")},
    {"formFeed", replaced(twoEntries(), "},{", "},\f{")},
    {"formFeedForAComma", replaced(twoEntries(), ",\"warpID\"", "\f\"warpID\"")},
    {"substituteForAColon", replaced(twoEntries(), "\"warpID\":", "\"warpID\"\x1A")},
    {"verticalTab", replaced(twoEntries(), "},{", "},\v{")},
    {"noBreakSpace", replaced(twoEntries(), "},{", "},\u00a0{")},
    {"commentBehind", twoEntries() + "// end"},
};

class ManifestTexts : public testing::TestWithParam<TextCase> {};

TEST_P(ManifestTexts, areReadTheSameWhateverThePieces) {
  const std::string& text = GetParam().text;
  ManifestReaders readers;
  const ManifestReading expected = GetParam().isAccepted ? readers.exactly(text) : std::nullopt;
  EXPECT_EQ(expected.has_value(), GetParam().isAccepted);
  expectReading(text, expected, readers, text.size() + 1);
  for (std::size_t pieceLength = 1; pieceLength < 40; ++pieceLength) {
    expectReading(text, expected, readers, pieceLength);
  }
  for (std::size_t pieceLength = 40; pieceLength < text.size() + 30; pieceLength += 13) {
    expectReading(text, expected, readers, pieceLength);
  }
}

INSTANTIATE_TEST_SUITE_P(Table, ManifestTexts, testing::ValuesIn(texts), RowName());

TEST(QuickManifestReaderTest, acceptsNoBeginningOfADocument) {
  ManifestReaders readers;
  for (const std::string& text : {twoEntries(), twoEntries(pretty)}) {
    for (std::size_t length = 0; length < text.size(); ++length) {
      std::string beginning = text.substr(0, length);
      ASSERT_EQ(readers.quickly(beginning), std::nullopt) << length;
      ASSERT_EQ(readers.quickly(beginning, 50), std::nullopt) << length;
    }
  }
}

TEST(QuickManifestReaderTest, readsOneDocumentAfterTheOther) {
  ManifestReaders readers;
  for (const TextCase& before : texts) {
    for (std::string text : {twoEntries(), entriesFirst(pretty), manifestDocument().text()}) {
      std::string bytes = before.text;
      EXPECT_EQ(readers.quickly(bytes, 64).has_value(), before.isAccepted) << before.name;
      EXPECT_EQ(readers.quickly(text), readers.exactly(text)) << before.name;
    }
  }
}

std::string numberedPath(std::size_t number) { return "/a/" + std::to_string(number); }

/// A manifest of `count` entries, of which number `second` has the path of number `first`.
std::string withPathTwice(std::size_t count, std::size_t first, std::size_t second) {
  return plainManifestText(
      count, [=](std::size_t number) { return numberedPath(number == second ? first : number); });
}

class EntryCounts : public testing::TestWithParam<std::size_t> {};

TEST_P(EntryCounts, areFreeButForAPathThatIsThereTwice) {
  const std::size_t last = GetParam() - 1;
  ManifestReaders readers;
  std::string text = plainManifestText(GetParam(), numberedPath);
  EXPECT_EQ(readers.quickly(text), readers.exactly(text));
  text = withPathTwice(GetParam(), 0, 1);
  EXPECT_EQ(readers.quickly(text), std::nullopt);
  text = withPathTwice(GetParam(), 0, last);
  EXPECT_EQ(readers.quickly(text), std::nullopt);
  text = withPathTwice(GetParam(), last / 2, last);
  EXPECT_EQ(readers.quickly(text), std::nullopt);
}

INSTANTIATE_TEST_SUITE_P(Counts, EntryCounts, testing::Values(2, 1023, 1024, 1025, 2500));

TEST(QuickManifestReaderTest, givesEachEntryOnceAndInOrder) {
  const std::string text = plainManifestText(50, numberedPath);
  for (const std::size_t pieceLength : {1U, 100U, 500U, 1000U, 3000U, 100'000U}) {
    PieceMemory memory;
    QuickManifestReader reader;
    DocumentPieces pieces(portionsOf(text, 1000), memory, pieceLength);
    std::size_t number = 0;
    const auto read = reader.read(pieces, [&](const WarpSharedEntry<TextView>& entry) {
      EXPECT_EQ(entry.relativePath, numberedPath(number++));
    });
    EXPECT_TRUE(read.has_value());
    EXPECT_EQ(number, 50);
  }
}

TEST(QuickManifestReaderTest, passesOnWhatIsThrown) {
  std::string text = twoEntries();
  PieceMemory memory;
  QuickManifestReader reader;
  {
    DocumentPieces pieces(text, memory);
    EXPECT_THROW(
        static_cast<void>(reader.read(
            pieces, [](const WarpSharedEntry<TextView>&) { throw std::domain_error("enough"); })),
        std::domain_error);
  }
  DocumentPieces broken([](char*, std::size_t) -> std::size_t { throw std::domain_error("gone"); },
                        memory);
  EXPECT_THROW(static_cast<void>(reader.read(broken, [](const auto&) {})), std::domain_error);
  EXPECT_EQ(text, twoEntries());
  DocumentPieces pieces(text, memory);
  EXPECT_TRUE(reader.read(pieces, [](const auto&) {}).has_value());
}

}  // namespace
}  // namespace velmora

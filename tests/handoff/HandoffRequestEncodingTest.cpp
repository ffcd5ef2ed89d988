#include "handoff/HandoffRequestEncoding.h"
#include "platform/PlatformError.h"
#include "tests/support/RowName.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <fstream>
#include <iterator>
#include <string>

namespace velmora {
namespace {

using std::chrono::sys_days;
using std::chrono::sys_seconds;
using namespace std::chrono_literals;

constexpr sys_seconds morning = sys_days(2026y / 3 / 1) + 9h + 15min + 42s;

std::string goldenFile(const std::string& name) {
  std::ifstream file(VELMORA_TEST_DATA "/handoff/" + name, std::ios::binary);
  EXPECT_TRUE(file.is_open()) << name;
  return {std::istreambuf_iterator<char>(file), {}};
}

TEST(HandoffRequestEncoding, writesOneFolderAsTheReviewedFile) {
  EXPECT_EQ(encodeHandoffRequest({.action = FinderHandoffAction::warpFolder,
                                  .createdAt = morning,
                                  .folderPaths = {"/Users/a/Docs"}}),
            goldenFile("one_folder.request.json"));
}

TEST(HandoffRequestEncoding, writesAwkwardNamesAsTheReviewedFile) {
  EXPECT_EQ(encodeHandoffRequest({.action = FinderHandoffAction::restoreMarkerFolder,
                                  .createdAt = morning,
                                  .folderPaths = {"/h/b c", "/h/d\"é'", "/h/back\\slash", "/h/日本",
                                                  "/h/new\nline\ttab", "/h/100% sure"}}),
            goldenFile("awkward_names.request.json"));
}

struct EscapeCase {
  const char* name;
  std::string_view path;
  std::string_view json;
};

class HandoffRequestEscapes : public testing::TestWithParam<EscapeCase> {};

TEST_P(HandoffRequestEscapes, areTheLayoutsOwn) {
  const std::string json = encodeHandoffRequest({.folderPaths = {Text(GetParam().path)}});
  EXPECT_NE(json.find("[\n    \"" + std::string(GetParam().json) + "\"\n  ]"), std::string::npos)
      << json;
}

using std::string_view_literals::operator""sv;

INSTANTIATE_TEST_SUITE_P(
    Characters, HandoffRequestEscapes,
    testing::Values(EscapeCase{"slash", "/", "\\/"}, EscapeCase{"quote", "\"", "\\\""},
                    EscapeCase{"backslash", "\\", "\\\\"}, EscapeCase{"backspace", "\b", "\\b"},
                    EscapeCase{"formFeed", "\f", "\\f"}, EscapeCase{"newline", "\n", "\\n"},
                    EscapeCase{"carriageReturn", "\r", "\\r"}, EscapeCase{"tab", "\t", "\\t"},
                    EscapeCase{"null", "\0"sv, "\\u0000"}, EscapeCase{"one", "\x01", "\\u0001"},
                    EscapeCase{"verticalTab", "\v", "\\u000b"},
                    EscapeCase{"escape", "\x1b", "\\u001b"},
                    EscapeCase{"lastControl", "\x1f", "\\u001f"}, EscapeCase{"blank", " ", " "},
                    EscapeCase{"delete_", "\x7f", "\x7f"}, EscapeCase{"apostrophe", "'", "'"},
                    EscapeCase{"percent", "100%25", "100%25"}, EscapeCase{"accent", "é", "é"},
                    EscapeCase{"decomposedStays", "e\u0301", "e\u0301"},
                    EscapeCase{"lineSeparator", "\u2028", "\u2028"},
                    EscapeCase{"beyondTheBasicPlane", "😀", "😀"}),
    RowName());

TEST(HandoffRequestEncoding, separatesFoldersByComma) {
  EXPECT_EQ(encodeHandoffRequest(
                {.action = FinderHandoffAction::warpFolder, .folderPaths = {"a", "b", "c"}}),
            "{\n  \"action\" : \"warpFolder\",\n  \"createdAt\" : \"1970-01-01T00:00:00Z\",\n"
            "  \"folderPaths\" : [\n    \"a\",\n    \"b\",\n    \"c\"\n  ]\n}");
}

TEST(HandoffRequestEncoding, writesAnEmptyListOverTwoLines) {
  EXPECT_NE(encodeHandoffRequest({}).find("\"folderPaths\" : [\n\n  ]\n}"), std::string::npos);
}

TEST(HandoffRequestEncoding, refusesWhatJSONCannotCarry) {
  try {
    static_cast<void>(encodeHandoffRequest({.folderPaths = {"/a", "/\xff"}}));
    FAIL() << "no error";
  } catch (const PlatformError& error) {
    EXPECT_EQ(error.domain(), "NSPOSIXErrorDomain");
    EXPECT_EQ(error.code(), EILSEQ);
  }
}

TEST(FinderHandoffActions, haveTheirRawValues) {
  EXPECT_EQ(rawValue(FinderHandoffAction::warpFolder), "warpFolder");
  EXPECT_EQ(rawValue(FinderHandoffAction::restoreMarkerFolder), "restoreMarkerFolder");
  EXPECT_EQ(rawValue(FinderHandoffAction::materializeMarkerItem), "materializeMarkerItem");
}

struct DateCase {
  const char* name;
  std::chrono::system_clock::time_point instant;
  const char* text;
};

class InternetDateTime : public testing::TestWithParam<DateCase> {};

TEST_P(InternetDateTime, isInUTCToTheWholeSecond) {
  EXPECT_EQ(internetDateTime(GetParam().instant), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    Instants, InternetDateTime,
    testing::Values(DateCase{"morning", morning, "2026-03-01T09:15:42Z"},
                    DateCase{"fractionIsCutOff", morning + 999ms, "2026-03-01T09:15:42Z"},
                    DateCase{"epoch", sys_seconds(0s), "1970-01-01T00:00:00Z"},
                    DateCase{"beforeTheEpoch", sys_seconds(0s) - 1ms, "1969-12-31T23:59:59Z"},
                    DateCase{"leapDay", sys_days(2024y / 2 / 29) + 23h + 59min + 59s,
                             "2024-02-29T23:59:59Z"},
                    DateCase{"endOfYear", sys_days(2027y / 1 / 1) - 1s, "2026-12-31T23:59:59Z"}),
    RowName());

}  // namespace
}  // namespace velmora

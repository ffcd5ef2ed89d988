#include "Report.h"
#include "platform/PlatformError.h"
#include "tests/fakes/FakePlatform.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <exception>
#include <new>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace velmora::inspect {
namespace {

TEST(JSONObjects, keepTheOrderOfTheirKeys) {
  JSONObject inner;
  inner.addNumber("n", 18446744073709551615U);
  JSONObject object;
  object.addText("b", "x");
  object.addFlag("a", true);
  object.addFlag("no", false);
  object.addText("nothing", std::nullopt);
  object.addJSON("inner", inner.json());
  EXPECT_EQ(object.json(),
            R"({"b":"x","a":true,"no":false,"nothing":null,"inner":{"n":18446744073709551615}})");
  EXPECT_EQ(JSONObject().json(), "{}");
}

TEST(JSONStrings, areUTF8InOneLine) {
  EXPECT_EQ(jsonString("a/\"\\\n\x1b\xff"), "\"a/\\\"\\\\\\n\\u001b\uFFFD\"");
}

TEST(JSONArrays, holdTheirElements) {
  EXPECT_EQ(jsonArray({}), "[]");
  EXPECT_EQ(jsonArray({"1"}), "[1]");
  EXPECT_EQ(jsonArray({"1", "\"a\"", "[]"}), "[1,\"a\",[]]");
}

DecodingError errorAt(std::vector<CodingKey> path, std::optional<std::size_t> offset) {
  DecodingError error(DecodingErrorKind::typeMismatch, "wrong", offset);
  std::ranges::reverse(path);
  for (CodingKey& key : path) {
    error.prependToCodingPath(std::move(key));
  }
  return error;
}

TEST(Faults, ofDecodingHaveKindPathAndOffset) {
  const std::vector<CodingKey> path = {"entries", std::size_t{0}, "size"};
  EXPECT_EQ(faultOf(std::make_exception_ptr(errorAt(path, 7))),
            (Fault{"typeMismatch", path, "wrong", 7, std::nullopt}));
}

TEST(Faults, ofFilesHaveTheErrorAndNoPlace) {
  const auto fault = [](const char* kind, const char* message) {
    return Fault{kind, std::nullopt, message, std::nullopt, std::nullopt};
  };
  EXPECT_EQ(faultOf(std::make_exception_ptr(corruptFileError())),
            fault("corruptFile", corruptFileError().what()));
  EXPECT_EQ(faultOf(std::make_exception_ptr(posixError(EACCES))),
            fault("unreadable", "Permission denied"));
  // The same number in another domain, and another error of the same domain.
  const PlatformError sameNumber = posixError(fileReadCorruptFileErrorCode);
  EXPECT_EQ(faultOf(std::make_exception_ptr(sameNumber)), fault("unreadable", sameNumber.what()));
  EXPECT_EQ(faultOf(std::make_exception_ptr(noSuchFileError())),
            fault("unreadable", noSuchFileError().what()));
  EXPECT_EQ(faultOf(std::make_exception_ptr(std::bad_alloc())),
            fault("unreadable", "Cannot allocate memory"));
}

TEST(Places, countLinesAndBytesFromOne) {
  EXPECT_EQ(placeOf(0, ""), (Place{1, 1}));
  EXPECT_EQ(placeOf(0, "ab"), (Place{1, 1}));
  EXPECT_EQ(placeOf(1, "ab"), (Place{1, 2}));
  EXPECT_EQ(placeOf(2, "ab"), (Place{1, 3}));
  EXPECT_EQ(placeOf(3, "ab"), std::nullopt);
  EXPECT_EQ(placeOf(1, "a\nb"), (Place{1, 2}));
  EXPECT_EQ(placeOf(2, "a\nb"), (Place{2, 1}));
  EXPECT_EQ(placeOf(2, "\n\n\n"), (Place{3, 1}));
  EXPECT_EQ(placeOf(3, "a\r\nb"), (Place{2, 1}));
  EXPECT_EQ(placeOf(4, "\n日b"), (Place{2, 4}));
}

TEST(FaultsInFiles, haveAPlaceWhenTheFileAndTheOffsetAreKnown) {
  FakePlatform fake;
  fake.fileSystem.files["/f"] = "{\n \"a\":1}";
  EXPECT_EQ(faultInFile(std::make_exception_ptr(errorAt({"a"}, 7)), "/f", fake.fileSystem).place,
            (Place{2, 6}));
  EXPECT_EQ(
      faultInFile(std::make_exception_ptr(errorAt({}, std::nullopt)), "/f", fake.fileSystem).place,
      std::nullopt);
  const Fault fault =
      faultInFile(std::make_exception_ptr(errorAt({"a"}, 7)), "/gone", fake.fileSystem);
  EXPECT_EQ(fault.place, std::nullopt);
  EXPECT_EQ(fault.byteOffset, 7U);
}

TEST(Faults, areAJSONObjectAndALineOfText) {
  const std::vector<CodingKey> path = {"entries", std::size_t{0}, "a\x1b"};
  const struct {
    Fault fault;
    std::string json;
    std::string text;
  } rows[] = {
      {{"typeMismatch", path, "wrong", 12, Place{2, 5}},
       R"({"kind":"typeMismatch","codingPath":["entries",0,"a\u001b"],"message":"wrong",)"
       R"("byteOffset":12,"line":2,"column":5})",
       "line 2, column 5: typeMismatch at entries[0].a\\u{1b}: wrong"},
      {{"typeMismatch", path, "wrong", 12, {}},
       R"({"kind":"typeMismatch","codingPath":["entries",0,"a\u001b"],"message":"wrong",)"
       R"("byteOffset":12})",
       "byte 12: typeMismatch at entries[0].a\\u{1b}: wrong"},
      {{"typeMismatch", std::vector<CodingKey>(), "wrong", {}, {}},
       R"({"kind":"typeMismatch","codingPath":[],"message":"wrong"})",
       "typeMismatch: wrong"},
      {{"unreadable", {}, "no\n", {}, {}},
       R"({"kind":"unreadable","message":"no\n"})",
       "unreadable: no\\n"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(toJSON(row.fault), row.json);
    EXPECT_EQ(toText(row.fault), row.text);
  }
}

ManifestSummary summary() {
  return {.warpID = "W\n1",
          .manifestKey = "manifests/W1.json",
          .originalFolderPath = "/home/a \xC3\xA9",
          .createdAt = *parseInternetDateTime("2025-11-21T03:39:54Z"),
          .status = VelmoraWarpSharedStatus::needsAttention,
          .entryCount = 1,
          .sampleCount = 2};
}

TEST(ManifestReports, haveEveryFieldInJSON) {
  EXPECT_EQ(toJSON(summary()),
            "{\"warpID\":\"W\\n1\",\"manifestKey\":\"manifests/W1.json\","
            "\"originalFolderPath\":\"/home/a \u00e9\",\"createdAt\":\"2025-11-21T03:39:54Z\","
            "\"status\":\"needsAttention\",\"entries\":1,\"samples\":2}");
}

TEST(ManifestReports, areOneLineOfText) {
  EXPECT_EQ(toText(summary()),
            "Warp W\\n1, needsAttention, 1 entry, 2 samples, key manifests/W1.json");
}

}  // namespace
}  // namespace velmora::inspect

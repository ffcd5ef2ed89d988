#include "Fault.h"
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

DecodingError errorAt(std::vector<CodingKey> path, std::optional<std::size_t> offset) {
  DecodingError error(DecodingErrorKind::typeMismatch, "wrong", offset);
  std::ranges::reverse(path);
  for (CodingKey& key : path) {
    error.prependToCodingPath(std::move(key));
  }
  return error;
}

TEST(Faults, ofDecodingTellKindPathAndOffset) {
  const std::vector<CodingKey> path = {"entries", std::size_t{0}, "size"};
  EXPECT_EQ(faultOf(std::make_exception_ptr(errorAt(path, 7))),
            (Fault{"typeMismatch", path, "wrong", 7, std::nullopt}));
}

TEST(Faults, ofFilesTellTheErrorAndNoPlace) {
  const auto fault = [](const char* kind, const char* message) {
    return Fault{kind, std::nullopt, message, std::nullopt, std::nullopt};
  };
  EXPECT_EQ(faultOf(std::make_exception_ptr(corruptFileError())),
            fault("corruptFile", corruptFileError().what()));
  EXPECT_EQ(faultOf(std::make_exception_ptr(posixError(EACCES))),
            fault("unreadable", "Permission denied"));
  // The same number in another domain, and another error of the domain.
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

TEST(FaultsInFiles, haveTheirPlaceWhereTheFileAndTheOffsetAreThere) {
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

TEST(Faults, areAnObjectAndALine) {
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

}  // namespace
}  // namespace velmora::inspect

#include "Fault.h"
#include "platform/PlatformError.h"
#include "tests/support/RowName.h"
#include "tests/fakes/FakePlatform.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <new>
#include <utility>

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
  const Fault fault = faultOf(errorAt({"entries", std::size_t{0}, "size"}, 7));
  EXPECT_EQ(fault, (Fault{.kind = "typeMismatch",
                          .codingPath = std::vector<CodingKey>{"entries", std::size_t{0}, "size"},
                          .message = "wrong",
                          .byteOffset = 7,
                          .place = std::nullopt}));
}

TEST(Faults, ofAFileThatBreaksARuleAreCorruptFile) {
  const Fault fault = faultOf(corruptFileError());
  EXPECT_EQ(fault.kind, "corruptFile");
  EXPECT_EQ(fault.codingPath, std::nullopt);
  EXPECT_EQ(fault.message, corruptFileError().what());
}

TEST(Faults, ofReadingAreUnreadable) {
  EXPECT_EQ(faultOf(posixError(EACCES)).kind, "unreadable");
  EXPECT_EQ(faultOf(posixError(EACCES)).message, posixError(EACCES).what());
  // The same numbers in another domain, or for another error of the domain.
  EXPECT_EQ(faultOf(posixError(fileReadCorruptFileErrorCode)).kind, "unreadable");
  EXPECT_EQ(faultOf(noSuchFileError()).kind, "unreadable");
}

TEST(Faults, forWantOfMemoryAreUnreadable) {
  EXPECT_EQ(faultOf(std::bad_alloc()).kind, "unreadable");
  EXPECT_EQ(faultOf(std::bad_alloc()).message, "Cannot allocate memory");
}

struct PlaceCase {
  const char* name;
  std::size_t offset;
  std::string bytes;
  std::optional<Place> place;
};

class Places : public testing::TestWithParam<PlaceCase> {};

TEST_P(Places, countLinesAndBytesFromOne) {
  EXPECT_EQ(placeOf(GetParam().offset, GetParam().bytes), GetParam().place);
}

INSTANTIATE_TEST_SUITE_P(Offsets, Places,
                         testing::Values(PlaceCase{"emptyFile", 0, "", Place{1, 1}},
                                         PlaceCase{"first", 0, "ab", Place{1, 1}},
                                         PlaceCase{"inTheLine", 1, "ab", Place{1, 2}},
                                         PlaceCase{"end", 2, "ab", Place{1, 3}},
                                         PlaceCase{"lineFeed", 1, "a\nb", Place{1, 2}},
                                         PlaceCase{"afterALineFeed", 2, "a\nb", Place{2, 1}},
                                         PlaceCase{"emptyLines", 2, "\n\n\n", Place{3, 1}},
                                         PlaceCase{"carriageReturn", 3, "a\r\nb", Place{2, 1}},
                                         PlaceCase{"bytesNotCharacters", 4, "\n日b", Place{2, 4}},
                                         PlaceCase{"beyond", 3, "ab", std::nullopt}),
                         RowName());

class FaultsInFiles : public testing::Test {
 protected:
  FakePlatform fake;
};

TEST_F(FaultsInFiles, haveTheirPlace) {
  fake.fileSystem.files["/f"] = "{\n \"a\":1}";
  EXPECT_EQ(faultInFile(errorAt({"a"}, 7), "/f", fake.fileSystem).place, (Place{2, 6}));
}

TEST_F(FaultsInFiles, haveNoneOfTheDocumentAsAWhole) {
  fake.fileSystem.files["/f"] = "{}";
  EXPECT_EQ(faultInFile(errorAt({}, std::nullopt), "/f", fake.fileSystem).place, std::nullopt);
}

TEST_F(FaultsInFiles, haveNoneInAFileThatIsGone) {
  const Fault fault = faultInFile(errorAt({"a"}, 7), "/f", fake.fileSystem);
  EXPECT_EQ(fault.place, std::nullopt);
  EXPECT_EQ(fault.byteOffset, 7U);
}

TEST(FaultsAsJSON, haveTheirKeysInOrder) {
  Fault fault = faultOf(errorAt({"a\n", std::size_t{3}}, 12));
  fault.place = Place{2, 5};
  EXPECT_EQ(toJSON(fault),
            R"({"kind":"typeMismatch","codingPath":["a\n",3],"message":"wrong","byteOffset":12,)"
            R"("line":2,"column":5})");
}

TEST(FaultsAsJSON, leaveOutWhatIsNotKnown) {
  EXPECT_EQ(toJSON(faultOf(errorAt({}, std::nullopt))),
            R"({"kind":"typeMismatch","codingPath":[],"message":"wrong"})");
  EXPECT_EQ(toJSON(faultOf(std::bad_alloc())),
            R"({"kind":"unreadable","message":"Cannot allocate memory"})");
}

TEST(FaultsAsText, areOneLine) {
  Fault fault = faultOf(errorAt({"entries", std::size_t{0}, "a\x1b"}, 12));
  EXPECT_EQ(toText(fault), "byte 12: typeMismatch at entries[0].a\\u{1b}: wrong");
  fault.place = Place{2, 5};
  EXPECT_EQ(toText(fault), "line 2, column 5: typeMismatch at entries[0].a\\u{1b}: wrong");
  EXPECT_EQ(toText(faultOf(errorAt({}, std::nullopt))), "typeMismatch: wrong");
}

}  // namespace
}  // namespace velmora::inspect

#include "json/RecordDecoding.h"
#include "tests/json/Faults.h"
#include "tests/json/ReadDocument.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

namespace velmora {
namespace {

struct Inner {
  std::int64_t number = 0;
  std::optional<Text> note;

  bool operator==(const Inner&) const = default;
};

struct Outer {
  Text name;
  std::uint16_t count = 0;
  Inner inner;
  std::optional<Inner> maybe;
  std::vector<Inner> list;
  std::optional<std::vector<bool>> accented;

  bool operator==(const Outer&) const = default;
};

}  // namespace

template <>
struct RecordFields<Inner> {
  static constexpr std::tuple list{
      RecordField{"number", &Inner::number},
      RecordField{"note", &Inner::note},
  };
};

template <>
struct RecordFields<Outer> {
  static constexpr std::tuple list{
      RecordField{"name", &Outer::name},   RecordField{"count", &Outer::count},
      RecordField{"inner", &Outer::inner}, RecordField{"maybe", &Outer::maybe},
      RecordField{"list", &Outer::list},   RecordField{"\u00e9", &Outer::accented},
  };
};

// An element of a vector of booleans is none that can be referred to.
inline void decode(JSONValue value, std::vector<bool>& booleans) {
  booleans.clear();
  decodeElements(value, [&booleans](JSONValue element) {
    bool boolean = false;
    decode(element, boolean);
    booleans.push_back(boolean);
  });
}

namespace {

Outer decodedOuter(const std::string& document) {
  const ReadDocument read(document);
  Outer outer;
  decode(read.value(), outer);
  return outer;
}

std::string faultInOuter(const std::string& document) {
  return faultOf([&document] { static_cast<void>(decodedOuter(document)); });
}

const Outer sample = {.name = "n",
                      .count = 2,
                      .inner = {.number = 3, .note = "x"},
                      .maybe = Inner{.number = 4, .note = std::nullopt},
                      .list = {{.number = 5, .note = std::nullopt}},
                      .accented = std::vector<bool>{true, false}};

TEST(RecordDecodingTest, fieldsAreFoundInAnyOrder) {
  EXPECT_EQ(decodedOuter("{\"name\":\"n\",\"count\":2,\"inner\":{\"number\":3,\"note\":\"x\"},"
                         "\"maybe\":{\"number\":4},\"list\":[{\"number\":5}],"
                         "\"\u00e9\":[true,false]}"),
            sample);
  EXPECT_EQ(decodedOuter("{\"\u00e9\" : [true, false], \"list\" : [{\"number\" : 5}], \"maybe\" : "
                         "{\"number\" : 4}, \"inner\" : {\"note\" : \"x\", \"number\" : 3}, "
                         "\"count\" : 2, \"name\" : \"n\"}"),
            sample);
}

constexpr std::string_view smallest = R"({"name":"n","count":2,"inner":{"number":3},"list":[]})";

/// The smallest document, with `members` before all others.
std::string withFirst(std::string_view members) {
  return "{" + std::string(members) + "," + std::string(smallest.substr(1));
}

TEST(RecordDecodingTest, absentFieldsMayBeMissingOrNull) {
  const Outer expected = {.name = "n",
                          .count = 2,
                          .inner = {.number = 3, .note = std::nullopt},
                          .maybe = std::nullopt,
                          .list = {},
                          .accented = std::nullopt};
  EXPECT_EQ(decodedOuter(std::string(smallest)), expected);
  EXPECT_EQ(decodedOuter(withFirst("\"maybe\":null,\"\u00e9\":null")), expected);
}

TEST(RecordDecodingTest, anAbsentFieldTakesThePlaceOfWhatWasThere) {
  const ReadDocument document((std::string(smallest)));
  Outer outer = sample;
  decode(document.value(), outer);
  EXPECT_EQ(outer, decodedOuter(std::string(smallest)));
}

TEST(RecordDecodingTest, theFirstOfDuplicateKeysCounts) {
  EXPECT_EQ(decodedOuter(withFirst(R"("count":7,"count":8)")).count, 7);
  EXPECT_EQ(decodedOuter(withFirst(R"("c\u006funt":7)")).count, 7);
  EXPECT_EQ(decodedOuter(withFirst(R"("count":7,"count":"not looked at")")).count, 7);
  EXPECT_EQ(decodedOuter(withFirst(R"("maybe":null,"maybe":{"number":1})")).maybe, std::nullopt);
  EXPECT_EQ(faultInOuter(withFirst(R"("count":null,"count":7)")),
            "valueNotFound count @9: Expected a number but found null.");
}

TEST(RecordDecodingTest, keysMayBeEscaped) {
  EXPECT_EQ(decodedOuter(withFirst(R"("\u00E9":[true])")).accented, std::vector<bool>{true});
  EXPECT_EQ(faultInOuter(R"({"\u006eame":1})"),
            "typeMismatch name @13: Expected a string but found a number.");
}

TEST(RecordDecodingTest, otherKeysAreIgnored) {
  EXPECT_EQ(decodedOuter(withFirst(R"("other":{"name":[1,{}]},"":0,"Name":1,"names":2,"na":3)")),
            decodedOuter(std::string(smallest)));
}

TEST(RecordDecodingTest, keysThatDifferInTheirBytesAreOtherKeys) {
  EXPECT_EQ(decodedOuter(withFirst("\"e\u0301\":[true]")).accented, std::nullopt);
  EXPECT_EQ(decodedOuter(withFirst(R"("name\u0000":1)")).name, Text("n"));
}

struct FaultCase {
  const char* name;
  std::string document;
  std::string fault;
};

const FaultCase faultCases[] = {
    {.name = "nullForRecord",
     .document = " null",
     .fault = "valueNotFound @1: Expected an object but found null."},
    {.name = "arrayForRecord",
     .document = "[]",
     .fault = "typeMismatch @0: Expected an object but found an array."},
    {.name = "nothing",
     .document = " {}",
     .fault = "keyNotFound name @1: The key \"name\" is missing."},
    {.name = "firstMissingKeyByDeclaration",
     .document = R"({"list":[],"name":""})",
     .fault = "keyNotFound count @0: The key \"count\" is missing."},
    {.name = "firstFaultByDeclaration",
     .document = R"({"list":1,"inner":2,"count":"","name":"n"})",
     .fault = "typeMismatch count @28: Expected a number but found a string."},
    {.name = "missingBeforeWrong",
     .document = R"({"inner":1,"name":"n"})",
     .fault = "keyNotFound count @0: The key \"count\" is missing."},
    {.name = "wrongBeforeMissing",
     .document = R"({"inner":1,"name":null})",
     .fault = "valueNotFound name @18: Expected a string but found null."},
    {.name = "outOfRange",
     .document = R"({"name":"n","count":65536})",
     .fault = "dataCorrupted count @20: The number does not fit into 16 bits without a sign."},
    {.name = "missingInRecord",
     .document = R"({"name":"n","count":1,"inner": {"note":"x"}})",
     .fault = "keyNotFound inner.number @31: The key \"number\" is missing."},
    {.name = "wrongInRecord",
     .document = R"({"name":"n","count":1,"inner":{"note":1,"number":2}})",
     .fault = "typeMismatch inner.note @38: Expected a string but found a number."},
    {.name = "wrongInAbsentRecord",
     .document = R"({"name":"n","count":1,"inner":{"number":2},"maybe":{"number":null}})",
     .fault = "valueNotFound maybe.number @61: Expected a number but found null."},
    {.name = "wrongTypeForAbsentRecord",
     .document = R"({"name":"n","count":1,"inner":{"number":2},"maybe":false})",
     .fault = "typeMismatch maybe @51: Expected an object but found a boolean."},
    {.name = "wrongInElement",
     .document =
         R"({"name":"n","count":1,"inner":{"number":2},"list":[{"number":1},{"number":0.5}]})",
     .fault = "dataCorrupted list.1.number @74: The number is not whole, or too large."},
    {.name = "nullForElement",
     .document = R"({"name":"n","count":1,"inner":{"number":2},"list":[{"number":1},null]})",
     .fault = "valueNotFound list.1 @64: Expected an object but found null."},
    {.name = "nullForArray",
     .document = R"({"name":"n","count":1,"inner":{"number":2},"list":null})",
     .fault = "valueNotFound list @50: Expected an array but found null."},
    {.name = "notASCIIKey",
     .document = "{\"\u00e9\":[0],\"name\":\"n\",\"count\":1,\"inner\":{\"number\":2},\"list\":[]}",
     .fault = "typeMismatch \u00e9.0 @7: Expected a boolean but found a number."},
    {.name = "behindResolvedStrings",
     .document = R"({"\u006eame":"\u006e","count":"\n\n"})",
     .fault = "typeMismatch count @30: Expected a number but found a string."},
};

TEST(RecordDecodingTest, theFirstFaultByDeclarationIsTold) {
  for (const FaultCase& row : faultCases) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(faultInOuter(row.document), row.fault);
  }
}

TEST(RecordDecodingTest, fieldsAreReadStepByStep) {
  const ReadDocument document(R"({"list":"wrong","count":2,"inner":{"number":3},"name":"n"})");
  Outer outer;
  RecordReader reader(document.value(), outer);
  EXPECT_TRUE(outer.name.empty());
  reader.read<"name">();
  EXPECT_EQ(outer.name, Text("n"));
  EXPECT_EQ(outer.count, 0);
  reader.read<"count", "maybe">();
  EXPECT_EQ(outer.count, 2);
  EXPECT_EQ(outer.inner.number, 3);
  EXPECT_EQ(faultOf([&reader] { reader.read<"list">(); }),
            "typeMismatch list @8: Expected an array but found a string.");
}

TEST(RecordDecodingTest, aFieldMayBeReadByOthers) {
  const ReadDocument document(R"({"name":"n","list":[1]})");
  Outer outer;
  const RecordReader reader(document.value(), outer);
  std::size_t offset = 0;
  reader.readBy<"list">([&offset](JSONValue value) { offset = value.byteOffset(); });
  EXPECT_EQ(offset, 19U);
  EXPECT_TRUE(outer.list.empty());
  EXPECT_EQ(faultOf([&reader] {
              reader.readBy<"name">([](JSONValue value) { refuseData(value, "No."); });
            }),
            "dataCorrupted name @8: No.");
  EXPECT_EQ(faultOf([&reader] { reader.readBy<"count">([](JSONValue) { FAIL(); }); }),
            "keyNotFound count @0: The key \"count\" is missing.");
}

TEST(RecordDecodingTest, aRecordIsRefusedAtTheValueOrElseAtTheObject) {
  const ReadDocument document(R"([{"count":1,"na\u006de":"n"}])");
  Outer outer;
  const RecordReader reader(JSONElements(document.value()).value(), outer);
  EXPECT_EQ(faultOf([&reader] { reader.refuse<"name">("No."); }), "dataCorrupted name @24: No.");
  EXPECT_EQ(faultOf([&reader] { reader.refuse<"maybe">("No."); }), "dataCorrupted maybe @1: No.");
}

}  // namespace
}  // namespace velmora

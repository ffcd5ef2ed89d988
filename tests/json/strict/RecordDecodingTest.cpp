#include "json/RecordEncoding.h"
#include "json/strict/RecordDecoding.h"
#include "tests/json/Faults.h"
#include "tests/json/ReadDocument.h"
#include "tests/json/RecordCases.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>

namespace velmora::internal {
namespace {

/// The result of decoding into a record with earlier values: the record, or the fault.
std::string outcomeOf(const std::string& document) {
  std::string outcome;
  const std::string fault = faultOf([&] {
    const ReadDocument read(document);
    SampleRecord record = usedRecord();
    decode(read.value(), record);
    outcome = encoded(record);
  });
  return fault == "none" ? outcome : fault;
}

template <KeyLiteral key>
constexpr std::size_t field = fieldIndex<SampleRecord, key>;

TEST(RecordDecodingTest, readsFieldsInAnyOrderAndRaisesTheFirstFaultByDeclaration) {
  for (const RecordCase& row : recordCases) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(outcomeOf(row.document), row.outcome);
  }
}

TEST(RecordDecodingTest, fieldsAreReadUpToTheGivenField) {
  const ReadDocument document(R"({"list":"wrong","count":2,"item":{"number":3},"name":"n"})");
  SampleRecord record;
  RecordReader reader(document.value(), record);
  EXPECT_TRUE(record.name.empty());
  reader.readThrough(field<"name">);
  EXPECT_EQ(record.name, Text("n"));
  EXPECT_EQ(record.count, 0);
  reader.readThrough(field<"name">);
  EXPECT_EQ(record.count, 0);
  reader.readThrough(field<"maybe">);
  EXPECT_EQ(record.count, 2);
  EXPECT_EQ(record.item.number, 3);
  EXPECT_EQ(faultOf([&reader] { reader.readThrough(field<"list">); }),
            "typeMismatch list @8: Expected an array but found a string.");
}

TEST(RecordDecodingTest, callerMayReadAField) {
  const ReadDocument document(R"({"name":"n","item":{},"list":[1]})");
  SampleRecord record;
  RecordReader reader(document.value(), record);
  EXPECT_EQ(faultOf([&reader] {
              reader.readBy<"name">([](JSONValue value) { refuseData(value, "No."); });
            }),
            "dataCorrupted name @8: No.");
  EXPECT_EQ(faultOf([&reader] { reader.readBy<"count">([](JSONValue) { FAIL(); }); }),
            "keyNotFound count @0: The key \"count\" is missing.");
  std::size_t offset = 0;
  reader.readBy<"item">([&offset](JSONValue value) { offset = value.byteOffset(); });
  EXPECT_EQ(offset, 19U);
  EXPECT_EQ(record.item.number, SampleRecord().item.number);
}

TEST(RecordDecodingTest, recordIsRefusedAtTheValueOrAtTheObject) {
  const ReadDocument document(R"([{"count":1,"na\u006de":"n"}])");
  SampleRecord record;
  RecordReader reader(JSONElements(document.value()).value(), record);
  EXPECT_EQ(faultOf([&reader] { reader.refuse(field<"name">, "No."); }),
            "dataCorrupted name @24: No.");
  EXPECT_EQ(faultOf([&reader] { reader.refuse(field<"maybe">, "No."); }),
            "dataCorrupted maybe @1: No.");
}

}  // namespace
}  // namespace velmora::internal

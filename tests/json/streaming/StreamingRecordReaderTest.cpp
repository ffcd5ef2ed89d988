#include "json/RecordEncoding.h"
#include "json/streaming/StreamingRecordReader.h"
#include "json/strict/RecordDecoding.h"
#include "tests/json/Faults.h"
#include "tests/json/ReadDocument.h"
#include "tests/json/RecordCases.h"
#include "tests/json/TokenizedText.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace velmora::internal {
namespace {

using std::string_view_literals::operator""sv;
using Reader = StreamingRecordReader<SampleRecord, SampleItem>;

/// Reads the whole document into a record with earlier values.
std::optional<SampleRecord> streamed(const std::string& document, Reader& reader) {
  TokenizedText text(document);
  SampleRecord record = usedRecord();
  const bool isRead = reader.read(text.tokens(), record) && text.tokens().atEnd();
  return isRead ? std::optional(record) : std::nullopt;
}

std::optional<SampleRecord> strictlyDecoded(const std::string& document) {
  std::optional<SampleRecord> record;
  const std::string fault = faultOf([&] {
    const ReadDocument read(document);
    decode(read.value(), record);
  });
  return fault == "none" ? record : std::nullopt;
}

std::string outcomeOf(const std::string& document, Reader& reader) {
  const std::optional<SampleRecord> record = streamed(document, reader);
  return record.has_value() ? encoded(*record) : std::string();
}

TEST(StreamingRecordReaderTest, readsOrGivesUpAfterAnyEarlierDocument) {
  for (const RecordCase& row : recordCases) {
    SCOPED_TRACE(row.name);
    const std::string expected = row.isStreamed ? row.outcome : "";
    for (const RecordCase& before : recordCases) {
      Reader reader;
      EXPECT_EQ(outcomeOf(row.document, reader), expected);
      EXPECT_EQ(outcomeOf(row.document, reader), expected);
      reader = {};
      streamed(before.document, reader);
      EXPECT_EQ(outcomeOf(row.document, reader), expected) << before.name;
    }
  }
}

/// Every document that differs in one byte from an accepted one.
TEST(StreamingRecordReaderTest, acceptsNothingThatTheStrictReaderRefuses) {
  constexpr std::string_view bytes = "{}[],:\"\\ \n\f\x1A\x00x1-.e\x7F"sv;
  Reader reader;
  for (const RecordCase& row : recordCases) {
    for (std::size_t place = 0; row.isStreamed && place < row.document.size(); ++place) {
      for (const char byte : bytes) {
        for (const std::size_t replaced : {0U, 1U}) {
          const std::string changed =
              std::string(row.document).replace(place, replaced, std::string(1, byte));
          try {
            if (const std::optional<SampleRecord> value = streamed(changed, reader)) {
              ASSERT_EQ(value, strictlyDecoded(changed)) << changed;
            }
          } catch (const std::invalid_argument&) {
            // A text without tokens is not read at all.
          }
        }
      }
    }
  }
}

TEST(StreamingRecordReaderTest, readsASingleField) {
  TokenizedText text(R"({"numbers":[1,2]})");
  Reader reader;
  SampleRecord record;
  const std::size_t field =
      reader.takeMemberStart<SampleRecord>(text.tokens(), fieldCount<SampleRecord>);
  EXPECT_EQ(field, (fieldIndex<SampleRecord, "numbers">));
  EXPECT_TRUE(reader.readField(text.tokens(), record, field));
  EXPECT_EQ(record.numbers, (std::vector<std::uint16_t>{1, 2}));
  EXPECT_TRUE(text.tokens().isNext('}'));
}

TEST(SeenFieldsTest, reportDuplicateFields) {
  constexpr std::size_t required = fieldIndex<SampleItem, "number">;
  constexpr std::size_t optional = fieldIndex<SampleItem, "note">;
  SampleItem item{.number = 1, .note = "x"};
  PresentFields<SampleItem> seen;
  EXPECT_FALSE(seen.finish(item));
  seen.add(required);
  EXPECT_TRUE(seen.finish(item));
  EXPECT_EQ(item, (SampleItem{.number = 1, .note = std::nullopt}));
  item.note = "y";
  seen.add(optional);
  EXPECT_TRUE(seen.finish(item));
  EXPECT_EQ(item.note, "y");
  for (const std::size_t repeated : {required, optional}) {
    PresentFields<SampleItem> more = seen;
    more.add(repeated);
    EXPECT_FALSE(more.finish(item)) << repeated;
    more.add(repeated);
    EXPECT_FALSE(more.finish(item)) << repeated;
  }
}

}  // namespace
}  // namespace velmora::internal

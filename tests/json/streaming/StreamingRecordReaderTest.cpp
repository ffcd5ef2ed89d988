#include "json/RecordEncoding.h"
#include "json/streaming/StreamingRecordReader.h"
#include "json/strict/RecordDecoding.h"
#include "tests/json/Faults.h"
#include "tests/json/JSONCases.h"
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
  reader.setDepth(0);
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

TEST(StreamingRecordReaderTest, acceptsOrRefusesAfterAnyEarlierDocument) {
  for (const RecordCase& row : recordCases) {
    SCOPED_TRACE(row.name);
    const std::string expected = row.isAccepted() ? row.outcome : "";
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
TEST(StreamingRecordReaderTest, acceptsWhatTheStrictReaderAccepts) {
  constexpr std::string_view bytes = "{}[],:\"\\ \n\f\x1A\x00x1-.e\x7F"sv;
  Reader reader;
  for (const RecordCase& row : recordCases) {
    for (std::size_t place = 0; row.isAccepted() && place < row.document.size(); ++place) {
      for (const char byte : bytes) {
        for (const std::size_t replaced : {0U, 1U}) {
          const std::string changed =
              std::string(row.document).replace(place, replaced, std::string(1, byte));
          try {
            ASSERT_EQ(streamed(changed, reader), strictlyDecoded(changed)) << changed;
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

// The record is one level, a list and its element are two more.
TEST(StreamingRecordReaderTest, countsTheLevelsAroundUnknownMembers) {
  constexpr std::size_t outerDepth = 3;
  for (const std::size_t more : {0U, 1U}) {
    const std::string document = R"({"list":[{"number":1,"x":)" +
                                 repeated("[", maxJSONNesting - outerDepth + more) +
                                 repeated("]", maxJSONNesting - outerDepth + more) +
                                 R"(}],"name":"n","count":2,"item":{"number":3}})";
    Reader reader;
    EXPECT_EQ(streamed(document, reader).has_value(), more == 0);
    EXPECT_EQ(strictlyDecoded(document).has_value(), more == 0);
  }
}

TEST(StreamingRecordReaderTest, tellsWhereAnUnknownValueIsCut) {
  struct {
    const char* name;
    std::string text;
    std::optional<std::size_t> length;
  } const rows[] = {
      {"inAnArray", R"({"x":[1,)", 3},
      {"beforeTheValue", R"({"x":)", 0},
      {"inANestedRecord", R"({"item":{"x":{"y" )", 5},
      {"afterTheValue", R"({"x":[1])", std::nullopt},
      {"inAKnownValue", R"({"list":[)", std::nullopt},
      {"broken", R"({"x":[1}})", std::nullopt},
  };
  for (const auto& row : rows) {
    TokenizedText text(row.text);
    Reader reader;
    SampleRecord record;
    EXPECT_FALSE(reader.read(text.tokens(), record)) << row.name;
    EXPECT_EQ(reader.takeCutValueLength(), row.length) << row.name;
    EXPECT_EQ(reader.takeCutValueLength(), std::nullopt) << row.name;
  }
}

TEST(PresentFieldsTest, reportDuplicateFields) {
  constexpr std::size_t required = fieldIndex<SampleItem, "number">;
  constexpr std::size_t optional = fieldIndex<SampleItem, "note">;
  SampleItem item{.number = 1, .note = "x"};
  PresentFields<SampleItem> present;
  EXPECT_FALSE(present.finish(item));
  EXPECT_FALSE(present.has(required));
  present.add(required);
  EXPECT_TRUE(present.has(required));
  EXPECT_TRUE(present.finish(item));
  EXPECT_EQ(item, (SampleItem{.number = 1, .note = std::nullopt}));
  item.note = "y";
  present.add(optional);
  EXPECT_TRUE(present.finish(item));
  EXPECT_EQ(item.note, "y");
  for (const std::size_t repeatedField : {required, optional}) {
    PresentFields<SampleItem> more = present;
    more.add(repeatedField);
    EXPECT_FALSE(more.finish(item)) << repeatedField;
  }
}

}  // namespace
}  // namespace velmora::internal

#include "json/DecodingError.h"
#include "json/QuickReader.h"
#include "json/RecordDecoding.h"
#include "tests/support/RowName.h"
#include "tests/json/ReadDocument.h"
#include "tests/json/TokenizedText.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

namespace velmora {

namespace {

struct Inner {
  std::int64_t number = 0;
  std::optional<std::int64_t> other;

  bool operator==(const Inner&) const = default;
};

struct Outer {
  Text name;
  std::optional<Text> note;
  bool flag = false;
  std::vector<Inner> inners;
  std::optional<Inner> inner;
  std::vector<std::uint16_t> numbers;

  bool operator==(const Outer&) const = default;
};

}  // namespace

template <>
struct RecordFields<Inner> {
  static constexpr std::tuple list{RecordField{"number", &Inner::number},
                                   RecordField{"other", &Inner::other}};
};

template <>
struct RecordFields<Outer> {
  static constexpr std::tuple list{
      RecordField{"name", &Outer::name},   RecordField{"note", &Outer::note},
      RecordField{"flag", &Outer::flag},   RecordField{"inners", &Outer::inners},
      RecordField{"inner", &Outer::inner}, RecordField{"numbers", &Outer::numbers},
  };
};

namespace {

using std::string_view_literals::operator""sv;
using Reader = QuickReader<Outer, Inner>;

/// All of a document, into a record that held something else before.
std::optional<Outer> quickly(const std::string& document, Reader& reader) {
  TokenizedText text(document);
  Outer outer{.name = "before",
              .note = "before",
              .flag = true,
              .inners = {{.number = 7, .other = 7}},
              .inner = Inner{.number = 7, .other = 7},
              .numbers = {7}};
  if (!reader.read(text.tokens(), outer) || !text.tokens().atEnd()) {
    return std::nullopt;
  }
  return outer;
}

std::optional<Outer> exactly(const std::string& document) {
  try {
    const ReadDocument read(document);
    Outer outer;
    decode(read.value(), outer);
    return outer;
  } catch (const DecodingError&) {
    return std::nullopt;
  }
}

struct DocumentCase {
  const char* name;
  std::string document;
};

const std::vector<DocumentCase> acceptedDocuments = {
    {"everyField",
     R"({"name":"a","note":"b","flag":true,"inners":[{"number":1,"other":2},{"number":3}],)"
     R"("inner":{"number":-4,"other":null},"numbers":[0,65535]})"},
    {"required", R"({"name":"","flag":false,"inners":[],"numbers":[]})"},
    {"nulls", R"({"name":"","note":null,"flag":false,"inners":[],"inner":null,"numbers":[]})"},
    {"otherOrder", R"({"numbers":[1],"inners":[{"other":1,"number":2}],"flag":true,"name":"x"})"},
    {"blanks",
     " {\n\t\"name\" : \"a\" ,\r\n \"flag\": true, \"inners\" :[ ] , \"numbers\" : [\n\n] } \n"},
    {"escapes", R"({"na\u006de":"\u0061\/","flag":true,"inners":[],"numbers":[]})"},
    {"minusZero", R"({"name":"a","flag":true,"inners":[{"number":-0,"other":-0}],"numbers":[-0]})"},
};

const std::vector<DocumentCase> givenUpDocuments = {
    {"empty", "{}"},
    {"array", "[]"},
    {"number", "1"},
    {"null", "null"},
    {"missingField", R"({"flag":true,"inners":[],"numbers":[]})"},
    {"missingFieldOfAnElement",
     R"({"name":"a","flag":true,"inners":[{"number":1},{"other":2}],"numbers":[]})"},
    {"emptyElement", R"({"name":"a","flag":true,"inners":[{}],"numbers":[]})"},
    {"unknownKey", R"({"name":"a","flag":true,"inners":[],"numbers":[],"more":1})"},
    {"keyTwice", R"({"name":"a","name":"a","flag":true,"inners":[],"numbers":[]})"},
    {"keyTwiceForAMissingOne", R"({"name":"a","flag":true,"flag":true,"numbers":[]})"},
    {"keyFourTimes",
     R"({"flag":true,"flag":true,"flag":true,"flag":true,"inners":[],"numbers":[]})"},
    {"optionalTwice",
     R"({"name":"a","note":null,"note":"b","flag":true,"inners":[],"numbers":[]})"},
    {"nullForRequired", R"({"name":null,"flag":true,"inners":[],"numbers":[]})"},
    {"nullForList", R"({"name":"a","flag":true,"inners":null,"numbers":[]})"},
    {"nullAmongElements", R"({"name":"a","flag":true,"inners":[],"numbers":[null]})"},
    {"numberForText", R"({"name":1,"flag":true,"inners":[],"numbers":[]})"},
    {"textForOptionalRecord", R"({"name":"a","flag":true,"inners":[],"inner":"x","numbers":[]})"},
    {"objectForList", R"({"name":"a","flag":true,"inners":{},"numbers":[]})"},
    {"tooLarge", R"({"name":"a","flag":true,"inners":[],"numbers":[65536]})"},
    {"fraction", R"({"name":"a","flag":true,"inners":[],"numbers":[1.0]})"},
    {"commaBehindElement", R"({"name":"a","flag":true,"inners":[],"numbers":[1,]})"},
    {"commaBeforeElement", R"({"name":"a","flag":true,"inners":[],"numbers":[,1]})"},
    {"commaAlone", R"({"name":"a","flag":true,"inners":[],"numbers":[,]})"},
    {"noCommaBetweenElements", R"({"name":"a","flag":true,"inners":[],"numbers":[1 2]})"},
    {"commaBehindMember", R"({"name":"a","flag":true,"inners":[],"numbers":[],})"},
    {"wrongBracket", R"({"name":"a","flag":true,"inners":[],"numbers":[1}})"},
    {"wrongEnd", R"({"name":"a","flag":true,"inners":[],"numbers":[1]])"},
    {"noEnd", R"({"name":"a","flag":true,"inners":[],"numbers":[1])"},
    {"noEndOfList", R"({"name":"a","flag":true,"inners":[],"numbers":[)"},
    {"moreBehind", R"({"name":"a","flag":true,"inners":[],"numbers":[]} {})"},
    {"braceBehind", R"({"name":"a","flag":true,"inners":[],"numbers":[]}})"},
    {"byteOrderMark", "\xEF\xBB\xBF{\"name\":\"a\",\"flag\":true,\"inners\":[],\"numbers\":[]}"},
};

class AcceptedDocuments : public testing::TestWithParam<DocumentCase> {};

TEST_P(AcceptedDocuments, haveTheExactValue) {
  Reader reader;
  const std::optional<Outer> expected = exactly(GetParam().document);
  ASSERT_TRUE(expected.has_value());
  EXPECT_EQ(quickly(GetParam().document, reader), expected);
  EXPECT_EQ(quickly(GetParam().document, reader), expected);
}

TEST_P(AcceptedDocuments, haveItWhateverWasReadBefore) {
  const std::optional<Outer> expected = exactly(GetParam().document);
  for (const std::vector<DocumentCase>& rows : {acceptedDocuments, givenUpDocuments}) {
    for (const DocumentCase& before : rows) {
      Reader reader;
      quickly(before.document, reader);
      EXPECT_EQ(quickly(GetParam().document, reader), expected) << before.name;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Table, AcceptedDocuments, testing::ValuesIn(acceptedDocuments), RowName());

class GivenUpDocuments : public testing::TestWithParam<DocumentCase> {};

TEST_P(GivenUpDocuments, areGivenUpWhateverWasReadBefore) {
  for (const DocumentCase& before : acceptedDocuments) {
    Reader reader;
    EXPECT_EQ(quickly(GetParam().document, reader), std::nullopt);
    quickly(before.document, reader);
    EXPECT_EQ(quickly(GetParam().document, reader), std::nullopt) << before.name;
  }
}

INSTANTIATE_TEST_SUITE_P(Table, GivenUpDocuments, testing::ValuesIn(givenUpDocuments), RowName());

/// Every document that differs from an accepted one by a byte.
TEST(QuickReaderTest, acceptsNothingThatIsRefusedElsewhere) {
  constexpr std::string_view bytes = "{}[],:\"\\ \n\f\x1A\x00x1-.e\x7F"sv;
  Reader reader;
  for (const DocumentCase& row : acceptedDocuments) {
    for (std::size_t place = 0; place < row.document.size(); ++place) {
      for (const char byte : bytes) {
        for (const std::size_t replaced : {0U, 1U}) {
          const std::string changed =
              std::string(row.document).replace(place, replaced, std::string(1, byte));
          try {
            if (const std::optional<Outer> value = quickly(changed, reader)) {
              ASSERT_EQ(value, exactly(changed)) << changed;
            }
          } catch (const std::invalid_argument&) {
            // No tokens, so nobody is asked.
          }
        }
      }
    }
  }
}

TEST(QuickReaderTest, readsAFieldAlone) {
  TokenizedText text(R"({"numbers":[1,2]})");
  Reader reader;
  Outer outer;
  const std::size_t field = reader.takeMemberStart<Outer>(text.tokens(), fieldCount<Outer>);
  EXPECT_EQ(field, (fieldIndex<Outer, "numbers">));
  EXPECT_TRUE(reader.readField(text.tokens(), outer, field));
  EXPECT_EQ(outer.numbers, (std::vector<std::uint16_t>{1, 2}));
  EXPECT_TRUE(text.tokens().isNext('}'));
}

TEST(SeenFieldsTest, tellFieldsThatAreThereTwice) {
  constexpr std::size_t required = fieldIndex<Inner, "number">;
  constexpr std::size_t optional = fieldIndex<Inner, "other">;
  Inner inner{.number = 1, .other = 2};
  SeenFields<Inner> seen;
  EXPECT_FALSE(seen.finish(inner));
  seen.add(required);
  EXPECT_TRUE(seen.finish(inner));
  EXPECT_EQ(inner, (Inner{.number = 1, .other = std::nullopt}));
  inner.other = 3;
  seen.add(optional);
  EXPECT_TRUE(seen.finish(inner));
  EXPECT_EQ(inner.other, 3);
  for (const std::size_t repeated : {required, optional}) {
    SeenFields<Inner> more = seen;
    more.add(repeated);
    EXPECT_FALSE(more.finish(inner)) << repeated;
    more.add(repeated);
    EXPECT_FALSE(more.finish(inner)) << repeated;
  }
}

}  // namespace
}  // namespace velmora

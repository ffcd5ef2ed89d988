#include "json/RecordEncoding.h"
#include "tests/json/AnsweredFields.h"
#include "tests/json/Faults.h"
#include "tests/json/ReadDocument.h"
#include "warpshared/records/FieldCodecs.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <string_view>

namespace velmora::internal {
namespace {

std::string jsonText(std::string_view text) {
  std::string json;
  appendJSONString(json, text);
  return json;
}

/// Expects the faults of a type with text values for every other JSON type.
template <class Value>
void expectTextsOnly() {
  EXPECT_EQ(faultIn<Value>("null"), "valueNotFound @0: Expected a string but found null.");
  EXPECT_EQ(faultIn<Value>("true"), "typeMismatch @0: Expected a string but found a boolean.");
  EXPECT_EQ(faultIn<Value>("0"), "typeMismatch @0: Expected a string but found a number.");
  EXPECT_EQ(faultIn<Value>("[]"), "typeMismatch @0: Expected a string but found an array.");
  EXPECT_EQ(faultIn<Value>("{}"), "typeMismatch @0: Expected a string but found an object.");
}

TEST(FieldCodecsTest, datesAndWordsAreTexts) {
  expectTextsOnly<Date>();
  expectTextsOnly<VelmoraWarpSharedStatus>();
  expectTextsOnly<VelmoraWarpSharedEntryKind>();
  expectTextsOnly<VelmoraWarpSharedPayloadEncoding>();
  expectTextsOnly<VelmoraPayloadNamespace>();
}

TEST(FieldCodecsTest, datesAreTextsOfDateTimes) {
  EXPECT_EQ(decoded<Date>(R"("2001-01-01T00:00:00\u005a")"), Date{0});
  for (const char* const text : {R"("")", R"("2001-01-01T00:00:00Z\u0000")"}) {
    EXPECT_EQ(faultIn<Date>(' ' + std::string(text)),
              "dataCorrupted @1: Expected a date such as 2025-03-01T12:00:00Z.");
  }
  EXPECT_EQ(encoded(Date{0}), R"("2001-01-01T00:00:00Z")");
}

TEST(FieldCodecsTest, answersTheDateCases) {
  expectAnsweredFields<Date>("warpshared/date.jsonl", 29, [](const Date& date) {
    return std::to_string(static_cast<std::int64_t>(date.secondsSinceReferenceDate));
  });
}

/// Expects an enumeration to accept its words and to refuse similar texts.
template <class Enumeration>
void expectItsWordsOnly() {
  std::size_t index = 0;
  for (const std::string_view word : EnumNames<Enumeration>::list) {
    SCOPED_TRACE(word);
    const auto value = static_cast<Enumeration>(index);
    EXPECT_EQ(decoded<Enumeration>(jsonText(word)), value);
    EXPECT_EQ(encoded(value), jsonText(word));
    std::string capitalized(word);
    capitalized.front() = static_cast<char>(capitalized.front() - 'a' + 'A');
    for (const std::string& other :
         {capitalized, std::string(word) + " ", " " + std::string(word), std::string(word) + "s",
          std::string(word) + "\u0301", std::string(word) + std::string(1, '\0'),
          std::string(word.substr(1)), std::to_string(index), std::string()}) {
      EXPECT_EQ(faultIn<Enumeration>(" " + jsonText(other)),
                "dataCorrupted @1: The text is none of the words that may stand here.")
          << other;
    }
    ++index;
  }
}

TEST(FieldCodecsTest, enumerationsAreWordsWithExactBytes) {
  expectItsWordsOnly<VelmoraWarpSharedStatus>();
  expectItsWordsOnly<VelmoraWarpSharedEntryKind>();
  expectItsWordsOnly<VelmoraWarpSharedPayloadEncoding>();
  expectItsWordsOnly<VelmoraPayloadNamespace>();
}

TEST(FieldCodecsTest, valuesWithoutATextAreNotWritten) {
  EXPECT_EQ(encodingFaultOf([] { return encoded(Date{0.5}); }),
            ": The date has a fraction of a second.");
  for (const int number : {-1, 5, 255, 256}) {
    EXPECT_EQ(
        encodingFaultOf([&] { return encoded(static_cast<VelmoraWarpSharedStatus>(number)); }),
        ": The value is none of its enumeration.");
  }
}

TEST(FieldCodecsTest, wordsMayHaveEscapes) {
  EXPECT_EQ(decoded<VelmoraWarpSharedStatus>(R"("needs\u0041ttention")"),
            VelmoraWarpSharedStatus::needsAttention);
}

}  // namespace
}  // namespace velmora::internal

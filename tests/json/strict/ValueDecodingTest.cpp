#include "json/JSONWriting.h"
#include "json/strict/ValueDecoding.h"
#include "tests/json/AnsweredFields.h"
#include "tests/json/Faults.h"
#include "tests/json/ReadDocument.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <vector>

namespace velmora::internal {
namespace {

struct JSONTypeCase {
  const char* document;
  std::string type;
};

const JSONTypeCase jsonTypes[] = {
    {"true", "a boolean"}, {"1", "a number"},   {"1.5", "a number"},
    {"\"1\"", "a string"}, {"[1]", "an array"}, {"{\"1\":1}", "an object"},
};

/// Expects the faults for all JSON types except the type's own, whose description is `expected`.
template <class Value>
void expectOneJSONType(const std::string& expected) {
  EXPECT_EQ(faultIn<Value>(" null "),
            "valueNotFound @1: Expected " + expected + " but found null.");
  for (const JSONTypeCase& row : jsonTypes) {
    if (row.type != expected) {
      SCOPED_TRACE(row.document);
      EXPECT_EQ(faultIn<Value>(std::string("  ") + row.document),
                "typeMismatch @2: Expected " + expected + " but found " + row.type + ".");
    }
  }
}

TEST(ValueDecodingTest, eachTypeAcceptsOnlyItsOwnJSONType) {
  expectOneJSONType<std::int64_t>("a number");
  expectOneJSONType<std::uint64_t>("a number");
  expectOneJSONType<std::uint32_t>("a number");
  expectOneJSONType<std::uint16_t>("a number");
  expectOneJSONType<bool>("a boolean");
  expectOneJSONType<Text>("a string");
  expectOneJSONType<TextView>("a string");
  expectOneJSONType<std::vector<Text>>("an array");
  expectOneJSONType<std::vector<std::int64_t>>("an array");
}

TEST(ValueDecodingTest, scalarsAreDecoded) {
  EXPECT_TRUE(decoded<bool>("true"));
  EXPECT_FALSE(decoded<bool>("false"));
  EXPECT_EQ(decoded<Text>(R"("a\u0000\/")").utf8(), (std::string{"a\0/", 3}));
  EXPECT_EQ(decoded<Text>("\"e\u0301\"").utf8(), "e\u0301");
  EXPECT_EQ(decoded<std::int64_t>("-0"), 0);
  EXPECT_EQ(decoded<std::uint16_t>("40e-1"), 4);
}

TEST(ValueDecodingTest, textViewsReferToTheDocument) {
  const ReadDocument document(R"("\/a")");
  TextView view;
  decode(document.value(), view);
  EXPECT_EQ(view.view(), "/a");
  EXPECT_EQ(view.view().data(), document.value().text().data());
}

// ExactIntegerTest tests the range of each type.
template <class Integer>
void expectBoundaries(const std::string& bits) {
  using Limits = std::numeric_limits<Integer>;
  EXPECT_EQ(decoded<Integer>(std::to_string(Limits::min()) + ".0"), Limits::min());
  EXPECT_EQ(decoded<Integer>(std::to_string(Limits::max()) + "e0"), Limits::max());
  const std::string tooWide = "dataCorrupted @0: The number does not fit into " + bits;
  EXPECT_EQ(faultIn<Integer>("-18446744073709551615"), tooWide);
  if (Limits::max() != std::numeric_limits<std::uint64_t>::max()) {
    EXPECT_EQ(faultIn<Integer>("18446744073709551615"), tooWide);
  }
  for (const char* const number : {"0.5", "18446744073709551616"}) {
    EXPECT_EQ(faultIn<Integer>(number), "dataCorrupted @0: The number is not whole, or too large.");
  }
}

TEST(ValueDecodingTest, integersHaveTheRangeOfTheirType) {
  expectBoundaries<std::int8_t>("8 bits with a sign.");
  expectBoundaries<std::uint8_t>("8 bits without a sign.");
  expectBoundaries<std::int16_t>("16 bits with a sign.");
  expectBoundaries<std::uint16_t>("16 bits without a sign.");
  expectBoundaries<std::int32_t>("32 bits with a sign.");
  expectBoundaries<std::uint32_t>("32 bits without a sign.");
  expectBoundaries<std::int64_t>("64 bits with a sign.");
  expectBoundaries<std::uint64_t>("64 bits without a sign.");
}

TEST(ValueDecodingTest, nullStandsForAnAbsentValue) {
  EXPECT_EQ(decoded<std::optional<bool>>("null"), std::nullopt);
  EXPECT_EQ(decoded<std::optional<bool>>("false"), false);
  EXPECT_EQ(decoded<std::optional<std::vector<Text>>>("null"), std::nullopt);
  EXPECT_EQ(faultIn<std::optional<bool>>("1"),
            "typeMismatch @0: Expected a boolean but found a number.");
  std::optional<Text> text = "before";
  decode(ReadDocument("null").value(), text);
  EXPECT_EQ(text, std::nullopt);
}

TEST(ValueDecodingTest, arraysAreDecodedInOrder) {
  EXPECT_EQ(decoded<std::vector<std::int64_t>>("[]"), (std::vector<std::int64_t>{}));
  EXPECT_EQ(decoded<std::vector<std::int64_t>>("[3,-1, 2.0]"),
            (std::vector<std::int64_t>{3, -1, 2}));
  EXPECT_EQ((decoded<std::vector<std::vector<Text>>>(R"([["a"],[],["b","c"]])")),
            (std::vector<std::vector<Text>>{{"a"}, {}, {"b", "c"}}));
}

TEST(ValueDecodingTest, arrayReplacesTheEarlierElements) {
  std::vector<Text> texts = {"x", "y", "z"};
  decode(ReadDocument(R"(["a"])").value(), texts);
  EXPECT_EQ(texts, (std::vector<Text>{"a"}));
}

TEST(ValueDecodingTest, codingPathLeadsToTheElement) {
  EXPECT_EQ(faultIn<std::vector<Text>>(R"(["a",1])"),
            "typeMismatch 1 @5: Expected a string but found a number.");
  EXPECT_EQ(faultIn<std::vector<Text>>(R"([null,1])"),
            "valueNotFound 0 @1: Expected a string but found null.");
  EXPECT_EQ(faultIn<std::vector<std::vector<std::uint16_t>>>("[[],[1,2,-1]]"),
            "dataCorrupted 1.2 @9: The number does not fit into 16 bits without a sign.");
  EXPECT_EQ(faultIn<std::vector<std::vector<Text>>>("[[],{}]"),
            "typeMismatch 1 @4: Expected an array but found an object.");
}

TEST(ValueDecodingTest, elementsAreDecodedInOrder) {
  const ReadDocument document(R"(["a",[],2])");
  std::vector<std::size_t> offsets;
  decodeElements(document.value(),
                 [&offsets](JSONValue element) { offsets.push_back(element.byteOffset()); });
  EXPECT_EQ(offsets, (std::vector<std::size_t>{1, 5, 8}));
}

TEST(ValueDecodingTest, refusedDataHasItsOffset) {
  const ReadDocument document(R"({"\u0061":"\n\n"})");
  const JSONValue value = JSONMembers(document.value()).value();
  EXPECT_EQ(faultOf([value] { refuseData(value, "No."); }), "dataCorrupted @10: No.");
}

template <class Integer>
std::string quoted(Integer integer) {
  return '"' + std::to_string(integer) + '"';
}

TEST(ValueDecodingTest, answersTheIntegerCases) {
  expectAnsweredFields<std::int64_t>("json/int64.jsonl", 30, quoted<std::int64_t>);
  expectAnsweredFields<std::uint64_t>("json/uint64.jsonl", 32, quoted<std::uint64_t>);
  expectAnsweredFields<std::uint32_t>("json/uint32.jsonl", 20, quoted<std::uint32_t>);
  expectAnsweredFields<std::uint16_t>("json/uint16.jsonl", 20, quoted<std::uint16_t>);
}

TEST(ValueDecodingTest, answersTheBooleanAndStringCases) {
  expectAnsweredFields<bool>("json/bool.jsonl", 28,
                             [](bool value) { return value ? "true" : "false"; });
  expectAnsweredFields<Text>("json/string.jsonl", 24, [](const Text& text) {
    std::string json;
    appendJSONString(json, text);
    return json;
  });
}

}  // namespace
}  // namespace velmora::internal

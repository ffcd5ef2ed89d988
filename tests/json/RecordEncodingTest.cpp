#include "json/RecordEncoding.h"
#include "json/strict/RecordDecoding.h"
#include "tests/json/Faults.h"
#include "tests/json/ReadDocument.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <vector>

namespace velmora::internal {

// Not in an unnamed namespace, because argument-dependent lookup must find `encode`.

struct Point {
  std::int64_t x = 0;
  std::optional<std::int64_t> y;

  bool operator==(const Point&) const = default;
};

struct Everything {
  std::int64_t smallest = std::numeric_limits<std::int64_t>::min();
  std::uint64_t largest = std::numeric_limits<std::uint64_t>::max();
  std::uint16_t narrow = 65535;
  bool isTrue = true;
  bool isFalse = false;
  Text text;
  std::vector<Text> texts;
  Point point;
  std::vector<Point> points;
  std::optional<Point> maybe;

  bool operator==(const Everything&) const = default;
};

struct Optionals {
  std::optional<bool> first;
  std::optional<Text> second;
  std::optional<std::vector<Text>> third;

  bool operator==(const Optionals&) const = default;
};

template <>
struct RecordFields<Point> {
  static constexpr std::tuple list{RecordField{"x", &Point::x}, RecordField{"y", &Point::y}};
};

template <>
struct RecordFields<Everything> {
  static constexpr std::tuple list{
      RecordField{"smallest", &Everything::smallest}, RecordField{"largest", &Everything::largest},
      RecordField{"narrow", &Everything::narrow},     RecordField{"isTrue", &Everything::isTrue},
      RecordField{"isFalse", &Everything::isFalse},   RecordField{"\"text\"/", &Everything::text},
      RecordField{"texts", &Everything::texts},       RecordField{"point", &Everything::point},
      RecordField{"points", &Everything::points},     RecordField{"maybe", &Everything::maybe},
  };
};

template <>
struct RecordFields<Optionals> {
  static constexpr std::tuple list{RecordField{"first", &Optionals::first},
                                   RecordField{"second", &Optionals::second},
                                   RecordField{"third", &Optionals::third}};
};

namespace {

template <class Value>
void expectToDecodeAsItself(const Value& value) {
  const ReadDocument document(encoded(value));
  Value again;
  decode(document.value(), again);
  EXPECT_EQ(again, value);
}

TEST(RecordEncodingTest, keysHaveTheOrderOfTheirDeclaration) {
  EXPECT_EQ(encoded(Everything{}),
            R"({"smallest":-9223372036854775808,"largest":18446744073709551615,)"
            R"("narrow":65535,"isTrue":true,"isFalse":false,"\"text\"/":"","texts":[],)"
            R"("point":{"x":0},"points":[]})");
}

TEST(RecordEncodingTest, valuesAreNested) {
  Everything everything;
  everything.text = "a/\"\n\u00e9";
  everything.texts = {"", "x", "y"};
  everything.point = {.x = 1, .y = -2};
  everything.points = {{}, {.x = 3, .y = 4}};
  everything.maybe = Point{.x = 5, .y = std::nullopt};
  const std::string json = encoded(everything);
  EXPECT_EQ(json.substr(json.find("\"\\\"text")),
            "\"\\\"text\\\"/\":\"a/\\\"\\n\u00e9\",\"texts\":[\"\",\"x\",\"y\"],"
            "\"point\":{\"x\":1,\"y\":-2},\"points\":[{\"x\":0},{\"x\":3,\"y\":4}],"
            "\"maybe\":{\"x\":5}}");
  expectToDecodeAsItself(everything);
}

TEST(RecordEncodingTest, absentFieldsAreLeftOut) {
  EXPECT_EQ(encoded(Optionals{}), "{}");
  EXPECT_EQ(encoded(Optionals{.first = std::nullopt, .second = "s", .third = std::nullopt}),
            R"({"second":"s"})");
  EXPECT_EQ(encoded(Optionals{.first = false, .second = "", .third = std::vector<Text>{}}),
            R"({"first":false,"second":"","third":[]})");
}

TEST(RecordEncodingTest, encodedRecordDecodesToItself) {
  expectToDecodeAsItself(Everything{});
  expectToDecodeAsItself(Optionals{});
  expectToDecodeAsItself(Optionals{.first = true, .second = std::nullopt, .third = {{"", "\n"}}});
}

TEST(RecordEncodingTest, textsThatAreNotUTF8AreRefusedWithTheirPath) {
  constexpr const char* notUTF8[] = {"\xFF", "a\xC3", "\xE6\x97", "\xED\xA0\x80", "\xC0\xAF"};
  for (const char* const text : notUTF8) {
    EXPECT_EQ(encodingFaultOf([&] { return encoded(Text(text)); }), ": The text is not UTF-8.");
    std::vector<Optionals> records(2);
    records[1].third = {"", text};
    EXPECT_EQ(encodingFaultOf([&] { return encoded(records); }),
              "1.third.1: The text is not UTF-8.");
  }
}

TEST(RecordEncodingTest, valuesAreAppended) {
  JSONText json{.utf8 = "["};
  encode(json, Point{});
  encode(json, true);
  encode(json, std::int64_t{-1});
  encode(json, std::vector<std::vector<Text>>{{}, {"a"}});
  EXPECT_EQ(json.utf8, R"([{"x":0}true-1[[],["a"]])");
}

}  // namespace
}  // namespace velmora::internal

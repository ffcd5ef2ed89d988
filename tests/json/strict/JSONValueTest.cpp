#include "json/strict/JSONValue.h"
#include "tests/json/ReadDocument.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace velmora::internal {
namespace {

struct TypeCase {
  const char* document;
  JSONType type;
  std::string_view description;
};

constexpr TypeCase typeCases[] = {
    {"null", JSONType::null, "null"},
    {"true", JSONType::boolean, "a boolean"},
    {"false", JSONType::boolean, "a boolean"},
    {"0", JSONType::number, "a number"},
    {"-1e5", JSONType::number, "a number"},
    {"\"\"", JSONType::string, "a string"},
    {"\"\\n\"", JSONType::string, "a string"},
    {"[]", JSONType::array, "an array"},
    {"[{}]", JSONType::array, "an array"},
    {"{}", JSONType::object, "an object"},
    {"{\"\":[]}", JSONType::object, "an object"},
};

TEST(JSONValueTest, valuesHaveTheirType) {
  for (const TypeCase& row : typeCases) {
    SCOPED_TRACE(row.document);
    EXPECT_EQ(ReadDocument(row.document).value().type(), row.type);
    EXPECT_EQ(describe(row.type), row.description);
    const ReadDocument inArray("[[],{}, " + std::string(row.document) + " ]");
    JSONElements elements(inArray.value());
    elements.advance();
    elements.advance();
    EXPECT_EQ(elements.value().type(), row.type);
    EXPECT_EQ(elements.value().byteOffset(), 8U);
    elements.advance();
    EXPECT_TRUE(elements.atEnd());
  }
}

TEST(JSONValueTest, booleansHaveTheirValue) {
  EXPECT_TRUE(ReadDocument("true").value().boolean());
  EXPECT_FALSE(ReadDocument("false").value().boolean());
}

TEST(JSONValueTest, scalarsEndBeforeBlanks) {
  const ReadDocument document(" [ -12.5e3 \t\n, \" text \" \r] ");
  JSONElements elements(document.value());
  EXPECT_EQ(elements.value().number(), "-12.5e3");
  elements.advance();
  EXPECT_EQ(elements.value().text(), " text ");
  EXPECT_EQ(ReadDocument(" 7 \n").value().number(), "7");
  EXPECT_EQ(ReadDocument(" \"7 \"\n").value().text(), "7 ");
}

TEST(JSONValueTest, textHasItsEscapesResolved) {
  EXPECT_EQ(ReadDocument(R"("\"\\\u0000\n")").value().text(), (std::string_view{"\"\\\0\n", 4}));
  EXPECT_EQ(ReadDocument("\"\"").value().text(), "");
  EXPECT_EQ(ReadDocument("\" \"").value().text(), " ");
}

std::vector<std::string> keysOf(JSONValue object) {
  std::vector<std::string> keys;
  for (JSONMembers members(object); !members.atEnd(); members.advance()) {
    keys.emplace_back(members.key());
  }
  return keys;
}

std::vector<std::size_t> elementOffsets(JSONValue array) {
  std::vector<std::size_t> offsets;
  for (JSONElements elements(array); !elements.atEnd(); elements.advance()) {
    offsets.push_back(elements.value().byteOffset());
  }
  return offsets;
}

TEST(JSONValueTest, emptyContainersHaveNoElements) {
  EXPECT_TRUE(JSONElements(ReadDocument("[]").value()).atEnd());
  EXPECT_TRUE(JSONElements(ReadDocument("[ \n]").value()).atEnd());
  EXPECT_TRUE(JSONMembers(ReadDocument("{}").value()).atEnd());
  EXPECT_TRUE(JSONMembers(ReadDocument("{ \n}").value()).atEnd());
}

TEST(JSONValueTest, membersAreInOrderWithDuplicates) {
  const ReadDocument document(R"({"b":1,"a":2,"b":3,"":4,"\u0061":5})");
  EXPECT_EQ(keysOf(document.value()), (std::vector<std::string>{"b", "a", "b", "", "a"}));
  std::vector<std::string> numbers;
  for (JSONMembers members(document.value()); !members.atEnd(); members.advance()) {
    numbers.emplace_back(members.value().number());
  }
  EXPECT_EQ(numbers, (std::vector<std::string>{"1", "2", "3", "4", "5"}));
}

TEST(JSONValueTest, walkSkipsNestedContainers) {
  const ReadDocument document(
      R"({"a":[1,[2,{"x":[]}],{}],"b":{"y":{"z":[{}]}},"c":[],"d":{},"e":"]}"})");
  EXPECT_EQ(keysOf(document.value()), (std::vector<std::string>{"a", "b", "c", "d", "e"}));
  JSONMembers members(document.value());
  EXPECT_EQ(elementOffsets(members.value()), (std::vector<std::size_t>{6, 8, 21}));
  members.advance();
  EXPECT_EQ(keysOf(members.value()), (std::vector<std::string>{"y"}));
}

TEST(JSONValueTest, elementsOfAllTypesAreWalked) {
  const ReadDocument document(R"([[],"]",[[]],{},{"]":"["},null,-1,false,[0]])");
  EXPECT_EQ(elementOffsets(document.value()),
            (std::vector<std::size_t>{1, 4, 8, 13, 16, 26, 31, 34, 40}));
}

TEST(JSONValueTest, valueIsFoundAgainByItsToken) {
  const ReadDocument document(R"(["a",{"b":[1]}])");
  JSONElements elements(document.value());
  elements.advance();
  const JSONValue value = elements.value();
  const JSONValue again(value.document(), value.token());
  EXPECT_EQ(again.type(), JSONType::object);
  EXPECT_EQ(again.byteOffset(), 5U);
  EXPECT_EQ(keysOf(again), (std::vector<std::string>{"b"}));
}

}  // namespace
}  // namespace velmora::internal

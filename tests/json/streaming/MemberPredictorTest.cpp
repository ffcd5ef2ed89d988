#include "json/streaming/MemberPredictor.h"
#include "tests/json/TokenizedText.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <tuple>
#include <vector>

namespace velmora::internal {

namespace {

struct Numbers {
  int first = 0;
  int second = 0;
  int third = 0;
};

}  // namespace

template <>
struct RecordFields<Numbers> {
  static constexpr std::tuple list{
      RecordField{"first", &Numbers::first},
      RecordField{"second", &Numbers::second},
      RecordField{"a/third \"key\" that is longer than the 48 bytes that a prefix can have at most",
                  &Numbers::third},
  };
};

namespace {

using Prediction = MemberPredictor<Numbers>;
using Fields = std::vector<std::size_t>;

constexpr std::size_t end = Prediction::end;
constexpr std::size_t none = Prediction::none;
/// Any unknown key.
constexpr std::size_t unknown = Prediction::firstUnknown;

/// The members of an object of numbers, in order. The last one is `end` at the end of the object,
/// or `none` for another text.
Fields fieldsIn(const std::string& object, Prediction& prediction) {
  TokenizedText text(object);
  TokenCursor& tokens = text.tokens();
  Fields fields;
  std::size_t field = Prediction::end;
  int value = 0;
  do {
    field = prediction.take(tokens, field);
    fields.push_back(std::min(field, unknown));
  } while (field != end && field != none && tokens.take(value));
  return fields;
}

const std::string longKey =
    R"("a\/third \"key\" that is longer than the 48 bytes that a prefix can have at most")";

/// As long as the longest prefix, so that the cursor compares every prefix before it.
const std::string blanks(MemberPrefix::maxLength, ' ');

struct ObjectCase {
  const char* name;
  std::string object;
  Fields fields;
};

const std::vector<ObjectCase> objects = {
    {"compact", R"({"first":1,"second":2})", {0, 1, end}},
    {"compactInOtherOrder", R"({"second":1,"first":2})", {1, 0, end}},
    {"compactFarFromTheEnd", R"({"first":1,"second":2)" + blanks + "}", {0, 1, end}},
    {"pretty", "{\n  \"first\" : 1,\n  \"second\" : 2\n}", {0, 1, end}},
    {"prettyFarFromTheEnd", "{\n  \"first\" : 1,\n  \"second\" : 2\n}" + blanks, {0, 1, end}},
    {"otherBlanksAfterTheColon", R"({"first": 1,"second":  2})" + blanks, {0, 1, end}},
    {"escapedKey", R"({"\u0066irst":1,"sec\u006Fnd":2})" + blanks, {0, 1, end}},
    {"twice", R"({"first":1,"first":2,"first":3})" + blanks, {0, 0, 0, end}},
    {"longKey", "{" + longKey + ":1,\"first\":2}" + blanks, {2, 0, end}},
    {"longBlanks", "{\"first\":" + blanks + "1,\"second\":2}" + blanks, {0, 1, end}},
    {"unknownKey", R"({"first":1,"third":2,"second":3})" + blanks, {0, unknown, 1, end}},
    {"unknownKeys",
     R"({"x":0,"first":1,"y":2,"zzz":3,"second":4,"":5})" + blanks,
     {unknown, 0, unknown, unknown, 1, unknown, end}},
    {"longUnknownKey", R"({"first":1,")" + blanks + R"(":2,"second":3})", {0, unknown, 1, end}},
    {"keyInOtherCase", R"({"First":1})" + blanks, {unknown, end}},
    {"keyThatBeginsAlike", R"({"first":1,"second2":2})" + blanks, {0, unknown, end}},
    {"keyThatIsShorter", R"({"first":1,"secon":2})" + blanks, {0, unknown, end}},
    {"keyWithBrokenEscape", R"({"first":1,"second\x":2})" + blanks, {0, none}},
    {"noQuotes", R"({first:1})" + blanks, {none}},
    {"noColon", R"({"first":1,"second"2})" + blanks, {0, none}},
    {"twoColons", R"({"first":1,"second"::2})" + blanks, {0, 1}},
    {"noComma", R"({"first":1 "second":2})" + blanks, {0, none}},
    {"twoCommas", R"({"first":1,,"second":2})" + blanks, {0, none}},
    {"braceForComma", R"({"first":1{"second":2})" + blanks, {0, none}},
    {"commaForBrace", R"(,"first":1,"second":2})" + blanks, {none}},
    {"lettersAfterTheKey", R"({"first":1,"second"x:2})" + blanks, {0, none}},
    {"lettersAfterTheColon", R"({"first":1,"second":x2})" + blanks, {0, 1}},
    {"formFeedForComma", "{\"first\":1\f\"second\":2}" + blanks, {0, none}},
    {"empty", "{}", {none}},
    {"commaAtTheEnd", R"({"first":1,})" + blanks, {0, none}},
    {"endAfterTheKey", R"({"first":1,"second")", {0, none}},
    {"endAfterTheColon", R"({"first":1,"second":)", {0, 1}},
};

TEST(MemberPredictorTest, findsTheFieldsAfterAnyEarlierObject) {
  for (const ObjectCase& row : objects) {
    SCOPED_TRACE(row.name);
    for (const ObjectCase& before : objects) {
      Prediction prediction;
      EXPECT_EQ(fieldsIn(before.object, prediction), before.fields) << before.name;
      EXPECT_EQ(fieldsIn(row.object, prediction), row.fields) << before.name;
      EXPECT_EQ(fieldsIn(before.object, prediction), before.fields) << before.name;
    }
  }
}

TEST(MemberPredictorTest, findsTheFieldsAfterManyObjectsInMixedOrder) {
  for (const ObjectCase& row : objects) {
    SCOPED_TRACE(row.name);
    Prediction prediction;
    for (int count = 0; count < 2000; ++count) {
      const bool isReversed = count % 7 < 3;
      const std::string colon = count % 3 == 0 ? "\": " : "\":";
      const std::string object = isReversed ? "{\"second" + colon + "1,\"first" + colon + "2}"
                                            : "{\"first" + colon + "1,\"second" + colon + "2}";
      const Fields expected = isReversed ? Fields{1, 0, end} : Fields{0, 1, end};
      EXPECT_EQ(fieldsIn(object + blanks, prediction), expected) << count;
      if (count % 100 == 0) {
        EXPECT_EQ(fieldsIn(row.object, prediction), row.fields) << count;
      }
    }
  }
}

TEST(MemberPredictorTest, findsTheFieldsOfUsualAndOtherForms) {
  const std::vector<ObjectCase> forms = {
      {"both", R"({"first":1,"second":2})" + blanks, {0, 1, end}},
      {"one", R"({"first":1})" + blanks, {0, end}},
      {"twice", R"({"first":1,"first":2})" + blanks, {0, 0, end}},
      {"unknown", R"({"first":1,"more":0,"second":2})" + blanks, {0, unknown, 1, end}},
      {"spaced", R"({"first":1, "second":2})" + blanks, {0, 1, end}},
  };
  for (const ObjectCase& usual : forms) {
    for (const ObjectCase& other : forms) {
      Prediction prediction;
      for (const int length : {1, 1, 30, 1, 1, 6, 50, 2, 1}) {
        for (int count = 0; count < length; ++count) {
          EXPECT_EQ(fieldsIn(usual.object, prediction), usual.fields) << other.name;
        }
        EXPECT_EQ(fieldsIn(other.object, prediction), other.fields) << usual.name;
      }
    }
  }
}

}  // namespace
}  // namespace velmora::internal

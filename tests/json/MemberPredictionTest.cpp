#include "json/MemberPrediction.h"
#include "tests/RowName.h"
#include "tests/json/TokenizedText.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <vector>

namespace velmora {

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
      RecordField{
          "a/third \"key\" that is so long that no glance takes all of it: 64 bytes, at least",
          &Numbers::third},
  };
};

namespace {

using Prediction = MemberPrediction<Numbers>;
using Fields = std::vector<std::size_t>;

/// The fields of an object of numbers, in order; with `none` at the end where it is not one, or has
/// others.
Fields fieldsIn(const std::string& object, Prediction& prediction) {
  TokenizedText text(object);
  QuickTokens& tokens = text.tokens();
  Fields fields;
  std::size_t field = Prediction::none;
  do {
    int value = 0;
    field = prediction.take(tokens, field);
    fields.push_back(field);
    if (field == Prediction::none || !tokens.take(value)) {
      return fields;
    }
  } while (!tokens.take('}'));
  return fields;
}

const std::string longKey =
    R"("a\/third \"key\" that is so long that no glance takes all of it: 64 bytes, at least")";

/// Far enough from the end for a glance at everything before.
const std::string blanks(MemberStart::glance, ' ');

struct ObjectCase {
  const char* name;
  std::string object;
  Fields fields;
};

const std::vector<ObjectCase> objects = {
    {"compact", R"({"first":1,"second":2})", {0, 1}},
    {"compactInOtherOrder", R"({"second":1,"first":2})", {1, 0}},
    {"compactFarFromTheEnd", R"({"first":1,"second":2)" + blanks + "}", {0, 1}},
    {"pretty", "{\n  \"first\" : 1,\n  \"second\" : 2\n}", {0, 1}},
    {"prettyFarFromTheEnd", "{\n  \"first\" : 1,\n  \"second\" : 2\n}" + blanks, {0, 1}},
    {"otherBlanksBehindTheColon", R"({"first": 1,"second":  2})" + blanks, {0, 1}},
    {"escapedKey", R"({"\u0066irst":1,"sec\u006Fnd":2})" + blanks, {0, 1}},
    {"twice", R"({"first":1,"first":2,"first":3})" + blanks, {0, 0, 0}},
    {"longKey", "{" + longKey + ":1,\"first\":2}" + blanks, {2, 0}},
    {"longBlanks", "{\"first\":" + blanks + "1,\"second\":2}" + blanks, {0, 1}},
    {"unknownKey", R"({"first":1,"third":2})" + blanks, {0, 3}},
    {"keyInOtherCase", R"({"First":1})" + blanks, {3}},
    {"keyThatBeginsAlike", R"({"first":1,"second2":2})" + blanks, {0, 3}},
    {"keyThatIsShorter", R"({"first":1,"secon":2})" + blanks, {0, 3}},
    {"keyWithBrokenEscape", R"({"first":1,"second\x":2})" + blanks, {0, 3}},
    {"noQuotes", R"({first:1})" + blanks, {3}},
    {"noColon", R"({"first":1,"second"2})" + blanks, {0, 3}},
    {"twoColons", R"({"first":1,"second"::2})" + blanks, {0, 1}},
    {"noComma", R"({"first":1 "second":2})" + blanks, {0, 3}},
    {"twoCommas", R"({"first":1,,"second":2})" + blanks, {0, 3}},
    {"braceForComma", R"({"first":1{"second":2})" + blanks, {0, 3}},
    {"commaForBrace", R"(,"first":1,"second":2})" + blanks, {3}},
    {"lettersBehindTheKey", R"({"first":1,"second"x:2})" + blanks, {0, 3}},
    {"lettersBehindTheColon", R"({"first":1,"second":x2})" + blanks, {0, 1}},
    {"formFeedForComma", "{\"first\":1\f\"second\":2}" + blanks, {0, 3}},
    {"empty", "{}", {3}},
    {"commaAtTheEnd", R"({"first":1,})" + blanks, {0, 3}},
    {"endBehindTheKey", R"({"first":1,"second")", {0, 3}},
    {"endBehindTheColon", R"({"first":1,"second":)", {0, 1}},
};

class PredictedMembers : public testing::TestWithParam<ObjectCase> {};

TEST_P(PredictedMembers, areTheFieldsThatAreThere) {
  Prediction prediction;
  EXPECT_EQ(fieldsIn(GetParam().object, prediction), GetParam().fields);
  EXPECT_EQ(fieldsIn(GetParam().object, prediction), GetParam().fields);
}

TEST_P(PredictedMembers, areTheSameWhateverWasThereBefore) {
  for (const ObjectCase& before : objects) {
    Prediction prediction;
    fieldsIn(before.object, prediction);
    EXPECT_EQ(fieldsIn(GetParam().object, prediction), GetParam().fields) << before.name;
    EXPECT_EQ(fieldsIn(before.object, prediction), before.fields) << before.name;
  }
}

INSTANTIATE_TEST_SUITE_P(Table, PredictedMembers, testing::ValuesIn(objects), RowName());

}  // namespace
}  // namespace velmora

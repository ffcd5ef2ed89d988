#include "JSONObject.h"

#include <gtest/gtest.h>

namespace velmora::inspect {
namespace {

TEST(JSONObjects, keepTheOrderOfTheirKeys) {
  JSONObject inner;
  inner.addNumber("n", 18446744073709551615U);
  JSONObject object;
  object.addText("b", "x");
  object.addFlag("a", true);
  object.addFlag("no", false);
  object.addNull("nothing");
  object.addJSON("inner", inner.json());
  EXPECT_EQ(object.json(),
            R"({"b":"x","a":true,"no":false,"nothing":null,"inner":{"n":18446744073709551615}})");
  EXPECT_EQ(JSONObject().json(), "{}");
}

TEST(JSONStrings, areUTF8InOneLine) {
  EXPECT_EQ(jsonString("a/\"\\\n\x1b\xff"), "\"a/\\\"\\\\\\n\\u001b\uFFFD\"");
}

TEST(JSONArrays, holdTheirElements) {
  EXPECT_EQ(jsonArray({}), "[]");
  EXPECT_EQ(jsonArray({"1"}), "[1]");
  EXPECT_EQ(jsonArray({"1", "\"a\"", "[]"}), "[1,\"a\",[]]");
}

}  // namespace
}  // namespace velmora::inspect

// Documents of one kind of record for all readers of records. The strict reader reports each fault.
// The streaming reader accepts or refuses.
#pragma once

#include "json/RecordFields.h"
#include "text/Text.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

namespace velmora::internal {

struct SampleItem {
  std::int64_t number = 0;
  std::optional<Text> note;

  bool operator==(const SampleItem&) const = default;
};

struct SampleRecord {
  Text name;
  std::uint16_t count = 0;
  SampleItem item;
  std::optional<SampleItem> maybe;
  std::vector<SampleItem> list;
  std::optional<bool> flag;
  std::optional<std::vector<std::uint16_t>> numbers;

  bool operator==(const SampleRecord&) const = default;
};

template <>
struct RecordFields<SampleItem> {
  static constexpr std::tuple list{RecordField{"number", &SampleItem::number},
                                   RecordField{"note", &SampleItem::note}};
};

template <>
struct RecordFields<SampleRecord> {
  static constexpr std::tuple list{
      RecordField{"name", &SampleRecord::name},       RecordField{"count", &SampleRecord::count},
      RecordField{"item", &SampleRecord::item},       RecordField{"maybe", &SampleRecord::maybe},
      RecordField{"list", &SampleRecord::list},       RecordField{"\u00e9", &SampleRecord::flag},
      RecordField{"numbers", &SampleRecord::numbers},
  };
};

/// A record with a value in every field, which reading must replace.
inline SampleRecord usedRecord() {
  const SampleItem item = {.number = 7, .note = "before"};
  return {"before", 7, item, item, {item, item}, true, {{7}}};
}

struct RecordCase {
  const char* name;
  std::string document;
  /// The record written again, compact and in the order of its fields; or the fault, as describe()
  /// (Faults.h) writes it.
  std::string outcome;

  /// Whether every reader reads a record from it.
  [[nodiscard]] bool isAccepted() const { return outcome.starts_with('{'); }
};

/// All required fields.
inline const std::string required = R"("name":"n","count":2,"item":{"number":3},"list":[])";

/// The required fields, with other members before or after them. `rest` may end the record or not.
inline std::string withFirst(std::string_view members) {
  return "{" + std::string(members) + "," + required + "}";
}
inline std::string withLast(std::string_view rest) { return "{" + required + std::string(rest); }

inline const std::string everyField =
    R"({"name":"n","count":2,"item":{"number":3,"note":"x"},"maybe":{"number":-4},)"
    "\"list\":[{\"number\":5,\"note\":\"y\"},{\"number\":6}],\"\u00e9\":true,\"numbers\":[0,65535]"
    "}";

inline const RecordCase recordCases[] = {
    {"everyField", everyField, everyField},
    {"otherOrderAndBlanks",
     " {\n\t\"numbers\" : [1, 2] ,\r\n \"\u00e9\": false, \"list\" : [{ \"number\" : 5 }\n ], "
     "\"item\" : { \"note\" : \"y\" , \"number\" : 3 }, \"count\" : 2, \"name\" : \"n\" } \n",
     "{\"name\":\"n\",\"count\":2,\"item\":{\"number\":3,\"note\":\"y\"},\"list\":[{\"number\":5}],"
     "\"\u00e9\":false,\"numbers\":[1,2]}"},
    {"otherOrder", R"({"list":[{"note":"x","number":2}],"item":{"number":3},"count":2,"name":"n"})",
     R"({"name":"n","count":2,"item":{"number":3},"list":[{"number":2,"note":"x"}]})"},
    {"requiredFields", withLast("}"), withLast("}")},
    {"emptyValues", R"({"name":"","count":0,"item":{"number":0,"note":""},"list":[],"numbers":[]})",
     R"({"name":"","count":0,"item":{"number":0,"note":""},"list":[],"numbers":[]})"},
    {"blanksInEmptyLists", R"({"name":"n","count":2,"item":{"number":3},"list":[ ],"numbers":[ ]})",
     withLast(",\"numbers\":[]}")},
    {"nulls", withLast(",\"maybe\":null,\"\u00e9\":null,\"numbers\":null}"), withLast("}")},
    {"nullInRecord", withLast(R"(,"maybe":{"number":-4,"note":null}})"),
     R"({"name":"n","count":2,"item":{"number":3},"maybe":{"number":-4},"list":[]})"},
    {"escapes", R"({"na\u006de":"\u006e","count":2,"item":{"number":3},"list":[],"\u00E9":true})",
     withLast(",\"\u00e9\":true}")},
    {"minusZero", withLast(R"(,"maybe":{"number":-0},"numbers":[-0]})"),
     R"({"name":"n","count":2,"item":{"number":3},"maybe":{"number":0},"list":[],"numbers":[0]})"},
    {"duplicateKey", withFirst(R"("count":7,"count":8)"),
     R"({"name":"n","count":7,"item":{"number":3},"list":[]})"},
    {"duplicateEscapedKey", withFirst(R"("c\u006funt":7)"),
     R"({"name":"n","count":7,"item":{"number":3},"list":[]})"},
    {"duplicateOfAnotherType", withFirst(R"("count":7,"count":"not looked at")"),
     R"({"name":"n","count":7,"item":{"number":3},"list":[]})"},
    {"duplicateOfNull", withFirst(R"("maybe":null,"maybe":{"number":1})"), withLast("}")},
    {"duplicateLast", withLast(R"(,"name":"x"})"), withLast("}")},
    {"duplicateOfRequiredNull", withFirst(R"("count":null,"count":7)"),
     "valueNotFound count @9: Expected a number but found null."},
    {"duplicateForAMissingOne", R"({"name":"n","count":2,"count":2,"list":[]})",
     R"(keyNotFound item @0: The key "item" is missing.)"},
    {"fourOfOne", R"({"count":2,"count":2,"count":2,"count":2,"item":{"number":3},"list":[]})",
     R"(keyNotFound name @0: The key "name" is missing.)"},
    {"otherKeys", withFirst(R"("other":{"name":[1,{}]},"":0,"Name":1,"names":2,"na":3)"),
     withLast("}")},
    {"otherKeyLast", withLast(R"(,"more":1})"), withLast("}")},
    {"keyWithMark", withLast(",\"e\u0301\":true}"), withLast("}")},
    {"keyWithNUL", withFirst(R"("name\u0000":1)"), withLast("}")},
    {"null", " null", "valueNotFound @1: Expected an object but found null."},
    {"number", "1", "typeMismatch @0: Expected an object but found a number."},
    {"array", "[]", "typeMismatch @0: Expected an object but found an array."},
    {"empty", " {}", R"(keyNotFound name @1: The key "name" is missing.)"},
    {"firstMissingKeyByDeclaration", R"({"list":[],"name":""})",
     R"(keyNotFound count @0: The key "count" is missing.)"},
    {"onlyFirstMissing", R"({"count":2,"item":{"number":3},"list":[]})",
     R"(keyNotFound name @0: The key "name" is missing.)"},
    {"firstFaultByDeclaration", R"({"list":1,"item":2,"count":"","name":"n"})",
     "typeMismatch count @27: Expected a number but found a string."},
    {"missingBeforeWrong", R"({"item":1,"name":"n"})",
     R"(keyNotFound count @0: The key "count" is missing.)"},
    {"wrongBeforeMissing", R"({"item":1,"name":null})",
     "valueNotFound name @17: Expected a string but found null."},
    {"escapedKeyOfWrong", R"({"\u006eame":1})",
     "typeMismatch name @13: Expected a string but found a number."},
    {"notASCIIKeyOfWrong", withLast(",\"\u00e9\":0}"),
     "typeMismatch \u00e9 @57: Expected a boolean but found a number."},
    {"nullForText", R"({"name":null,"count":2,"item":{"number":3},"list":[]})",
     "valueNotFound name @8: Expected a string but found null."},
    {"numberForText", R"({"name":1,"count":2,"item":{"number":3},"list":[]})",
     "typeMismatch name @8: Expected a string but found a number."},
    {"outOfRange", R"({"name":"n","count":65536})",
     "dataCorrupted count @20: The number does not fit into 16 bits without a sign."},
    {"outOfRangeInList", withLast(R"(,"numbers":[1,65536]})"),
     "dataCorrupted numbers.1 @65: The number does not fit into 16 bits without a sign."},
    {"fraction", withLast(R"(,"numbers":[0.5]})"),
     "dataCorrupted numbers.0 @63: The number is not whole, or too large."},
    {"zeroAsFraction", withLast(R"(,"numbers":[1.0]})"),
     R"({"name":"n","count":2,"item":{"number":3},"list":[],"numbers":[1]})"},
    {"missingInRecord", R"({"name":"n","count":2,"item": {"note":"x"}})",
     R"(keyNotFound item.number @30: The key "number" is missing.)"},
    {"wrongInRecord", R"({"name":"n","count":2,"item":{"note":1,"number":2}})",
     "typeMismatch item.note @37: Expected a string but found a number."},
    {"wrongInAbsentRecord", withLast(R"(,"maybe":{"number":null}})"),
     "valueNotFound maybe.number @70: Expected a number but found null."},
    {"wrongTypeForAbsentRecord", withLast(R"(,"maybe":false})"),
     "typeMismatch maybe @60: Expected an object but found a boolean."},
    {"missingInElement",
     R"({"name":"n","count":2,"item":{"number":3},"list":[{"number":1},{"note":""}]})",
     R"(keyNotFound list.1.number @63: The key "number" is missing.)"},
    {"emptyElement", R"({"name":"n","count":2,"item":{"number":3},"list":[{}]})",
     R"(keyNotFound list.0.number @50: The key "number" is missing.)"},
    {"wrongInElement",
     R"({"name":"n","count":2,"item":{"number":3},"list":[{"number":1},{"number":0.5}]})",
     "dataCorrupted list.1.number @73: The number is not whole, or too large."},
    {"nullForElement", R"({"name":"n","count":2,"item":{"number":3},"list":[{"number":1},null]})",
     "valueNotFound list.1 @63: Expected an object but found null."},
    {"nullForNumberInList", withLast(R"(,"numbers":[null]})"),
     "valueNotFound numbers.0 @63: Expected a number but found null."},
    {"nullForArray", R"({"name":"n","count":2,"item":{"number":3},"list":null})",
     "valueNotFound list @49: Expected an array but found null."},
    {"objectForArray", R"({"name":"n","count":2,"item":{"number":3},"list":{}})",
     "typeMismatch list @49: Expected an array but found an object."},
    {"afterResolvedStrings", R"({"\u006eame":"\u006e","count":"\n\n"})",
     "typeMismatch count @30: Expected a number but found a string."},
    {"commaAfterElement", withLast(R"(,"numbers":[1,]})"), "dataCorrupted @65: Expected a value."},
    {"commaBeforeElement", withLast(R"(,"numbers":[,1]})"), "dataCorrupted @63: Expected a value."},
    {"commaAlone", withLast(R"(,"numbers":[,]})"), "dataCorrupted @63: Expected a value."},
    {"noCommaBetweenElements", withLast(R"(,"numbers":[1 2]})"),
     "dataCorrupted @65: Expected a comma or the end of the array."},
    {"commaAfterMember", withLast(",}"), "dataCorrupted @52: Expected a key."},
    {"wrongBracket", withLast(R"(,"numbers":[1}})"),
     "dataCorrupted @64: Expected a comma or the end of the array."},
    {"wrongEnd", withLast("]"), "dataCorrupted @51: Expected a comma or the end of the object."},
    {"noEnd", withLast(""), "dataCorrupted @51: The document ends early."},
    {"noEndOfList", withLast(R"(,"numbers":[)"), "dataCorrupted @63: The document ends early."},
    {"moreTextAfter", withLast("} {}"),
     "dataCorrupted @53: Something follows the document's value."},
    {"braceAfter", withLast("}}"), "dataCorrupted @52: Something follows the document's value."},
};

}  // namespace velmora::internal

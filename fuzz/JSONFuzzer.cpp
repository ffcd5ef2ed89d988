// Any document: JSONReader accepts it if and only if another parser does, with the same values.
// Each value has its offset. The document reads back as itself in any layout.
#include "fuzz/Verdict.h"
#include "tests/support/JSONJudge.h"

#include <string_view>
#include <vector>

namespace velmora::internal {
namespace {

void requireToStandAt(JSONValue value, char first) {
  switch (value.type()) {
    case JSONType::null:
      require(first == 'n');
      break;
    case JSONType::boolean:
      require(first == (value.boolean() ? 't' : 'f'));
      break;
    case JSONType::number:
      require(first == value.number().front());
      break;
    case JSONType::string:
      require(first == '"');
      break;
    case JSONType::array:
      require(first == '[');
      break;
    case JSONType::object:
      require(first == '{');
      break;
  }
}

void requireValuesInTheirPlaces(std::string_view document) {
  std::string bytes(document);
  JSONReader reader;
  std::vector<JSONValue> pending = {reader.read(bytes)};
  while (!pending.empty()) {
    const JSONValue value = pending.back();
    pending.pop_back();
    requireToStandAt(value, document[value.byteOffset()]);
    if (value.type() == JSONType::array) {
      for (JSONElements elements(value); !elements.atEnd(); elements.advance()) {
        pending.push_back(elements.value());
      }
    } else if (value.type() == JSONType::object) {
      for (JSONMembers members(value); !members.atEnd(); members.advance()) {
        pending.push_back(members.value());
      }
    }
  }
}

std::string compact(std::string_view document) {
  std::string bytes(document);
  JSONReader reader;
  return rewritten(reader.read(bytes));
}

void requireStrictReading(std::string_view document) {
  JSONJudge judge;
  const JSONAgreement agreement = judge.ask(std::string(document));
  require(agreement != JSONAgreement::differ);
  const Verdict<std::vector<std::string>> others = inOtherLayouts(document);
  require((others.value() != nullptr) == (agreement == JSONAgreement::bothRead));
  if (others.value() == nullptr) {
    require(others.fault()->kind == DecodingErrorKind::dataCorrupted);
    require(others.fault()->codingPath.empty());
    return;
  }
  requireValuesInTheirPlaces(document);
  const std::string& plain = others.value()->front();
  require(compact(plain) == plain);
  for (const std::string& other : *others.value()) {
    require(judge.ask(other) == JSONAgreement::bothRead);
    require(compact(other).size() == plain.size());
  }
}

}  // namespace
}  // namespace velmora::internal

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  velmora::internal::requireStrictReading(velmora::textOf(data, size));
  return 0;
}

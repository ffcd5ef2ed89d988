#include "json/strict/JSONValue.h"

namespace velmora::internal {

std::string_view describe(JSONType type) {
  switch (type) {
    case JSONType::null:
      return "null";
    case JSONType::boolean:
      return "a boolean";
    case JSONType::number:
      return "a number";
    case JSONType::string:
      return "a string";
    case JSONType::array:
      return "an array";
    case JSONType::object:
      break;
  }
  return "an object";
}

std::size_t JSONValue::byteOffset() const {
  std::size_t offset = isContainer() ? container().byteOffset : *token_;
  while (offset > 0 && document_.bytes[offset - 1] == JSONDocument::fillerByte) {
    --offset;
  }
  return offset;
}

}  // namespace velmora::internal

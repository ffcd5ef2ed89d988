#include "json/strict/JSONValue.h"

namespace velmora::internal {

std::string_view describe(JSONType type) {
  constexpr std::array<std::string_view, 6> descriptions = {"null",     "a boolean", "a number",
                                                            "a string", "an array",  "an object"};
  return descriptions[static_cast<std::size_t>(type)];
}

std::size_t JSONValue::byteOffset() const {
  std::size_t offset = isContainer() ? container().byteOffset : *token_;
  while (offset > 0 && document_.bytes[offset - 1] == JSONDocument::fillerByte) {
    --offset;
  }
  return offset;
}

}  // namespace velmora::internal

#include "json/strict/RecordDecoding.h"

namespace velmora::internal {

namespace {

DecodingError faultAt(std::string_view key, DecodingError error) {
  error.prependToCodingPath(std::string(key));
  return error;
}

}  // namespace

void refuseMissingKey(JSONValue object, std::string_view key) {
  std::string description = "The key \"";
  description.append(key).append("\" is missing.");
  throw faultAt(key,
                DecodingError(DecodingErrorKind::keyNotFound, description, object.byteOffset()));
}

void refuseMember(JSONValue valueOrObject, std::string_view key, const char* description) {
  throw faultAt(key, DecodingError(DecodingErrorKind::dataCorrupted, description,
                                   valueOrObject.byteOffset()));
}

}  // namespace velmora::internal

#include "json/RecordDecoding.h"

namespace velmora {

void refuseMissingKey(JSONValue object, std::string_view key) {
  std::string description = "The key \"";
  description.append(key).append("\" is missing.");
  DecodingError error(DecodingErrorKind::keyNotFound, description, object.byteOffset());
  error.prependToCodingPath(std::string(key));
  throw error;
}

void refuseMember(JSONValue valueOrObject, std::string_view key, const char* description) {
  DecodingError error(DecodingErrorKind::dataCorrupted, description, valueOrObject.byteOffset());
  error.prependToCodingPath(std::string(key));
  throw error;
}

}  // namespace velmora

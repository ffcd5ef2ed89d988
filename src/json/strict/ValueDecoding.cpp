#include "json/strict/ValueDecoding.h"

namespace velmora::internal {

void refuseData(JSONValue value, const std::string& description) {
  throw DecodingError(DecodingErrorKind::dataCorrupted, description, value.byteOffset());
}

void refuseType(JSONValue value, JSONType type) {
  const JSONType found = value.type();
  const auto kind =
      found == JSONType::null ? DecodingErrorKind::valueNotFound : DecodingErrorKind::typeMismatch;
  std::string description = "Expected ";
  description.append(describe(type)).append(" but found ").append(describe(found)).append(".");
  throw DecodingError(kind, description, value.byteOffset());
}

ExactInteger requireWholeNumber(JSONValue value) {
  requireType(value, JSONType::number);
  const std::optional<ExactInteger> integer = exactInteger(value.number());
  if (!integer.has_value()) {
    refuseData(value, "The number is not whole, or too large.");
  }
  return *integer;
}

void refuseRange(JSONValue value, std::size_t bits, bool isSigned) {
  refuseData(value, "The number does not fit into " + std::to_string(bits) +
                        (isSigned ? " bits with a sign." : " bits without a sign."));
}

}  // namespace velmora::internal

#include "warpshared/records/FieldCodecs.h"

#include <optional>

namespace velmora::internal {

void decode(JSONValue value, Date& date) {
  requireType(value, JSONType::string);
  const std::optional<Date> parsed = parseInternetDateTime(value.text());
  if (!parsed.has_value()) {
    refuseData(value, "Expected a date such as 2025-03-01T12:00:00Z.");
  }
  date = *parsed;
}

bool quickTake(TokenCursor& tokens, Date& date) {
  std::string_view text;
  if (!tokens.take(text)) {
    return false;
  }
  const std::optional<Date> parsed = parseInternetDateTime(text);
  date = parsed.value_or(Date());
  return parsed.has_value();
}

void encode(JSONText& json, const Date& date) {
  appendJSONString(json.utf8, internetDateTime(date));
}

void refuseWord(JSONValue value) {
  refuseData(value, "The text is none of the words that may stand here.");
}

void refuseNumberOfWord() { throw EncodingError("The value is none of its enumeration."); }

}  // namespace velmora::internal

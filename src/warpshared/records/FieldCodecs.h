// Decodes and encodes the types of fields that only the shared formats have.
#pragma once

#include "json/RecordEncoding.h"
#include "json/streaming/TokenCursor.h"
#include "json/strict/JSONValue.h"
#include "json/strict/ValueDecoding.h"
#include "warpshared/records/Date.h"
#include "warpshared/records/Enumerations.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace velmora::internal {

/// A text in the internet date-time format; dataCorrupted for any other.
void decode(JSONValue value, Date& date);

/// Throws EncodingError as internetDateTime (Date.h) does.
void encode(JSONText& json, const Date& date);

/// For StreamingRecordReader. False for any other token.
bool quickTake(TokenCursor& tokens, Date& date);

template <EnumerationWithRawValues Enumeration>
bool quickTake(TokenCursor& tokens, Enumeration& enumeration) {
  std::string_view word;
  if (!tokens.take(word)) {
    return false;
  }
  constexpr const auto& words = EnumNames<Enumeration>::list;
  const auto found = std::ranges::find(words, word);
  enumeration = static_cast<Enumeration>(found - words.begin());
  return found != words.end();
}

[[noreturn]] void refuseWord(JSONValue value);
[[noreturn]] void refuseNumberOfWord();

/// One of the texts of the enumeration, byte for byte; dataCorrupted for any other text.
template <EnumerationWithRawValues Enumeration>
void decode(JSONValue value, Enumeration& enumeration) {
  requireType(value, JSONType::string);
  constexpr const auto& words = EnumNames<Enumeration>::list;
  const auto found = std::ranges::find(words, value.text());
  if (found == words.end()) {
    refuseWord(value);
  }
  enumeration = static_cast<Enumeration>(found - words.begin());
}

template <EnumerationWithRawValues Enumeration>
void encode(JSONText& json, Enumeration enumeration) {
  if (static_cast<std::size_t>(enumeration) >= EnumNames<Enumeration>::list.size()) {
    refuseNumberOfWord();
  }
  appendJSONString(json.utf8, rawValue(enumeration));
}

}  // namespace velmora::internal

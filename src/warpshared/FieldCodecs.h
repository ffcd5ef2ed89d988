// How the values that only the shared formats have stand in JSON.
#pragma once

#include "json/JSONValue.h"
#include "json/JSONWriting.h"
#include "json/TokenCursor.h"
#include "json/ValueDecoding.h"
#include "warpshared/Date.h"
#include "warpshared/Enumerations.h"

#include <algorithm>
#include <string>
#include <string_view>

namespace velmora {

/// A text in the internet date-time format; dataCorrupted for any other.
void decode(JSONValue value, Date& date);

void encode(std::string& json, const Date& date);

/// For StreamingRecordReader, as it is done for values that it knows itself.
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

/// One of the enumeration's words, byte for byte; dataCorrupted for any other text.
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
void encode(std::string& json, Enumeration enumeration) {
  appendJSONString(json, rawValue(enumeration));
}

}  // namespace velmora

// A chunk has to end between two tokens. The search for such a place takes two steps:
//
// 1. Backwards from the end, for two patterns that occur between tokens only: a line break, and the
//    beginning of the next object in a list. Most documents have one nearby.
// 2. If there is none, the chunk ends after the last blank or punctuation. This byte may be part of
//    a string, which then has no end in the chunk. The chunk ends before that string instead: at
//    the last quote that is not escaped.
#include "json/streaming/ChunkEnd.h"

#include "json/TokenFinder.h"

#include <algorithm>

namespace velmora::internal {

namespace {

bool isLetter(char byte) { return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z'); }

bool endsToken(char byte) {
  return isJSONBlank(byte) || std::string_view(",:{}[]").find(byte) != std::string_view::npos;
}

/// Whether a number can have this byte.
bool isInNumbers(char byte) {
  return (byte >= '0' && byte <= '9') ||
         std::string_view("+-.eE").find(byte) != std::string_view::npos;
}

/// The last offset in the end of `text` that is between two tokens for sure; 0 when none is found.
///
/// A string contains no line break, which must be escaped. It contains no `{"` with a letter after
/// it either: the quote would end the string, and no letter follows the end of a string. If the
/// text is not JSON, the offset may be inside of a string, which then has no end in the chunk.
std::size_t lastSurePlace(std::string_view text) {
  constexpr std::string_view object = "{\"";
  /// Most records are shorter.
  constexpr std::size_t searchedLength = 4096;
  const std::size_t last = text.size() - std::min(text.size(), searchedLength);
  for (std::size_t end = text.size(); end > last + object.size(); --end) {
    if (text[end - 1] == '\n') {
      return end;
    }
    const std::size_t begin = end - 1 - object.size();
    if (text[begin] == '{' && text[begin + 1] == '"' && isLetter(text[end - 1])) {
      const std::size_t comma = text.substr(0, begin).find_last_not_of(' ');
      if (comma != std::string_view::npos && text[comma] == ',') {
        return begin;
      }
    }
  }
  return 0;
}

/// The length of the escape at the beginning of `text`, with its partner if it is half of a pair.
std::size_t escapeLength(std::string_view text) {
  constexpr std::size_t unitLength = std::string_view("\\u0000").size();
  if (!text.starts_with("\\u")) {
    return std::string_view("\\n").size();
  }
  const std::string_view half = text.substr(0, unitLength);
  const bool isHighSurrogate = half.size() == unitLength && (half[2] == 'd' || half[2] == 'D') &&
                               std::string_view("89abAB").find(half[3]) != std::string_view::npos;
  return isHighSurrogate ? 2 * unitLength : unitLength;
}

}  // namespace

std::size_t lastChunkEnd(std::string_view text) {
  if (const std::size_t place = lastSurePlace(text); place != 0) {
    return place;
  }
  std::size_t end = text.size();
  while (end > 0 && !endsToken(text[end - 1])) {
    --end;
  }
  return end;
}

std::size_t unclosedStringOffset(std::string_view text) {
  std::size_t quote = text.rfind('"');
  while (quote != std::string_view::npos && quote > 0) {
    const std::size_t before = text.find_last_not_of('\\', quote - 1);
    const std::size_t backslashes = quote - (before == std::string_view::npos ? 0 : before + 1);
    if (backslashes % 2 == 0) {
      return quote;
    }
    quote = text.rfind('"', quote - 1);
  }
  return 0;
}

std::size_t lastOffsetOutsideOfEscapes(std::string_view text) {
  std::size_t place = 0;
  while (true) {
    const std::size_t escape = text.find('\\', place);
    if (escape == std::string_view::npos) {
      return text.size();
    }
    const std::size_t end = escape + escapeLength(text.substr(escape));
    if (end > text.size()) {
      return escape;
    }
    place = end;
  }
}

bool mayBeginToken(std::string_view text) {
  constexpr std::size_t shortLength = 4096;
  return text.size() < shortLength || text.front() == '"' || std::ranges::all_of(text, isInNumbers);
}

}  // namespace velmora::internal

#include "text/Characters.h"

#include "text/Text.h"
#include "text/UTF8.h"

#include <utf8proc.h>

namespace velmora {
namespace {

/// The end of the character that begins at `begin`. A byte that is not UTF-8 is a character by
/// itself.
std::size_t characterEnd(std::string_view text, std::size_t begin) {
  internal::CodePoint last = internal::codePointAt(text, begin);
  std::size_t end = begin + last.length;
  utf8proc_int32_t state = 0;
  while (end < text.size() && last.isUTF8()) {
    const internal::CodePoint next = internal::codePointAt(text, end);
    if (!next.isUTF8() || utf8proc_grapheme_break_stateful(last.value, next.value, &state)) {
      break;
    }
    end += next.length;
    last = next;
  }
  return end;
}

/// hasCharacterPrefix without its fast paths: compares character by character.
bool hasEqualCharacters(std::string_view text, std::string_view prefix) {
  while (!prefix.empty()) {
    if (text.empty()) {
      return false;
    }
    const std::size_t textEnd = characterEnd(text, 0);
    const std::size_t prefixEnd = characterEnd(prefix, 0);
    if (!canonicallyEqual(text.substr(0, textEnd), prefix.substr(0, prefixEnd))) {
      return false;
    }
    text.remove_prefix(textEnd);
    prefix.remove_prefix(prefixEnd);
  }
  return true;
}

std::size_t countOfCRLF(std::string_view text) {
  constexpr std::string_view crlf = "\r\n";
  std::size_t count = 0;
  for (std::size_t found = text.find(crlf); found != std::string_view::npos;
       found = text.find(crlf, found + crlf.size())) {
    ++count;
  }
  return count;
}

bool isCharacterBoundaryBeforeASCII(std::string_view text, std::size_t position) {
  if (position == 0) {
    return true;
  }
  const internal::CodePoint before = internal::codePointBefore(text, position);
  return !before.isUTF8() || utf8proc_grapheme_break(before.value, text[position]);
}

/// Whether a character ends between the ASCII `before` and `after`, which begins beyond ASCII.
/// Rare, and therefore not inlined into the check that runs for each path.
[[gnu::noinline]] bool isCharacterBoundaryBetween(char before, std::string_view after) {
  const internal::CodePoint first = internal::codePointAt(after, 0);
  return !first.isUTF8() || utf8proc_grapheme_break(before, first.value);
}

bool isWholeCharacter(std::string_view text, std::size_t positionOfASCII) {
  return isCharacterBoundaryBeforeASCII(text, positionOfASCII) &&
         isCharacterBoundaryAfterASCII(text, positionOfASCII + 1);
}

}  // namespace

bool hasCharacterPrefix(std::string_view text, std::string_view prefix) {
  if (prefix.empty()) {
    return true;
  }
  const std::size_t common = internal::commonPrefixLength(text, prefix);
  if (common == prefix.size()) {
    return internal::isASCII(prefix.back()) ? isCharacterBoundaryAfterASCII(text, common)
                                            : hasEqualCharacters(text, prefix);
  }
  // A text that ends within the prefix has too few code points. Two different ASCII characters are
  // never parts of canonically equal characters.
  if (common == text.size() ||
      (internal::isASCII(text[common]) && internal::isASCII(prefix[common]))) {
    return false;
  }
  return hasEqualCharacters(text, prefix);
}

std::size_t characterCount(std::string_view text) {
  std::size_t count = 0;
  while (!text.empty()) {
    const std::size_t run = internal::asciiPrefixLength(text);
    if (run == 0) {
      ++count;
      text.remove_prefix(characterEnd(text, 0));
      continue;
    }
    count += run - countOfCRLF(text.substr(0, run));
    // Only the last character of the run can extend beyond it.
    text.remove_prefix(characterEnd(text, run - 1));
  }
  return count;
}

std::vector<std::string_view> splitAtCharacter(std::string_view text, char separator) {
  std::vector<std::string_view> parts;
  std::size_t partBegin = 0;
  for (std::size_t found = text.find(separator); found != std::string_view::npos;
       found = text.find(separator, found + 1)) {
    if (isWholeCharacter(text, found)) {
      parts.push_back(text.substr(partBegin, found - partBegin));
      partBegin = found + 1;
    }
  }
  parts.push_back(text.substr(partBegin));
  return parts;
}

bool isCharacterBoundaryAfterASCII(std::string_view text, std::size_t position) {
  // Two ASCII characters form one only as CR LF.
  if (position == text.size() || internal::isASCII(text[position])) {
    return position == text.size() || text[position] != '\n' || text[position - 1] != '\r';
  }
  return isCharacterBoundaryBetween(text[position - 1], text.substr(position));
}

}  // namespace velmora

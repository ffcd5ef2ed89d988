// A parser by recursive descent. Reader holds the rest of the text, and each of its functions
// consumes one element from the front: blanks and comments, a quoted text, an escape. The first
// fault throws Fault, which parseStringsTable() catches, so a table is read as a whole or not at
// all. The text is checked to be UTF-8 before, so bytes outside of escapes are copied unchanged.
#include "platform/linux/StringsTable.h"

#include "text/Hexadecimal.h"
#include "text/Text.h"
#include "text/UTF8.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace velmora {
namespace {

/// Thrown at the first fault; never leaves this file.
struct Fault {};

class Reader {
 public:
  explicit Reader(std::string_view rest) : rest_(rest) {}

  StringsTable table() {
    StringsTable table;
    for (skipBlanks(); !rest_.empty(); skipBlanks()) {
      std::string key = quotedText();
      skipBlanks();
      require('=');
      skipBlanks();
      table.insert_or_assign(std::move(key), quotedText());
      skipBlanks();
      require(';');
    }
    return table;
  }

 private:
  bool skip(std::string_view prefix) {
    if (!rest_.starts_with(prefix)) {
      return false;
    }
    rest_.remove_prefix(prefix.size());
    return true;
  }

  void require(char character) {
    if (take() != character) {
      throw Fault();
    }
  }

  char take() {
    if (rest_.empty()) {
      throw Fault();
    }
    const char character = rest_.front();
    rest_.remove_prefix(1);
    return character;
  }

  void skipBlanks() {
    for (;;) {
      rest_.remove_prefix(std::min(rest_.find_first_not_of(" \t\n\v\f\r"), rest_.size()));
      if (!skipComment()) {
        return;
      }
    }
  }

  bool skipComment() {
    if (skip("//")) {
      rest_.remove_prefix(std::min(rest_.find_first_of("\n\r"), rest_.size()));
      return true;
    }
    if (!skip("/*")) {
      return false;
    }
    const std::size_t end = rest_.find("*/");
    if (end == std::string_view::npos) {
      throw Fault();
    }
    rest_.remove_prefix(end + 2);
    return true;
  }

  std::string quotedText() {
    require('"');
    std::string text;
    for (char character = take(); character != '"'; character = take()) {
      if (character == '\\') {
        internal::appendUTF8(text, escapedCharacter());
      } else {
        text.push_back(character);
      }
    }
    return text;
  }

  char32_t escapedCharacter() {
    constexpr std::string_view letters = "\"\\abfnrtv";
    constexpr std::string_view meanings = "\"\\\a\b\f\n\r\t\v";
    if (nextDigit(8).has_value()) {
      return octalCharacter();
    }
    const char letter = take();
    if (letter == 'U') {
      return utf16Character();
    }
    const std::size_t index = letters.find(letter);
    if (index == std::string_view::npos) {
      throw Fault();
    }
    return static_cast<unsigned char>(meanings[index]);
  }

  /// The value of the next character as a digit of `base`; none when it is no such digit.
  std::optional<unsigned> nextDigit(unsigned base) const {
    const std::optional<unsigned> value =
        rest_.empty() ? std::nullopt : internal::hexDigitValue(rest_.front());
    return value.has_value() && *value < base ? value : std::nullopt;
  }

  char32_t octalCharacter() {
    char32_t value = 0;
    for (int digits = 0; digits < 3 && nextDigit(8).has_value(); ++digits) {
      value = value * 8 + *nextDigit(8);
      take();
    }
    if (value > 0x7F) {
      throw Fault();
    }
    return value;
  }

  char32_t utf16Character() {
    const char32_t unit = utf16Unit();
    if (internal::isLowSurrogate(unit)) {
      throw Fault();
    }
    if (!internal::isHighSurrogate(unit)) {
      return unit;
    }
    if (!skip("\\U")) {
      throw Fault();
    }
    const char32_t low = utf16Unit();
    if (!internal::isLowSurrogate(low)) {
      throw Fault();
    }
    return internal::codePointOfPair(unit, low);
  }

  char32_t utf16Unit() {
    char32_t unit = 0;
    for (int digits = 0; digits < 4; ++digits) {
      const std::optional<unsigned> digit = nextDigit(16);
      if (!digit.has_value()) {
        throw Fault();
      }
      unit = unit * 16 + *digit;
      take();
    }
    return unit;
  }

  std::string_view rest_;
};

}  // namespace

std::optional<StringsTable> parseStringsTable(std::string_view utf8) {
  constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
  if (!isUTF8(utf8)) {
    return std::nullopt;
  }
  if (utf8.starts_with(byteOrderMark)) {
    utf8.remove_prefix(byteOrderMark.size());
  }
  try {
    return Reader(utf8).table();
  } catch (const Fault&) {
    return std::nullopt;
  }
}

}  // namespace velmora

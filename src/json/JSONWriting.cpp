#include "json/JSONWriting.h"

#include "text/Hexadecimal.h"

namespace velmora::internal {

namespace {

void appendControlCharacter(std::string& json, char character) {
  json += "\\u00";
  appendHexByte(json, static_cast<unsigned char>(character), lowerCaseHexDigits);
}

void appendCharacter(std::string& json, char character, SlashStyle slashes) {
  switch (character) {
    case '"':
      json += "\\\"";
      return;
    case '\\':
      json += "\\\\";
      return;
    case '/':
      json += slashes == SlashStyle::escaped ? "\\/" : "/";
      return;
    case '\b':
      json += "\\b";
      return;
    case '\f':
      json += "\\f";
      return;
    case '\n':
      json += "\\n";
      return;
    case '\r':
      json += "\\r";
      return;
    case '\t':
      json += "\\t";
      return;
    default:
      break;
  }
  if (static_cast<unsigned char>(character) < 0x20) {
    appendControlCharacter(json, character);
  } else {
    json += character;
  }
}

}  // namespace

void appendJSONString(std::string& json, std::string_view text, SlashStyle slashes) {
  json += '"';
  for (const char character : text) {
    appendCharacter(json, character, slashes);
  }
  json += '"';
}

}  // namespace velmora::internal

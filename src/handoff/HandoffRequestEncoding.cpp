#include "handoff/HandoffRequestEncoding.h"

#include "json/JSONWriting.h"
#include "platform/PlatformError.h"

#include <cerrno>
#include <cstdio>
#include <string_view>

namespace velmora {

namespace {

void appendString(std::string& json, std::string_view text) {
  if (!isUTF8(text)) {
    throw posixError(EILSEQ);
  }
  appendJSONString(json, text, SlashStyle::escaped);
}

void appendStrings(std::string& json, const std::vector<Text>& texts) {
  if (texts.empty()) {
    json += "[\n\n  ]";
    return;
  }
  std::string_view separator = "\n    ";
  json += '[';
  for (const Text& text : texts) {
    json += separator;
    appendString(json, text);
    separator = ",\n    ";
  }
  json += "\n  ]";
}

}  // namespace

std::string internetDateTime(std::chrono::system_clock::time_point instant) {
  const auto seconds = std::chrono::floor<std::chrono::seconds>(instant);
  const auto day = std::chrono::floor<std::chrono::days>(seconds);
  const std::chrono::year_month_day date(day);
  const std::chrono::hh_mm_ss time(seconds - day);
  char text[64];
  std::snprintf(text, sizeof text, "%04d-%02u-%02uT%02d:%02d:%02dZ", static_cast<int>(date.year()),
                static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()),
                static_cast<int>(time.hours().count()), static_cast<int>(time.minutes().count()),
                static_cast<int>(time.seconds().count()));
  return text;
}

std::string encodeHandoffRequest(const HandoffRequest& request) {
  std::string json = "{\n  \"action\" : ";
  appendString(json, rawValue(request.action));
  json += ",\n  \"createdAt\" : ";
  appendString(json, internetDateTime(request.createdAt));
  json += ",\n  \"folderPaths\" : ";
  appendStrings(json, request.folderPaths);
  json += "\n}";
  return json;
}

}  // namespace velmora

#include "handoff/HandoffRequestEncoding.h"

#include "json/JSONWriting.h"
#include "platform/PlatformError.h"
#include "text/InternetDateTime.h"

#include <cerrno>
#include <string_view>

namespace velmora {

namespace {

void appendString(std::string& json, std::string_view text) {
  if (!isUTF8(text)) {
    throw posixError(EILSEQ);
  }
  internal::appendJSONString(json, text, internal::SlashStyle::escaped);
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

std::string encodeHandoffRequest(const HandoffRequest& request) {
  std::string json = "{\n  \"action\" : ";
  appendString(json, rawValue(request.action));
  json += ",\n  \"createdAt\" : ";
  const auto createdAt = std::chrono::floor<std::chrono::seconds>(request.createdAt);
  appendString(json, internal::formatInternetDateTime(createdAt));
  json += ",\n  \"folderPaths\" : ";
  appendStrings(json, request.folderPaths);
  json += "\n}";
  return json;
}

}  // namespace velmora

#include "handoff/HandoffRequest.h"

#include "handoff/SharedContainer.h"
#include "json/JSONWriting.h"
#include "platform/Clock.h"
#include "platform/FileWriter.h"
#include "platform/IdentifierSource.h"
#include "platform/NotificationCenter.h"
#include "platform/PathStandardizer.h"
#include "platform/Platform.h"
#include "platform/PlatformError.h"
#include "text/InternetDateTime.h"
#include "text/LexicalPath.h"
#include "text/UniquePaths.h"

#include <cerrno>
#include <string>
#include <utility>

namespace velmora {

namespace {

constexpr std::string_view handoffDirectoryName = "FinderHandoff";

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

Text handoffDirectoryPath(const Text& sharedWarpRoot, const PathStandardizer& paths) {
  return paths.standardizedFileURLPath(
      appendingPathComponent(sharedWarpRoot, handoffDirectoryName));
}

std::vector<Text> normalizedHandoffPaths(const std::vector<Text>& paths,
                                         const PathStandardizer& standardizer) {
  std::vector<Text> normalized;
  for (const Text& path : paths) {
    Text standardized = standardizer.standardizedFileURLPath(path);
    if (!standardized.empty()) {
      normalized.push_back(std::move(standardized));
    }
  }
  return internal::uniquePaths(normalized);
}

void writeHandoffRequest(FinderHandoffAction action, const std::vector<Text>& paths,
                         const Platform& platform) {
  std::vector<Text> folderPaths = normalizedHandoffPaths(paths, platform.paths);
  if (folderPaths.empty()) {
    return;
  }
  const Text directory = handoffDirectoryPath(
      sharedWarpRootURL(platform.locations, platform.paths).path, platform.paths);
  platform.fileWriter.createDirectories(directory);
  const std::string request = encodeHandoffRequest({
      .action = action,
      .createdAt = platform.clock.now(),
      .folderPaths = std::move(folderPaths),
  });
  const std::string fileName = platform.identifiers.uuid() + ".json";
  platform.fileWriter.writeAtomically(appendingPathComponent(directory, fileName), request);
  platform.notifications.post(handoffNotificationName);
}

}  // namespace velmora

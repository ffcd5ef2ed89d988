#include "handoff/HandoffRequest.h"

#include "handoff/HandoffRequestEncoding.h"
#include "handoff/SharedContainer.h"
#include "platform/Clock.h"
#include "platform/FileWriter.h"
#include "platform/IdentifierSource.h"
#include "platform/NotificationCenter.h"
#include "platform/PathStandardizer.h"
#include "platform/Platform.h"
#include "text/LexicalPath.h"
#include "text/UniquePaths.h"

#include <string>
#include <utility>

namespace velmora {

namespace {

constexpr std::string_view handoffDirectoryName = "FinderHandoff";

}  // namespace

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

#include "handoff/SharedContainer.h"

#include "platform/ApplicationGroup.h"
#include "platform/PathStandardizer.h"
#include "platform/PlatformError.h"
#include "platform/SharedLocations.h"
#include "text/LexicalPath.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace velmora {

namespace {

constexpr std::string_view rootDirectoryName = "Warp";
constexpr std::string_view fallbackProductDirectoryName = "Velmora";

std::string fallbackDirectory(const SharedLocations& locations) {
  const std::vector<Text> directories = locations.applicationSupportDirectories();
  if (directories.empty()) {
    throw noSuchFileError();
  }
  return appendingPathComponent(directories.front(), fallbackProductDirectoryName);
}

}  // namespace

SharedWarpRoot sharedWarpRoot(const SharedLocations& locations, const PathStandardizer& paths) {
  const std::optional<Text> container = locations.groupContainer(applicationGroupIdentifier);
  const std::string directory =
      container.has_value() ? container->utf8() : fallbackDirectory(locations);
  return {.url = {.path = paths.standardizedFileURLPath(
                      appendingPathComponent(directory, rootDirectoryName))},
          .parent = container.has_value() ? SharedWarpRootParent::groupContainer
                                          : SharedWarpRootParent::applicationSupport};
}

FileURL sharedWarpRootURL(const SharedLocations& locations, const PathStandardizer& paths) {
  return sharedWarpRoot(locations, paths).url;
}

}  // namespace velmora

#include "extension/SelectionScreening.h"

#include "extension/ActionKind.h"
#include "platform/FileReader.h"
#include "platform/PathStandardizer.h"
#include "platform/Platform.h"
#include "resolution/WarpMarker.h"
#include "resolution/WarpRoots.h"
#include "text/UniquePaths.h"

#include <cstddef>
#include <optional>
#include <utility>

namespace velmora {

namespace {

/// The reason against the item that its path alone gives; none if the warped folders decide.
std::optional<ItemVerdict> refusalByPath(const Text& path, const Platform& platform,
                                         ActionKind action) {
  if (action == ActionKind::restore) {
    const bool hasMarker = platform.fileReader.exists(warpMarkerPath(path));
    return hasMarker ? std::nullopt : std::optional(ItemVerdict::noMarker);
  }
  const bool isDirectory = platform.fileReader.isDirectory(path);
  return isDirectory ? std::nullopt : std::optional(ItemVerdict::notADirectory);
}

ItemVerdict verdictByRoot(const ScreenedItem& item, ActionKind action) {
  const bool isRestore = action == ActionKind::restore;
  if (!item.root.has_value()) {
    return isRestore ? ItemVerdict::notWarped : ItemVerdict::accepted;
  }
  if (*item.root != item.path) {
    // Only the warped folder itself can be restored: a marker inside of it proves nothing.
    return ItemVerdict::insideWarpedFolder;
  }
  return isRestore ? ItemVerdict::accepted : ItemVerdict::alreadyWarped;
}

}  // namespace

Screening screenSelection(const std::vector<FileURL>& selection, const Platform& platform) {
  const ActionKind action = actionKind(platform.bundle);
  Screening screening;
  // The items that the warped folders decide on: their indexes, and how they are compared.
  std::vector<std::size_t> openItems;
  std::vector<StandardizedPath> openPaths;
  for (const FileURL& url : selection) {
    ScreenedItem item = {.path = platform.paths.standardizedFileURLPath(url.path)};
    if (const auto refusal = refusalByPath(item.path, platform, action)) {
      item.verdict = *refusal;
    } else {
      openItems.push_back(screening.items.size());
      openPaths.push_back(standardized(item.path, platform.paths));
    }
    screening.items.push_back(std::move(item));
  }
  screening.resolution = resolveWarpedFoldersAround(openPaths, platform);
  const WarpRoots roots(warpedFolderPaths(screening.resolution));
  for (std::size_t index = 0; index < openItems.size(); ++index) {
    ScreenedItem& item = screening.items[openItems[index]];
    item.root = roots.enclosingWarpRoot(openPaths[index]);
    item.verdict = verdictByRoot(item, action);
  }
  return screening;
}

std::vector<Text> acceptedPaths(const Screening& screening) {
  std::vector<Text> paths;
  for (const ScreenedItem& item : screening.items) {
    if (item.verdict == ItemVerdict::accepted) {
      paths.push_back(item.path);
    }
  }
  return internal::uniquePaths(paths);
}

}  // namespace velmora

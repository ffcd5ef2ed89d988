#include "extension/SelectionScreening.h"

#include "extension/ActionKind.h"
#include "platform/FileReader.h"
#include "platform/PathStandardizer.h"
#include "platform/Platform.h"
#include "resolution/WarpMarker.h"
#include "resolution/WarpRoots.h"
#include "text/UniquePaths.h"

#include <utility>

namespace velmora {

namespace {

/// Checks each item by itself. `accepted` is preliminary; the warped folders decide later.
std::vector<ScreenedItem> candidates(const std::vector<FileURL>& selection,
                                     const Platform& platform, bool isRestore) {
  std::vector<ScreenedItem> items;
  items.reserve(selection.size());
  for (const FileURL& url : selection) {
    ScreenedItem item = {.path = platform.paths.standardizedFileURLPath(url.path)};
    if (isRestore) {
      const bool hasMarker = platform.fileReader.exists(warpMarkerPath(item.path));
      item.verdict = hasMarker ? ItemVerdict::accepted : ItemVerdict::noMarker;
    } else {
      const bool isDirectory = platform.fileReader.isDirectory(item.path);
      item.verdict = isDirectory ? ItemVerdict::accepted : ItemVerdict::notADirectory;
    }
    items.push_back(std::move(item));
  }
  return items;
}

ItemVerdict verdictOn(const ScreenedItem& candidate, bool isRestore) {
  if (!candidate.root.has_value()) {
    return isRestore ? ItemVerdict::notWarped : ItemVerdict::accepted;
  }
  if (*candidate.root != candidate.path) {
    // Only the warped folder itself can be restored: a marker inside of it proves nothing.
    return ItemVerdict::insideWarpedFolder;
  }
  return isRestore ? ItemVerdict::accepted : ItemVerdict::alreadyWarped;
}

}  // namespace

Screening screenSelection(const std::vector<FileURL>& selection, const Platform& platform) {
  const bool isRestore = isRestoreAction(platform.bundle);
  Screening screening = {.items = candidates(selection, platform, isRestore), .resolution = {}};
  screening.resolution = resolveWarpedFoldersAround(acceptedPaths(screening), platform);
  const WarpRoots roots(warpedFolderPaths(screening.resolution, platform.paths), platform.paths);
  for (ScreenedItem& item : screening.items) {
    if (item.verdict == ItemVerdict::accepted) {
      item.root = roots.enclosingWarpRoot(item.path);
      item.verdict = verdictOn(item, isRestore);
    }
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

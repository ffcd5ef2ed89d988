#include "extension/SelectionScreening.h"

#include "extension/ActionKind.h"
#include "extension/WarpRoots.h"
#include "handoff/SharedContainer.h"
#include "platform/FileReader.h"
#include "platform/PathStandardizer.h"
#include "platform/Platform.h"
#include "platform/PlatformError.h"
#include "resolution/ManifestMirror.h"
#include "resolution/WarpMarker.h"
#include "text/UniquePaths.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace velmora {

namespace {

ScreenedItem screenForWarp(const Text& path, const WarpRoots& roots, const FileReader& files) {
  if (!files.isDirectory(path)) {
    return {.path = path, .verdict = ItemVerdict::notADirectory, .root = std::nullopt};
  }
  std::optional<Text> root = roots.enclosingWarpRoot(path);
  if (!root.has_value()) {
    return {.path = path, .verdict = ItemVerdict::accepted, .root = std::nullopt};
  }
  const ItemVerdict verdict =
      *root == path ? ItemVerdict::alreadyWarped : ItemVerdict::insideWarpedFolder;
  return {.path = path, .verdict = verdict, .root = std::move(root)};
}

ScreenedItem screenForRestore(const Text& path, const WarpRoots& roots, const FileReader& files) {
  if (!files.exists(warpMarkerPath(path))) {
    return {.path = path, .verdict = ItemVerdict::noMarker, .root = std::nullopt};
  }
  std::optional<Text> root = roots.enclosingWarpRoot(path);
  if (!root.has_value()) {
    return {.path = path, .verdict = ItemVerdict::notWarped, .root = std::nullopt};
  }
  // Only the warped folder itself can be restored: a stray marker inside one proves nothing.
  const ItemVerdict verdict =
      *root == path ? ItemVerdict::accepted : ItemVerdict::insideWarpedFolder;
  return {.path = path, .verdict = verdict, .root = std::move(root)};
}

}  // namespace

std::vector<Text> warpedFolderPaths(const Platform& platform, ResolutionObserver& observer) {
  Text root;
  try {
    root = sharedWarpRootURL(platform.locations, platform.paths);
  } catch (const PlatformError& error) {
    observer.didFailToLocateRoot(error);
    return {};
  }
  std::vector<Text> folders;
  std::ranges::transform(
      confirmedWarpManifests(mirroredManifests(root, platform.fileReader, platform.paths, observer,
                                               platform.workerCount),
                             root, platform.fileReader, platform.paths, observer,
                             platform.workerCount),
      std::back_inserter(folders), [&](const MirroredManifest& mirrored) {
        return platform.paths.standardizedFileURLPath(mirrored.manifest.originalFolderPath);
      });
  return folders;
}

std::vector<Text> screenSelection(const std::vector<FileURL>& selection, const Platform& platform,
                                  ScreeningObserver& observer) {
  const WarpRoots roots(warpedFolderPaths(platform, observer), platform.paths);
  const auto screen = isRestoreAction(platform.bundle) ? screenForRestore : screenForWarp;
  std::vector<Text> accepted;
  for (const FileURL& url : selection) {
    ScreenedItem item =
        screen(platform.paths.standardizedFileURLPath(url.path), roots, platform.fileReader);
    observer.didScreenItem(item);
    if (item.verdict == ItemVerdict::accepted) {
      accepted.push_back(std::move(item.path));
    }
  }
  return uniquePaths(accepted);
}

}  // namespace velmora

#include "extension/SelectionScreening.h"

#include "extension/ActionKind.h"
#include "extension/WarpRoots.h"
#include "platform/FileReader.h"
#include "platform/PathStandardizer.h"
#include "platform/Platform.h"
#include "resolution/WarpedFolders.h"
#include "text/LexicalPath.h"
#include "text/UniquePaths.h"

#include <algorithm>
#include <optional>
#include <string_view>
#include <utility>

namespace velmora {

namespace {

bool suitsWarp(const Text& path, const WarpRoots& roots, const FileReader& files) {
  return files.isDirectory(path) && !roots.enclosingWarpRoot(path).has_value();
}

bool suitsRestore(const Text& path, const WarpRoots& roots, const FileReader& files) {
  if (!files.exists(appendingPathComponent(path, warpMarkerFileName))) {
    return false;
  }
  // Only the warped folder itself can be restored: a stray marker inside one proves nothing.
  const std::optional<Text> root = roots.enclosingWarpRoot(path);
  return root.has_value() && *root == path;
}

}  // namespace

std::vector<Text> warpedFolderPaths(const WarpedFolders& warpedFolders,
                                    const PathStandardizer& standardizer) {
  std::vector<Text> paths = warpedFolders.confirmedOriginalFolderPaths();
  std::ranges::transform(paths, paths.begin(), [&](const Text& path) {
    return standardizer.standardizedFileURLPath(path);
  });
  return paths;
}

std::vector<Text> screenSelection(const std::vector<FileURL>& selection, const Platform& platform,
                                  const WarpedFolders& warpedFolders) {
  const WarpRoots roots(warpedFolderPaths(warpedFolders, platform.paths), platform.paths);
  const auto suitsAction = isRestoreAction(platform.bundle) ? suitsRestore : suitsWarp;
  std::vector<Text> accepted;
  for (const FileURL& url : selection) {
    Text path = platform.paths.standardizedFileURLPath(url.path);
    if (suitsAction(path, roots, platform.fileReader)) {
      accepted.push_back(std::move(path));
    }
  }
  return uniquePaths(accepted);
}

}  // namespace velmora

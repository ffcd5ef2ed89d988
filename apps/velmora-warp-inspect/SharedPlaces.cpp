#include "SharedPlaces.h"

#include "handoff/HandoffRequest.h"
#include "platform/PlatformError.h"
#include "resolution/ManifestMirror.h"
#include "warpshared/DestroyedManifestIndex.h"

namespace velmora::inspect {

std::optional<SharedPlaces> sharedPlaces(const SharedLocations& locations,
                                         const PathStandardizer& paths) {
  try {
    const SharedWarpRoot root = sharedWarpRoot(locations, paths);
    return SharedPlaces{.root = root.url.path,
                        .rootParent = root.parent,
                        .mirror = manifestMirrorPath(root.url.path, paths),
                        .index = destroyedManifestIndexPath(root.url.path, paths),
                        .handoff = handoffDirectoryPath(root.url.path, paths)};
  } catch (const PlatformError&) {
    // The look-up of the warped folders tells the reason.
    return std::nullopt;
  }
}

}  // namespace velmora::inspect

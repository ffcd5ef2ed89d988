#include "SharedPlaces.h"

#include "handoff/HandoffRequest.h"
#include "handoff/SharedContainer.h"
#include "platform/PathStandardizer.h"
#include "platform/PlatformError.h"
#include "resolution/ManifestMirror.h"
#include "text/LexicalPath.h"
#include "warpshared/records/DestroyedManifestIndex.h"

#include <string_view>

namespace velmora::inspect {

std::optional<SharedPlaces> sharedPlaces(const SharedLocations& locations,
                                         const PathStandardizer& paths) {
  try {
    const Text root = sharedWarpRootURL(locations, paths).path;
    const auto below = [&](std::string_view fileName) {
      return paths.standardizedFileURLPath(appendingPathComponent(root, fileName));
    };
    return SharedPlaces{.root = root,
                        .mirror = manifestMirrorPath(root, paths),
                        .index = below(destroyedManifestIndexFileName),
                        .handoff = below(handoffDirectoryName)};
  } catch (const PlatformError&) {
    // The look-up of the warped folders tells the reason.
    return std::nullopt;
  }
}

}  // namespace velmora::inspect

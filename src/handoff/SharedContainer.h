// The shared Warp root: the directory in which the extension and the application exchange files.
#pragma once

#include "platform/PlatformError.h"
#include "text/FileURL.h"

namespace velmora {

class PathStandardizer;
class SharedLocations;

/// The directory of the platform that contains the shared Warp root.
enum class SharedWarpRootParent { groupContainer, applicationSupport };

struct SharedWarpRoot {
  /// Standardised.
  FileURL url;
  SharedWarpRootParent parent = SharedWarpRootParent::applicationSupport;
};

/// The shared Warp root: "Warp" in the group's container; without a container "Velmora/Warp" in the
/// first application support directory. The two places differ in depth, because the application
/// uses the same two. Asks the platform afresh at every call; neither creates nor checks the
/// directory. Throws noSuchFileError when the platform has neither place.
[[nodiscard]] SharedWarpRoot sharedWarpRoot(const SharedLocations& locations,
                                            const PathStandardizer& paths);

/// The URL of sharedWarpRoot.
[[nodiscard]] FileURL sharedWarpRootURL(const SharedLocations& locations,
                                        const PathStandardizer& paths);

}  // namespace velmora

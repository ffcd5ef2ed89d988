// Where the extension and the application exchange files: the shared Warp root.
#pragma once

#include "text/FileURL.h"

namespace velmora {

class PathStandardizer;
class SharedLocations;

/// The directory of the platform in which the shared Warp root lies.
enum class SharedWarpRootParent { groupContainer, applicationSupport };

struct SharedWarpRoot {
  /// Standardised.
  FileURL url;
  SharedWarpRootParent parent = SharedWarpRootParent::applicationSupport;
};

/// The shared Warp root: "Warp" in the group's container; without a container "Velmora/Warp" in the
/// first application support directory. (The application looks in the same two places, so they
/// keep their different depths.) Asks afresh at every call; neither makes nor checks the directory.
/// Throws noSuchFileError when there is neither place.
[[nodiscard]] SharedWarpRoot sharedWarpRoot(const SharedLocations& locations,
                                            const PathStandardizer& paths);

/// The URL of sharedWarpRoot.
[[nodiscard]] FileURL sharedWarpRootURL(const SharedLocations& locations,
                                        const PathStandardizer& paths);

}  // namespace velmora

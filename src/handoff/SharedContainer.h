// Where the extension and the application exchange files: the shared Warp root.
#pragma once

#include "text/FileURL.h"

namespace velmora {

class PathStandardizer;
class SharedLocations;

/// The standardised URL of the shared Warp root: "Warp" in the group's container; without a
/// container "Velmora/Warp" in the first application support directory. (The application looks in
/// the same two places, so they keep their different depths.) Asks afresh at every call; neither
/// makes nor checks the directory. Throws noSuchFileError when there is neither place.
[[nodiscard]] FileURL sharedWarpRootURL(const SharedLocations& locations,
                                        const PathStandardizer& paths);

}  // namespace velmora

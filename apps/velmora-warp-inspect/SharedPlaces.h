// Where the files lie that the actions look at and leave.
#pragma once

#include "handoff/SharedContainer.h"
#include "text/Text.h"

#include <optional>

namespace velmora {

class PathStandardizer;
class SharedLocations;

namespace inspect {

struct SharedPlaces {
  /// The shared Warp root; the others lie in it.
  Text root;
  SharedWarpRootParent rootParent = SharedWarpRootParent::applicationSupport;
  Text mirror;
  /// The index of destroyed manifests.
  Text index;
  /// The directory of request files.
  Text handoff;
};

/// None without a shared Warp root.
[[nodiscard]] std::optional<SharedPlaces> sharedPlaces(const SharedLocations& locations,
                                                       const PathStandardizer& paths);

}  // namespace inspect

}  // namespace velmora

// Takes the lists of a manifest from a reader, which keeps neither.
#pragma once

#include "text/Text.h"
#include "warpshared/records/VelmoraWarpSharedEntry.h"

#include <functional>

namespace velmora::internal {

/// Each value is valid during the call only, and none counts if the manifest is refused later.
struct ManifestVisitor {
  /// A reading begins. Values of an earlier one do not count any more.
  std::function<void()> begin;
  /// The next of the samples, which may come before or after the entries.
  std::function<void(TextView)> sample;
  /// The next of the entries.
  std::function<void(const WarpSharedEntry<TextView>&)> entry;
};

}  // namespace velmora::internal

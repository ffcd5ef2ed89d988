// What is common to both readers of manifests.
#pragma once

#include "text/Text.h"
#include "warpshared/records/VelmoraWarpSharedManifest.h"

#include <functional>
#include <span>

namespace velmora::internal {

/// A manifest whose entries have been given away.
struct DecodedHeader {
  /// Without samples and entries.
  VelmoraWarpSharedManifest manifest;
  /// Their texts refer to the document, or to the reader's memory until it reads the next one.
  std::span<const TextView> samples;
};

/// Called with each entry, in order. The entry ends with the call.
using EntryVisitor = std::function<void(const WarpSharedEntry<TextView>&)>;

}  // namespace velmora::internal

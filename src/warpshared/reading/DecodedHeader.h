// The result of a reader of manifests.
#pragma once

#include "text/Text.h"
#include "warpshared/records/VelmoraWarpSharedManifest.h"

#include <functional>
#include <span>

namespace velmora::internal {

/// A manifest whose entries were passed to an EntryVisitor.
struct DecodedHeader {
  /// Without samples and entries.
  VelmoraWarpSharedManifest manifest;
  /// Valid as long as the document, and until the reader reads the next one.
  std::span<const TextView> samples;
};

/// Called with each entry, in order. The entry is valid during the call only.
using EntryVisitor = std::function<void(const WarpSharedEntry<TextView>&)>;

}  // namespace velmora::internal

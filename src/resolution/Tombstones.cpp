#include "resolution/Tombstones.h"

#include <utility>

namespace velmora {

Tombstones::Tombstones(std::vector<VelmoraWarpSharedDestroyedManifestRecord> records)
    : records_(std::move(records)) {
  warpIDs_.reserve(records_.size());
  manifestKeys_.reserve(records_.size());
  for (const VelmoraWarpSharedDestroyedManifestRecord& record : records_) {
    warpIDs_.insert(record.warpID);
    manifestKeys_.insert(record.manifestKey);
  }
}

}  // namespace velmora

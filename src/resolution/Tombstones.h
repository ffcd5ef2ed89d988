// The Warps that the application has recorded as destroyed.
#pragma once

#include "text/CanonicalTextSet.h"
#include "text/Text.h"
#include "warpshared/records/DestroyedManifestIndex.h"

#include <cstddef>
#include <vector>

namespace velmora {

/// The records of destroyed manifests, for lookups by canonical equivalence. Case matters.
class Tombstones {
 public:
  explicit Tombstones(std::vector<VelmoraWarpSharedDestroyedManifestRecord> records);
  // The sets refer to the records.
  Tombstones(const Tombstones&) = delete;
  Tombstones& operator=(const Tombstones&) = delete;
  ~Tombstones() = default;

  [[nodiscard]] std::size_t count() const { return records_.size(); }
  [[nodiscard]] bool nameWarp(const Text& warpID) const { return warpIDs_.contains(warpID); }
  [[nodiscard]] bool nameManifest(const Text& manifestKey) const {
    return manifestKeys_.contains(manifestKey);
  }

 private:
  const std::vector<VelmoraWarpSharedDestroyedManifestRecord> records_;
  internal::CanonicalTextSet warpIDs_;
  internal::CanonicalTextSet manifestKeys_;
};

}  // namespace velmora

// The fields of the index of destroyed manifests, with their keys, in the order of reading.
#pragma once

#include "json/RecordFields.h"
#include "warpshared/records/DestroyedManifestIndex.h"

#include <tuple>

namespace velmora::internal {

template <>
struct RecordFields<VelmoraWarpSharedDestroyedManifestRecord> {
  using Record = VelmoraWarpSharedDestroyedManifestRecord;
  static constexpr std::tuple list{
      internal::RecordField{"warpID", &Record::warpID},
      internal::RecordField{"manifestKey", &Record::manifestKey},
      internal::RecordField{"originalFolderPath", &Record::originalFolderPath},
      internal::RecordField{"destroyedAt", &Record::destroyedAt},
  };
};

template <>
struct RecordFields<VelmoraWarpSharedDestroyedManifestIndex> {
  using Index = VelmoraWarpSharedDestroyedManifestIndex;
  static constexpr std::tuple list{
      internal::RecordField{"version", &Index::version},
      internal::RecordField{"generatedAt", &Index::generatedAt},
      internal::RecordField{"records", &Index::records},
  };
};

}  // namespace velmora::internal

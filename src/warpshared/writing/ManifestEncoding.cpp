#include "warpshared/writing/ManifestEncoding.h"

#include "json/RecordEncoding.h"
#include "warpshared/records/FieldCodecs.h"
#include "warpshared/records/FieldLists.h"

namespace velmora {

namespace internal {

// Not in an unnamed namespace, where the encoding of records would not find it.
static void encode(JSONText& json, const WarpSharedEntries& entries) { encodeArray(json, entries); }

}  // namespace internal

std::string encodeManifest(const VelmoraWarpSharedManifest& manifest) {
  return internal::encoded(manifest);
}

std::string encodeDestroyedManifestIndex(const VelmoraWarpSharedDestroyedManifestIndex& index) {
  return internal::encoded(index);
}

}  // namespace velmora

#include "warpshared/writing/ManifestEncoding.h"

#include "json/RecordEncoding.h"
#include "warpshared/records/FieldCodecs.h"
#include "warpshared/records/FieldLists.h"

#include <cstddef>

namespace velmora {

namespace internal {

// Not in an unnamed namespace, where the encoding of records would not find it.
static void encode(JSONText& json, const WarpSharedEntries& entries) {
  WarpSharedEntry<TextView> entry;
  char separator = '[';
  for (std::size_t index = 0; index < entries.size(); ++index) {
    entries.read(index, entry);
    json.utf8 += separator;
    encode(json, entry);
    separator = ',';
  }
  json.utf8 += entries.empty() ? "[]" : "]";
}

}  // namespace internal

std::string encodeManifest(const VelmoraWarpSharedManifest& manifest) {
  return internal::encoded(manifest);
}

std::string encodeDestroyedManifestIndex(const VelmoraWarpSharedDestroyedManifestIndex& index) {
  return internal::encoded(index);
}

}  // namespace velmora

#include "warpshared/VelmoraWarpSharedManifest.h"

#include "json/RecordEncoding.h"
#include "warpshared/FieldCodecs.h"

#include <cstddef>

namespace velmora {

// Not in a namespace without a name, where the encoding of records would not find it.
static void encode(std::string& json, const WarpSharedEntries& entries) {
  WarpSharedEntry<TextView> entry;
  char separator = '[';
  for (std::size_t index = 0; index < entries.size(); ++index) {
    entries.read(index, entry);
    json += separator;
    encode(json, entry);
    separator = ',';
  }
  json += entries.empty() ? "[]" : "]";
}

std::string encodeManifest(const VelmoraWarpSharedManifest& manifest) {
  std::string json;
  encode(json, manifest);
  return json;
}

}  // namespace velmora

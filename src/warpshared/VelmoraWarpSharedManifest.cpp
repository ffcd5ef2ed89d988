#include "warpshared/VelmoraWarpSharedManifest.h"

#include "json/RecordEncoding.h"
#include "warpshared/RecordValues.h"

namespace velmora {

std::string encodeManifest(const VelmoraWarpSharedManifest& manifest) {
  std::string json;
  encode(json, manifest);
  return json;
}

}  // namespace velmora

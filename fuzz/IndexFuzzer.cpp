// An index of destroyed manifests: the verdict does not depend on the document's layout. A decoded
// index reads back as itself, even if it is invalid.
#include "fuzz/Verdict.h"
#include "warpshared/reading/DestroyedManifestIndexDecoding.h"
#include "warpshared/writing/ManifestEncoding.h"

#include <string_view>

namespace velmora::internal {
namespace {

VelmoraWarpSharedDestroyedManifestIndex decodedAndValidated(std::string& bytes) {
  VelmoraWarpSharedDestroyedManifestIndex index = decodeDestroyedManifestIndex(bytes);
  validateDestroyedManifestIndex(index);
  return index;
}

void requireOneVerdict(std::string_view document) {
  const auto decoded = verdictOn(document, decodeDestroyedManifestIndex);
  requireSameInOtherLayouts(document, decoded, decodeDestroyedManifestIndex);
  requireToReadBack(decoded, encodeDestroyedManifestIndex, decodeDestroyedManifestIndex);
  const auto validated = verdictOn(document, decodedAndValidated);
  requireSameInOtherLayouts(document, validated, decodedAndValidated);
  require(decoded.fault() == nullptr || validated == decoded);
  require(validated.fault() == nullptr || decoded.fault() != nullptr ||
          !validated.fault()->kind.has_value());
}

}  // namespace
}  // namespace velmora::internal

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  velmora::internal::requireOneVerdict(velmora::textOf(data, size));
  return 0;
}

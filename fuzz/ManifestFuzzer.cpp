// A shared Warp manifest: the verdict does not depend on how the document is written nor on whether
// the entries are kept, and what is accepted reads back as itself.
#include "fuzz/Verdict.h"
#include "warpshared/ManifestDecoding.h"

#include <string_view>

namespace velmora {
namespace {

ManifestSummary summaryOf(const VelmoraWarpSharedManifest& manifest) {
  return {.warpID = manifest.warpID,
          .manifestKey = manifest.manifestKey,
          .originalFolderPath = manifest.originalFolderPath,
          .createdAt = manifest.createdAt,
          .status = manifest.status,
          .entryCount = manifest.entries.size(),
          .sampleCount = manifest.verificationSampleRelativePaths.size()};
}

void requireSameVerdict(const Verdict<VelmoraWarpSharedManifest>& verdict,
                        const Verdict<ManifestSummary>& summary) {
  require(verdict.byteOffset == summary.byteOffset);
  if (verdict.value() == nullptr) {
    require(summary.fault() != nullptr && *summary.fault() == *verdict.fault());
  } else {
    require(summary.value() != nullptr && *summary.value() == summaryOf(*verdict.value()));
  }
}

void requireOneVerdict(std::string_view document) {
  // One decoder for all: what it keeps from one document must make no difference to the next.
  ManifestDecoder decoder;
  const auto decode = [&decoder](std::string& bytes) { return decoder.decode(bytes); };
  const Verdict<VelmoraWarpSharedManifest> verdict = verdictOn(document, decode);
  requireSameVerdict(verdict, verdictOn(document, [&decoder](std::string& bytes) {
                       return decoder.decodeSummary(bytes);
                     }));
  requireSameInOtherWords(document, verdict, decode);
  requireToReadBack(verdict, encodeManifest, decode);
}

}  // namespace
}  // namespace velmora

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  velmora::requireOneVerdict(velmora::textOf(data, size));
  return 0;
}

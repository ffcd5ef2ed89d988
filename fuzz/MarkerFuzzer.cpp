// A marker: the verdict does not depend on the document's layout. An accepted marker reads back as
// itself.
#include "fuzz/Verdict.h"
#include "json/RecordEncoding.h"
#include "resolution/WarpMarker.h"

#include <string_view>

namespace velmora::internal {
namespace {

std::string encodedMarker(const WarpMarker& marker) { return encoded(marker); }

void requireOneVerdict(std::string_view document) {
  JSONReader reader;
  const auto decode = [&reader](std::string& bytes) { return decodeWarpMarker(bytes, reader); };
  const Verdict<WarpMarker> verdict = verdictOn(document, decode);
  requireSameInOtherLayouts(document, verdict, decode);
  requireToReadBack(verdict, encodedMarker, decode);
}

}  // namespace
}  // namespace velmora::internal

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  velmora::internal::requireOneVerdict(velmora::textOf(data, size));
  return 0;
}

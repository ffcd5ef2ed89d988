// Reads any valid manifest, and raises the first fault of an invalid one. Reads the whole document
// as JSON first, then the fields in their order.
#pragma once

#include "json/strict/JSONReader.h"
#include "text/CanonicalTextSet.h"
#include "text/Text.h"
#include "warpshared/reading/DecodedHeader.h"

#include <string>
#include <vector>

namespace velmora::internal {

/// Keeps its memory between documents. One thread at a time.
class DiagnosingManifestReader {
 public:
  /// Throws the errors that ManifestDecoder documents (ManifestDecoding.h). `bytes` are scratch
  /// afterwards. `visitEntry` is also called with the entries before a faulty one.
  [[nodiscard]] DecodedHeader read(std::string& bytes, const EntryVisitor& visitEntry);

 private:
  struct HardLink {
    TextView path;
    TextView primaryPath;
  };

  JSONReader reader_;
  WarpSharedEntry<TextView> entry_;
  std::vector<TextView> samples_;
  CanonicalTextSet entryPaths_;
  CanonicalTextSet samplePaths_;
  std::vector<HardLink> hardLinks_;
};

}  // namespace velmora::internal

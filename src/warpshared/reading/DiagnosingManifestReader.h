// Reads any valid manifest, and raises the first fault of an invalid one. Reads the whole document
// as JSON first, then the fields in their order.
#pragma once

#include "json/strict/JSONReader.h"
#include "text/CanonicalTextSet.h"
#include "text/Text.h"
#include "warpshared/reading/ManifestVisitor.h"
#include "warpshared/records/VelmoraWarpSharedManifest.h"

#include <string>
#include <vector>

namespace velmora::internal {

/// Keeps its memory between documents. One thread at a time.
class DiagnosingManifestReader {
 public:
  /// Returns the manifest without samples and entries, which are passed to `visitor`, also those
  /// before a faulty one. Throws the errors that ManifestDecoder documents (ManifestDecoding.h).
  /// `bytes` are scratch afterwards.
  [[nodiscard]] VelmoraWarpSharedManifest read(std::string& bytes, const ManifestVisitor& visitor);

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

// Reads manifests, and tells exactly what is wrong with one.
#pragma once

#include "json/JSONReader.h"
#include "text/CanonicalTextSet.h"
#include "text/Text.h"
#include "warpshared/ManifestReading.h"

#include <string>
#include <vector>

namespace velmora {

/// Keeps its memory between documents. One thread at a time.
class ExactManifestReader {
 public:
  /// Raises what ManifestDecoder (ManifestDecoding.h) promises. `bytes` are scratch afterwards;
  /// `useEntry` is also called with the entries before a faulty one.
  [[nodiscard]] ReadManifest read(std::string& bytes, const UseEntry& useEntry);

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

}  // namespace velmora

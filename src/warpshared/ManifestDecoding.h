// Reads shared Warp manifests, strictly: there is no way to a value that skipped a check.
#pragma once

#include "json/JSONReader.h"
#include "text/CanonicalTextSet.h"
#include "text/Text.h"
#include "warpshared/Date.h"
#include "warpshared/VelmoraWarpSharedManifest.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace velmora {

/// The one format version that is read.
inline constexpr std::int64_t sharedWarpManifestVersion = 4;

/// A longer manifest is not read. (A gigabyte holds a million entries.)
inline constexpr std::size_t longestSharedWarpManifest = longestJSONDocument;

/// What is needed of a manifest to tell which folder it says is warped.
struct ManifestSummary {
  Text warpID;
  Text manifestKey;
  Text originalFolderPath;
  Date createdAt;
  VelmoraWarpSharedStatus status = VelmoraWarpSharedStatus::uploading;
  std::size_t entryCount = 0;
  std::size_t sampleCount = 0;

  bool operator==(const ManifestSummary&) const = default;
};

/// Reads one manifest after the other and keeps its memory between them. One thread at a time.
///
/// Both operations read the whole document as JSON first (JSONReader.h), then the fields in their
/// order, with each check at its place. The first fault in that order raises a DecodingError,
/// wherever the keys stand in the document; nothing of the manifest remains then. `bytes` are
/// scratch afterwards. Throws std::bad_alloc when memory runs out.
class ManifestDecoder {
 public:
  [[nodiscard]] VelmoraWarpSharedManifest decode(std::string& bytes);

  /// As `decode`, every check included, but keeps no entry.
  [[nodiscard]] ManifestSummary decodeSummary(std::string& bytes);

 private:
  using EntryView = WarpSharedEntry<TextView>;

  struct HardLink {
    TextView path;
    TextView primaryPath;
  };

  /// Reads all but the entries, each of which it hands to `useEntry`, and the samples, which it
  /// leaves in `samples_`.
  VelmoraWarpSharedManifest decodeDocument(std::string& bytes,
                                           const std::function<void(const EntryView&)>& useEntry);

  JSONReader reader_;
  EntryView entry_;
  std::vector<TextView> samples_;
  CanonicalTextSet entryPaths_;
  CanonicalTextSet samplePaths_;
  std::vector<HardLink> hardLinks_;
};

}  // namespace velmora

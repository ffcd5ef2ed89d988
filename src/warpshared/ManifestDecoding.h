// Reads shared Warp manifests, strictly: there is no way to a value that skipped a check.
#pragma once

#include "json/ChunkedDocument.h"
#include "json/JSONReader.h"
#include "text/Text.h"
#include "warpshared/Date.h"
#include "warpshared/DiagnosingManifestReader.h"
#include "warpshared/StreamingManifestReader.h"
#include "warpshared/VelmoraWarpSharedManifest.h"

#include <cstddef>
#include <string>

namespace velmora {

class FileReader;

/// A longer manifest is not read. (A gigabyte holds a million entries.)
inline constexpr std::size_t maxSharedWarpManifestLength = maxJSONDocumentLength;

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
/// All operations read the whole document as JSON first (JSONReader.h), then the fields in their
/// order, with each check at its place. The first fault in that order raises a DecodingError,
/// wherever the keys stand in the document; nothing of the manifest remains then. Throws
/// std::bad_alloc when memory runs out.
///
/// A StreamingManifestReader reads what the application writes. Where it gives up, a
/// DiagnosingManifestReader reads the document again, and raises the fault.
class ManifestDecoder {
 public:
  /// `bytes` are scratch afterwards.
  [[nodiscard]] VelmoraWarpSharedManifest decode(std::string& bytes);

  /// The same, and reuses the memory of `manifest`. After an error, `manifest` is invalid.
  void decode(std::string& bytes, VelmoraWarpSharedManifest& manifest);

  /// As `decode`, every check included, but keeps no entry.
  [[nodiscard]] ManifestSummary decodeSummary(std::string& bytes);

  /// As `decode`, of the file at `path`, which is never in memory as a whole unless the application
  /// did not write it. It is read a second time then, and judged as it is by then. Throws
  /// PlatformError, too: EFBIG for one that is longer than maxSharedWarpManifestLength.
  [[nodiscard]] VelmoraWarpSharedManifest read(const Text& path, const FileReader& files);

  /// As `read`, every check included, but keeps no entry.
  [[nodiscard]] ManifestSummary readSummary(const Text& path, const FileReader& files);

  /// How many documents so far were read by the DiagnosingManifestReader.
  [[nodiscard]] std::size_t reconsideredCount() const { return reconsideredCount_; }

 private:
  // Products, made of the entries and of what else is read.
  class WholeManifest;
  class Summary;

  template <class Product>
  void decodeAs(std::string& bytes, Product product);
  template <class Product>
  void readAs(const Text& path, const FileReader& files, Product product);
  template <class Product>
  bool accept(ChunkedDocument&& document, Product& product);
  template <class Product>
  void decodeExactly(std::string& bytes, Product& product);
  ChunkedDocument chunkedDocumentOf(const Text& path, const FileReader& files);

  ChunkBuffer chunkBuffer_;
  StreamingManifestReader streamingReader_;
  DiagnosingManifestReader diagnosingReader_;
  std::size_t reconsideredCount_ = 0;
};

}  // namespace velmora

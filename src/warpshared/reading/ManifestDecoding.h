// Reads shared Warp manifests, strictly: there is no way to a value that skipped a check.
#pragma once

#include "json/DecodingError.h"
#include "platform/FileReader.h"
#include "platform/PlatformError.h"
#include "text/Text.h"
#include "warpshared/records/Date.h"
#include "warpshared/records/VelmoraWarpSharedManifest.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <string>

namespace velmora {

/// The longest manifest that is read, in bytes. (A gigabyte holds a million entries.)
inline constexpr std::size_t maxSharedWarpManifestLength = (std::size_t{1} << 31) - 1;

/// The fields of a manifest that tell which folder it says is warped.
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
/// The faults of a document have an order: those of its JSON (RFC 8259), then those of the fields
/// in their order, with each rule (docs/formats.md) at its place among them. The first fault in
/// that order raises a DecodingError (DecodingError.h), wherever the keys are in the document;
/// nothing of the manifest remains then. Throws std::bad_alloc when memory runs out.
class ManifestDecoder {
 public:
  ManifestDecoder();
  ~ManifestDecoder();
  ManifestDecoder(const ManifestDecoder&) = delete;
  ManifestDecoder& operator=(const ManifestDecoder&) = delete;

  /// Decodes a document. `bytes` are scratch afterwards.
  [[nodiscard]] VelmoraWarpSharedManifest decode(std::string& bytes);

  /// The same, and reuses the memory of `manifest`. After an error, `manifest` is invalid.
  void decode(std::string& bytes, VelmoraWarpSharedManifest& manifest);

  /// As `decode`, every check included, but keeps no entry.
  [[nodiscard]] ManifestSummary decodeSummary(std::string& bytes);

  /// As `decode`, of the file at `path`. A valid manifest is never in memory as a whole. Any other
  /// file is read a second time, as a whole, and judged as it is by then. Throws PlatformError,
  /// too: EFBIG for a file longer than maxSharedWarpManifestLength, and for one with a value that
  /// does not fit into 64 MiB of memory: an entry of 24 MiB, other texts of 8 MiB, 2.5 million
  /// paths.
  [[nodiscard]] VelmoraWarpSharedManifest read(const Text& path, const FileReader& files);

  /// As `read`, every check included, but keeps no entry. If an invalid file is longer than
  /// `maxDiagnosedLength`, the DecodingError does not tell its fault.
  [[nodiscard]] ManifestSummary readSummary(
      const Text& path, const FileReader& files,
      std::size_t maxDiagnosedLength = maxSharedWarpManifestLength);

  /// As `readSummary`, in at most 64 MiB of memory for any file; none if it is no valid manifest.
  /// Throws PlatformError and std::bad_alloc.
  [[nodiscard]] std::optional<ManifestSummary> readSummaryIfValid(const Text& path,
                                                                  const FileReader& files);

 private:
  class Readers;

  std::unique_ptr<Readers> readers_;
};

}  // namespace velmora

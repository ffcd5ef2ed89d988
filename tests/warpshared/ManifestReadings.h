// The results of both readers of manifests, for tests and fuzz targets that compare them.
#pragma once

#include "json/DecodingError.h"
#include "json/streaming/ChunkedDocument.h"
#include "warpshared/reading/DiagnosingManifestReader.h"
#include "warpshared/reading/StreamingManifestReader.h"
#include "warpshared/records/VelmoraWarpSharedManifest.h"
#include "warpshared/writing/ManifestEncoding.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace velmora::internal {

/// The manifest with its samples and entries, written again; std::nullopt when the reader refuses
/// it.
using ManifestReading = std::optional<std::string>;

/// Collects the lists that `read` passes to its ManifestVisitor. `read` returns the manifest
/// without them, or std::nullopt.
template <class Read>
ManifestReading collected(Read read) {
  WarpSharedEntries entries;
  std::vector<Text> samples;
  std::optional<VelmoraWarpSharedManifest> manifest = read(ManifestVisitor{
      .begin =
          [&] {
            entries.clear();
            samples.clear();
          },
      .sample = [&](TextView sample) { samples.emplace_back(sample); },
      .entry = [&](const WarpSharedEntry<TextView>& entry) { entries.append(entry); }});
  if (!manifest.has_value()) {
    return std::nullopt;
  }
  manifest->verificationSampleRelativePaths = std::move(samples);
  manifest->entries = std::move(entries);
  return encodeManifest(*manifest);
}

/// A stream of `document`, at most `portion` bytes at a time.
inline ChunkedDocument::ReadSome portionsOf(std::string_view document, std::size_t portion) {
  return [document, portion](char* room, std::size_t size) mutable {
    const std::size_t count = document.copy(room, std::min(size, portion));
    document.remove_prefix(count);
    return count;
  };
}

/// Reads documents with both readers, which keep their memory between documents.
class ManifestReaders {
 public:
  /// Reads the documents that `open` returns.
  ManifestReading streamed(const StreamingManifestReader::OpenDocument& open) {
    return collected(
        [&](const ManifestVisitor& visitor) { return streamingReader_.read(open, visitor); });
  }

  /// Reads a document in memory, which is unchanged afterwards.
  ManifestReading streamed(std::string& document, std::size_t chunkLength = documentChunkLength) {
    return streamed(
        [&] { return std::make_unique<ChunkedDocument>(document, memory_, chunkLength); });
  }

  ManifestReading streamedInPortions(std::string_view document, std::size_t portion,
                                     std::size_t chunkLength = documentChunkLength) {
    return streamed([&] {
      return std::make_unique<ChunkedDocument>(portionsOf(document, portion), memory_, chunkLength);
    });
  }

  /// Reads a stream once.
  ManifestReading streamedOnce(const ChunkedDocument::ReadSome& readSome) {
    return streamed([&] { return std::make_unique<ChunkedDocument>(readSome, memory_); });
  }

  ManifestReading diagnosed(std::string document) {
    try {
      return collected([&](const ManifestVisitor& visitor) {
        return std::optional(diagnosingReader_.read(document, visitor));
      });
    } catch (const DecodingError&) {
      return std::nullopt;
    }
  }

 private:
  ChunkBuffer memory_;
  StreamingManifestReader streamingReader_;
  DiagnosingManifestReader diagnosingReader_;
};

}  // namespace velmora::internal

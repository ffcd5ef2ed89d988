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
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace velmora::internal {

/// The manifest with its samples and entries, written again; std::nullopt when the reader refuses
/// it or gives up.
using ManifestReading = std::optional<std::string>;

/// Collects the result of `read` and the entries that it passes to its EntryVisitor. `read` returns
/// a DecodedHeader, or std::nullopt.
template <class Read>
ManifestReading collected(Read read) {
  WarpSharedEntries entries;
  std::optional<DecodedHeader> result =
      read([&](const WarpSharedEntry<TextView>& entry) { entries.append(entry); });
  if (!result.has_value()) {
    return std::nullopt;
  }
  result->manifest.verificationSampleRelativePaths =
      std::vector<Text>(result->samples.begin(), result->samples.end());
  result->manifest.entries = std::move(entries);
  return encodeManifest(result->manifest);
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
  ManifestReading streamed(ChunkedDocument& chunks) {
    return collected(
        [&](const EntryVisitor& visitEntry) { return streamingReader_.read(chunks, visitEntry); });
  }

  /// Reads a document in memory, which is unchanged afterwards.
  ManifestReading streamed(std::string& document, std::size_t chunkLength = documentChunkLength) {
    ChunkedDocument chunks(document, memory_, chunkLength);
    return streamed(chunks);
  }

  ManifestReading streamedInPortions(std::string_view document, std::size_t portion,
                                     std::size_t chunkLength = documentChunkLength) {
    ChunkedDocument chunks(portionsOf(document, portion), memory_, chunkLength);
    return streamed(chunks);
  }

  ManifestReading diagnosed(std::string document) {
    try {
      return collected([&](const EntryVisitor& visitEntry) {
        return std::optional(diagnosingReader_.read(document, visitEntry));
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

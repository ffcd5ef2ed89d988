// Manifests as each of the two readers has them, for tests and fuzz targets that compare them.
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

/// The manifest with its samples and entries, written again to the byte; none when it is refused or
/// given up.
using ManifestReading = std::optional<std::string>;

/// Keeps what `read` gives and gives away. `read` takes an EntryVisitor and returns a
/// DecodedHeader, or none.
template <class Read>
ManifestReading readingOf(Read read) {
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

/// What a stream delivers, at most `portion` bytes at a time.
inline ChunkedDocument::ReadSome portionsOf(std::string_view document, std::size_t portion) {
  return [document, portion](char* room, std::size_t size) mutable {
    const std::size_t count = document.copy(room, std::min(size, portion));
    document.remove_prefix(count);
    return count;
  };
}

/// Reads one document after the other, each by both readers, and keeps their memory.
class ManifestReaders {
 public:
  ManifestReading quickly(ChunkedDocument& chunks) {
    return readingOf(
        [&](const EntryVisitor& visitEntry) { return quick_.read(chunks, visitEntry); });
  }

  /// What lies in memory; `document` is as before afterwards.
  ManifestReading quickly(std::string& document, std::size_t chunkLength = documentChunkLength) {
    ChunkedDocument chunks(document, memory_, chunkLength);
    return quickly(chunks);
  }

  ManifestReading quicklyFromStream(std::string_view document, std::size_t portion,
                                    std::size_t chunkLength = documentChunkLength) {
    ChunkedDocument chunks(portionsOf(document, portion), memory_, chunkLength);
    return quickly(chunks);
  }

  ManifestReading exactly(std::string document) {
    try {
      return readingOf([&](const EntryVisitor& visitEntry) {
        return std::optional(exact_.read(document, visitEntry));
      });
    } catch (const DecodingError&) {
      return std::nullopt;
    }
  }

 private:
  ChunkBuffer memory_;
  StreamingManifestReader quick_;
  DiagnosingManifestReader exact_;
};

}  // namespace velmora::internal

// Reads manifests chunk by chunk, in little memory, and accepts or refuses them.
#pragma once

#include "json/streaming/ChunkedDocument.h"
#include "warpshared/reading/ManifestVisitor.h"
#include "warpshared/records/VelmoraWarpSharedManifest.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>

namespace velmora::internal {

/// The longest entry of a manifest that is read from a stream, in bytes of JSON without unknown
/// members. Its many values may make the limit lower (maxChunkMemory).
inline constexpr std::size_t maxStreamedEntryLength = std::size_t{24} << 20;

/// The longest member of a manifest other than its lists, and the longest sample, in bytes of JSON;
/// also the limit of all such members together.
inline constexpr std::size_t maxStreamedMemberLength = std::size_t{8} << 20;

/// The most entries, samples and hard links together. A hard link takes the memory of two others.
inline constexpr std::size_t maxStreamedPathCount = 2'500'000;

/// Accepts the documents that DiagnosingManifestReader accepts, with equal values, but takes less
/// than 64 MiB of memory, whatever the document is. It is quickest with documents in which all
/// records have their members in one order. It does not say why it refuses a document.
///
/// Keeps its memory between documents, and remembers the order of keys. One thread at a time.
class StreamingManifestReader {
 public:
  StreamingManifestReader();
  ~StreamingManifestReader();
  StreamingManifestReader(const StreamingManifestReader&) = delete;
  StreamingManifestReader& operator=(const StreamingManifestReader&) = delete;
  StreamingManifestReader(StreamingManifestReader&&) noexcept;
  StreamingManifestReader& operator=(StreamingManifestReader&&) noexcept;

  /// Opens the document at its beginning.
  using OpenDocument = std::function<std::unique_ptr<ChunkedDocument>()>;

  /// The manifest without samples and entries, which are passed to `visitor`; none if the document
  /// is refused. A document is read a second time if the first one leaves a doubt, in particular if
  /// its keys are in an unusual order or a path occurs twice. Throws std::length_error for a stream
  /// beyond the limits above, std::bad_alloc, and what `open` and `visitor` throw.
  [[nodiscard]] std::optional<VelmoraWarpSharedManifest> read(const OpenDocument& open,
                                                              const ManifestVisitor& visitor);

 private:
  class ParserState;

  std::unique_ptr<ParserState> state_;
};

}  // namespace velmora::internal

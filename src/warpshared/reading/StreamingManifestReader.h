// Reads manifests as the application writes them, in one pass, chunk by chunk.
#pragma once

#include "json/streaming/ChunkedDocument.h"
#include "warpshared/reading/DecodedHeader.h"

#include <memory>
#include <optional>

namespace velmora::internal {

/// Accepts a document or gives up. It accepts no document that breaks a rule (ManifestDecoding.h).
/// It gives up at every fault, and at what is valid but not written by the application, such as an
/// unknown key. The order of keys, blanks and escapes make no difference.
///
/// Keeps between documents its memory, and which key follows which. One thread at a time.
class StreamingManifestReader {
 public:
  StreamingManifestReader();
  ~StreamingManifestReader();
  StreamingManifestReader(const StreamingManifestReader&) = delete;
  StreamingManifestReader& operator=(const StreamingManifestReader&) = delete;
  StreamingManifestReader(StreamingManifestReader&&) noexcept;
  StreamingManifestReader& operator=(StreamingManifestReader&&) noexcept;

  /// None when it gives up, after `visitEntry` was called with the entries before that place.
  /// Throws std::bad_alloc, and what `document` and `visitEntry` throw.
  [[nodiscard]] std::optional<DecodedHeader> read(ChunkedDocument& document,
                                                  const EntryVisitor& visitEntry);

 private:
  class ParserState;

  std::unique_ptr<ParserState> state_;
};

}  // namespace velmora::internal

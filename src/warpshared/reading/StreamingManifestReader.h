// Reads manifests as the application writes them, in one pass, chunk by chunk.
#pragma once

#include "json/streaming/ChunkedDocument.h"
#include "warpshared/reading/DecodedHeader.h"

#include <memory>
#include <optional>

namespace velmora::internal {

/// Accepts a document or gives up. It gives up at every fault and every broken rule, and at valid
/// documents that the application does not write, such as one with an unknown key. The order of
/// keys, blanks and escapes make no difference.
///
/// Keeps its memory between documents, and remembers the order of keys. One thread at a time.
class StreamingManifestReader {
 public:
  StreamingManifestReader();
  ~StreamingManifestReader();
  StreamingManifestReader(const StreamingManifestReader&) = delete;
  StreamingManifestReader& operator=(const StreamingManifestReader&) = delete;

  /// None when it gives up. `visitEntry` was called with the entries before that place then.
  /// Throws std::bad_alloc, and what `document` and `visitEntry` throw.
  [[nodiscard]] std::optional<DecodedHeader> read(ChunkedDocument& document,
                                                  const EntryVisitor& visitEntry);

 private:
  class ParserState;

  std::unique_ptr<ParserState> state_;
};

}  // namespace velmora::internal

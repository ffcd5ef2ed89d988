// Reads manifests as the application writes them: quickly, in pieces and in little memory.
#pragma once

#include "json/ChunkedDocument.h"
#include "warpshared/DecodedHeader.h"

#include <memory>
#include <optional>

namespace velmora {

/// Accepts a document or gives up. It accepts nothing that breaks a rule (ManifestDecoding.h), and
/// gives up wherever it takes more than one pass to tell: at whatever breaks one, and at what is
/// allowed but not written by the application, such as keys that it does not know. The order of
/// keys, blanks and escapes make no difference.
///
/// Keeps its memory between documents, and which key follows which. One thread at a time.
class StreamingManifestReader {
 public:
  StreamingManifestReader();
  ~StreamingManifestReader();
  StreamingManifestReader(const StreamingManifestReader&) = delete;
  StreamingManifestReader& operator=(const StreamingManifestReader&) = delete;
  StreamingManifestReader(StreamingManifestReader&&) noexcept;
  StreamingManifestReader& operator=(StreamingManifestReader&&) noexcept;

  /// None when it gives up; `visitEntry` was called with the entries before that place then. Throws
  /// std::bad_alloc, and what `pieces` and `visitEntry` throw.
  [[nodiscard]] std::optional<DecodedHeader> read(ChunkedDocument& pieces,
                                                  const EntryVisitor& visitEntry);

 private:
  class ParserState;

  std::unique_ptr<ParserState> state_;
};

}  // namespace velmora

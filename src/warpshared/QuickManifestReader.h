// Reads manifests as the application writes them: quickly, in pieces and in little memory.
#pragma once

#include "json/DocumentPieces.h"
#include "warpshared/ManifestReading.h"

#include <memory>
#include <optional>

namespace velmora {

/// Accepts a document or gives up. It accepts nothing that breaks a rule (ManifestDecoding.h), and
/// gives up wherever it takes more than one pass to tell: at whatever breaks one, and at what is
/// allowed but not written by the application, such as keys that it does not know. The order of
/// keys, blanks and escapes make no difference.
///
/// Keeps its memory between documents, and which key follows which. One thread at a time.
class QuickManifestReader {
 public:
  QuickManifestReader();
  ~QuickManifestReader();
  QuickManifestReader(const QuickManifestReader&) = delete;
  QuickManifestReader& operator=(const QuickManifestReader&) = delete;
  QuickManifestReader(QuickManifestReader&&) noexcept;
  QuickManifestReader& operator=(QuickManifestReader&&) noexcept;

  /// None when it gives up; `useEntry` was called with the entries before that place then. Throws
  /// std::bad_alloc, and what `pieces` and `useEntry` throw.
  [[nodiscard]] std::optional<ReadManifest> read(DocumentPieces& pieces, const UseEntry& useEntry);

 private:
  class Memory;

  std::unique_ptr<Memory> memory_;
};

}  // namespace velmora

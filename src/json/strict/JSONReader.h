// Reads JSON strictly (RFC 8259): the whole document, also the values that nobody asks for.
#pragma once

#include "json/TokenFinder.h"
#include "json/strict/JSONValue.h"

#include <cstddef>
#include <limits>
#include <string>
#include <vector>

namespace velmora::internal {

/// Reads one document after the other, and keeps its memory. One thread at a time.
class JSONReader {
 public:
  JSONReader() = default;

  /// Refuses documents for which it would need more than `maxMemory` bytes, the document included.
  explicit JSONReader(std::size_t maxMemory) : maxMemory_(maxMemory) {}

  /// Returns the value of the document. Resolves escapes in place, so `bytes` no longer hold the
  /// document. The values refer to `bytes`: the caller must not change them while it uses a value.
  /// The next call invalidates all values.
  ///
  /// Accepts UTF-8 only, with or without a byte-order mark, at most maxJSONNesting levels and
  /// maxJSONDocumentLength bytes; numbers of any size. Throws DecodingError for anything else:
  /// dataCorrupted, an empty coding path, and the byte offset if there is one. Throws
  /// std::bad_alloc. Never recurses.
  [[nodiscard]] JSONValue read(std::string& bytes);

 private:
  std::size_t maxMemory_ = std::numeric_limits<std::size_t>::max();
  TokenFinder finder_;
  std::vector<JSONContainer> containers_;
};

}  // namespace velmora::internal

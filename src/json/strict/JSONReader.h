// Reads JSON strictly: RFC 8259, the whole document, ignored values included.
#pragma once

#include "json/TokenFinder.h"
#include "json/strict/JSONValue.h"

#include <cstddef>
#include <string>
#include <vector>

namespace velmora::internal {

/// Longer documents are not read.
inline constexpr std::size_t maxJSONDocumentLength = (std::size_t{1} << 31) - 1;

/// How deeply arrays and objects may lie in each other.
inline constexpr std::size_t maxJSONNesting = 512;

/// Keeps its memory from one document to the next. One thread at a time.
class JSONReader {
 public:
  /// The document's value. Its strings are resolved in place: `bytes` is scratch afterwards, must
  /// stay as it is while values are in use, and the values end with the next call.
  ///
  /// UTF-8 only, a leading byte-order mark skipped; at most maxJSONNesting levels and
  /// maxJSONDocumentLength bytes; numbers of any size. Throws DecodingError (dataCorrupted, empty
  /// coding path, the byte offset where one is known) for anything else, std::bad_alloc when memory
  /// runs out. Never recurses.
  [[nodiscard]] JSONValue read(std::string& bytes);

 private:
  TokenFinder finder_;
  std::vector<JSONContainer> containers_;
};

}  // namespace velmora::internal

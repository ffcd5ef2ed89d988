// Passes over a value that nobody asks for, and checks its grammar (RFC 8259).
#pragma once

#include "json/streaming/TokenCursor.h"

#include <bitset>
#include <cstddef>
#include <cstdint>

namespace velmora::internal {

/// Never recurses, and needs no memory for the value, however large or deep it is.
class ValueSkipper {
 public:
  enum class Progress { complete, broken, atEndOfChunk };

  /// Prepares for a value with `outerDepth` arrays and objects around it.
  void begin(std::size_t outerDepth);

  /// Takes tokens up to the end of the value. If the chunk ends before, the next call continues in
  /// the next chunk. `endsInString` says that the chunk's last token is the beginning of a string,
  /// and that the next chunk begins with the rest of it. After `broken` the cursor is invalid.
  [[nodiscard]] Progress skip(TokenCursor& tokens, bool endsInString = false);

 private:
  enum class Expected : std::uint8_t { value, valueOrEnd, keyOrEnd, key, colon, commaOrEnd };

  bool takeNext(TokenCursor& tokens);
  bool takeValue(TokenCursor& tokens);
  bool takeKey(TokenCursor& tokens);
  bool open(TokenCursor& tokens, bool isObject);
  bool close(TokenCursor& tokens);
  [[nodiscard]] bool isComplete() const {
    return depth_ == outerDepth_ && expected_ == Expected::commaOrEnd;
  }

  /// For each open container, whether it is an object.
  std::bitset<maxJSONNesting> isObject_;
  std::size_t depth_ = 0;
  std::size_t outerDepth_ = 0;
  Expected expected_ = Expected::value;
};

}  // namespace velmora::internal

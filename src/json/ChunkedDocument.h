// A document piece by piece, so that what is read of it stays in a processor's cache, and in little
// memory.
#pragma once

#include "json/TokenFinder.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace velmora {

/// How long a piece is at most, where nothing in it wants a longer one.
inline constexpr std::size_t documentChunkLength = std::size_t{256} << 10;

/// Memory for pieces, kept from one document to the next.
struct ChunkBuffer {
  TokenFinder finder;
  std::unique_ptr<char[]> bytes = nullptr;
  std::size_t size = 0;
};

/// A walk over a document that ends where a piece is not UTF-8, or has a string that does not end
/// in it or holds a control character; no document of JSON is like that. Nothing else is checked.
class ChunkedDocument {
 public:
  /// Works like a bound read(2), and throws where that fails.
  using ReadSome = std::function<std::size_t(char* room, std::size_t size)>;

  /// The pieces lie in `document`, which is to stay alive and as it is; a byte behind the piece at
  /// hand is overwritten until the next one or the end of the walk. `pieceLength` is not 0.
  ChunkedDocument(std::string& document, ChunkBuffer& memory,
                  std::size_t pieceLength = documentChunkLength);

  /// The document is what `readSome` delivers until it returns 0. Longer pieces take more memory.
  ChunkedDocument(ReadSome readSome, ChunkBuffer& memory,
                  std::size_t pieceLength = documentChunkLength);

  ChunkedDocument(const ChunkedDocument&) = delete;
  ChunkedDocument& operator=(const ChunkedDocument&) = delete;
  ~ChunkedDocument() { restoreByteBehind(); }

  /// Goes on to a piece that begins with the last `unreadLength` bytes of the one before, which
  /// ends. It is longer when those are all of that one: what the caller reads at once did not fit.
  /// False when there is no such piece. Throws std::bad_alloc, and what `readSome` throws.
  [[nodiscard]] bool advance(std::size_t unreadLength);

  /// The piece: it ends between two tokens, and a NUL stands behind it.
  [[nodiscard]] std::string_view text() const { return {begin_, length_}; }

  /// The tokens of the piece as TokenFinder has them.
  [[nodiscard]] const std::uint32_t* tokens() const { return tokens_; }

  /// Whether the document ends with the piece.
  [[nodiscard]] bool isLast() const { return isLast_; }

 private:
  void restoreByteBehind();
  void provide(std::size_t length);
  void makeRoom(std::size_t size);
  [[nodiscard]] std::size_t available() const { return static_cast<std::size_t>(end_ - begin_); }

  ChunkBuffer& memory_;
  ReadSome readSome_;
  std::size_t pieceLength_;
  /// Of what is in memory, from the piece on.
  char* begin_ = nullptr;
  char* end_ = nullptr;
  std::size_t length_ = 0;
  char byteBehind_ = '\0';
  bool isWholeInMemory_ = false;
  bool isLast_ = false;
  std::size_t wantedLength_ = 0;
  const std::uint32_t* tokens_ = nullptr;
  /// The tokens of blanks.
  std::array<std::uint32_t, tokenLookAhead> onlyEnd_ = {};
};

}  // namespace velmora

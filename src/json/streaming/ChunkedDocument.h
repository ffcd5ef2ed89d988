// A JSON document in chunks that fit into a processor's cache. Only one chunk is in memory.
#pragma once

#include "json/TokenFinder.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace velmora::internal {

/// The usual length of a chunk, in bytes. A chunk is longer where no shorter one can end.
inline constexpr std::size_t documentChunkLength = std::size_t{256} << 10;

/// The memory of a chunk, which is reused for the next document.
struct ChunkBuffer {
  TokenFinder finder;
  std::unique_ptr<char[]> bytes = nullptr;
  std::size_t size = 0;
};

/// Walks over a document. The walk fails at a chunk that is not UTF-8, and at one that has a string
/// with a control character or without an end. It checks nothing else.
class ChunkedDocument {
 public:
  /// Reads at most `size` bytes into `room`, like read(2). Returns how many, 0 at the end. Throws
  /// when it fails.
  using ReadSome = std::function<std::size_t(char* room, std::size_t size)>;

  /// The chunks lie in `document`, which outlives the walk and must not change. The walk overwrites
  /// the byte after the current chunk, and restores it. `chunkLength` is not 0.
  ChunkedDocument(std::string& document, ChunkBuffer& memory,
                  std::size_t chunkLength = documentChunkLength);

  /// The document is what `readSome` delivers until it returns 0.
  ChunkedDocument(ReadSome readSome, ChunkBuffer& memory,
                  std::size_t chunkLength = documentChunkLength);

  ChunkedDocument(const ChunkedDocument&) = delete;
  ChunkedDocument& operator=(const ChunkedDocument&) = delete;
  ~ChunkedDocument() { restoreByteAfter(); }

  /// Goes to the next chunk, which begins with the last `unreadLength` bytes of the current one. If
  /// the whole chunk was left unread, the next chunk is twice as long. False when the walk fails.
  /// Throws std::bad_alloc, and what `readSome` throws.
  [[nodiscard]] bool advance(std::size_t unreadLength);

  /// The current chunk. It ends between two tokens, and a NUL follows it.
  [[nodiscard]] std::string_view text() const { return {begin_, length_}; }

  /// The tokens of the chunk (TokenFinder.h).
  [[nodiscard]] const std::uint32_t* tokens() const { return tokens_; }

  /// Whether the document ends with the chunk.
  [[nodiscard]] bool isLast() const { return isLast_; }

 private:
  void restoreByteAfter();
  void provide(std::size_t length);
  void makeRoom(std::size_t size);
  [[nodiscard]] std::size_t available() const { return static_cast<std::size_t>(end_ - begin_); }

  ChunkBuffer& memory_;
  ReadSome readSome_;
  std::size_t chunkLength_;
  /// The bytes in memory, from the current chunk on.
  char* begin_ = nullptr;
  char* end_ = nullptr;
  std::size_t length_ = 0;
  char byteAfter_ = '\0';
  bool isWholeInMemory_ = false;
  bool isLast_ = false;
  std::size_t wantedLength_ = 0;
  const std::uint32_t* tokens_ = nullptr;
  /// The tokens of a chunk that has only blanks.
  std::array<std::uint32_t, tokenLookAhead> onlyEnd_ = {};
};

}  // namespace velmora::internal

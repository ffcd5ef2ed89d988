// A JSON document in chunks that fit into a processor's cache. Only one chunk is in memory.
#pragma once

#include "json/TokenFinder.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <limits>
#include <memory>
#include <string>
#include <string_view>

namespace velmora::internal {

/// The usual length of a chunk, in bytes. A chunk is longer where no shorter one can end.
inline constexpr std::size_t documentChunkLength = std::size_t{256} << 10;

/// The most memory of a chunk of a stream, in bytes, in which each token counts as eight. A program
/// has 64 MiB for this, for what its reader makes of the chunk, and for itself.
inline constexpr std::size_t maxChunkMemory = std::size_t{32} << 20;

/// The memory of a chunk, which is reused for the next document.
struct ChunkBuffer {
  TokenFinder finder;
  std::unique_ptr<char[]> bytes = nullptr;
  std::size_t size = 0;
};

/// Walks over a document. The walk fails at a chunk that is not UTF-8, at one that has a string
/// with a control character or without an end, and at a very long token that is neither a string
/// nor a number. It checks nothing else. A byte-order mark at the beginning is passed over.
class ChunkedDocument {
 public:
  /// Reads at most `size` bytes into `room`, like read(2). Returns how many, 0 at the end. Throws
  /// when it fails.
  using ReadSome = std::function<std::size_t(char* room, std::size_t size)>;

  static constexpr std::size_t anyLength = std::numeric_limits<std::size_t>::max();

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

  /// Whether the document may begin with the token `punctuation`. True if the beginning has only
  /// blanks. To be called before the first advance.
  [[nodiscard]] bool mayBeginWith(char punctuation);

  /// Goes to the next chunk, which begins with the last `unreadLength` bytes of the current one. If
  /// the whole chunk was left unread, the next chunk is twice as long. False when the walk fails.
  /// Throws std::length_error when the chunk of a stream would be longer than `maxLength` or take
  /// more than maxChunkMemory; std::bad_alloc; and what `readSome` throws.
  [[nodiscard]] bool advance(std::size_t unreadLength, std::size_t maxLength = anyLength);

  /// As advance(0). If the chunk begins with a string that does not fit into it, the chunk holds
  /// the beginning of the string, closed by a quote, and the next chunk opens the rest with a
  /// quote: endsInString() is true then.
  [[nodiscard]] bool advanceThroughString(std::size_t maxLength = anyLength);

  /// Makes the next chunk begin with `text` instead of the part of the document before the last
  /// `unreadLength` bytes of the current chunk. To be followed by advance(0), whose chunk is longer
  /// than `text` if `text` and the rest are JSON and `text` has no blank before its last token.
  void replaceRead(std::string_view text, std::size_t unreadLength);

  /// The current chunk. It ends between two tokens, and a NUL follows it.
  [[nodiscard]] std::string_view text() const { return {begin_, length_}; }

  /// The tokens of the chunk (TokenFinder.h).
  [[nodiscard]] const std::uint32_t* tokens() const { return tokens_; }

  /// Whether the document ends with the chunk.
  [[nodiscard]] bool isLast() const { return isLast_; }

  /// Whether the chunk ends with the beginning of a string that goes on in the next chunk.
  [[nodiscard]] bool endsInString() const { return endsInString_; }

 private:
  bool findChunk(std::size_t maxLength, bool cutsStrings);
  TokenFault findTokens(std::size_t length);
  void limitWindow(std::size_t maxLength);
  bool mayTokenFollow();
  std::size_t cutString();
  void leave(std::size_t unreadLength);
  void dropBlanksAtTheEnd(std::size_t unreadLength);
  void begin();
  void becomeStream();
  void restoreByteAfter();
  void provide(std::size_t length);
  void makeRoom(std::size_t size);
  [[nodiscard]] std::size_t available() const { return static_cast<std::size_t>(end_ - begin_); }

  ChunkBuffer& memory_;
  /// None if the document is in the caller's memory.
  ReadSome readSome_;
  std::size_t chunkLength_;
  /// The bytes in memory, from the current chunk on.
  char* begin_ = nullptr;
  char* end_ = nullptr;
  std::size_t length_ = 0;
  char byteAfter_ = '\0';
  bool isAtStart_ = true;
  bool isWholeInMemory_ = false;
  bool isLast_ = false;
  bool endsInString_ = false;
  /// The byte of the document in whose place a cut string is closed.
  char cutByte_ = '\0';
  std::size_t wantedLength_ = 0;
  std::size_t replacementLength_ = 0;
  const std::uint32_t* tokens_ = nullptr;
  /// The tokens of a chunk that has only blanks.
  std::array<std::uint32_t, tokenLookAhead> onlyEnd_ = {};
};

}  // namespace velmora::internal

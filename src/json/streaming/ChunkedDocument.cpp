// A chunk has to end between two tokens. The search for such a place goes backwards from the length
// that is wanted, and looks for two patterns that occur between tokens only: a line break, and the
// beginning of the next object in a list of records. A chunk without either grows to twice its
// length. Bytes of the document that follow the chunk stay in memory, and begin the next one.
#include "json/streaming/ChunkedDocument.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace velmora::internal {

namespace {

bool isLetter(char byte) { return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z'); }

/// The last offset in `text` that is between two tokens of JSON; 0 when none is found.
///
/// A string contains no line break, which must be escaped. It contains no `},{"` with a letter
/// after it either: the quote would end the string, and no letter follows the end of a string. If
/// the text is not JSON, the offset may be inside of a string, which then has no end in the chunk.
std::size_t lastPlaceBetweenTokens(std::string_view text) {
  constexpr std::string_view nextObject = "},{\"";
  for (std::size_t end = text.size(); end > nextObject.size(); --end) {
    if (text[end - 1] == '\n') {
      return end;
    }
    const std::size_t begin = end - 1 - nextObject.size();
    if (text[begin] == '}' && isLetter(text[end - 1]) &&
        text.substr(begin, nextObject.size()) == nextObject) {
      return begin + std::string_view("},").size();
    }
  }
  return 0;
}

}  // namespace

ChunkedDocument::ChunkedDocument(std::string& document, ChunkBuffer& memory,
                                 std::size_t chunkLength)
    : memory_(memory),
      chunkLength_(chunkLength),
      begin_(document.data()),
      end_(document.data() + document.size()),
      isWholeInMemory_(true) {}

ChunkedDocument::ChunkedDocument(ReadSome readSome, ChunkBuffer& memory, std::size_t chunkLength)
    : memory_(memory),
      readSome_(std::move(readSome)),
      chunkLength_(chunkLength),
      begin_(memory.bytes.get()),
      end_(begin_) {}

bool ChunkedDocument::advance(std::size_t unreadLength) {
  restoreByteAfter();
  wantedLength_ = length_ > 0 && unreadLength == length_ ? 2 * wantedLength_ : chunkLength_;
  begin_ += length_ - unreadLength;
  length_ = 0;
  while (length_ == 0) {
    provide(wantedLength_);
    isLast_ = isWholeInMemory_ && available() <= wantedLength_;
    if (isLast_) {
      length_ = available();
      break;
    }
    length_ = lastPlaceBetweenTokens({begin_, wantedLength_});
    wantedLength_ *= length_ == 0 ? 2 : 1;
  }
  byteAfter_ = std::exchange(begin_[length_], '\0');
  const FoundTokens found = memory_.finder.find(text());
  onlyEnd_.fill(static_cast<std::uint32_t>(length_));
  tokens_ = found.fault == TokenFault::empty ? onlyEnd_.data() : found.first;
  return tokens_ != nullptr;
}

void ChunkedDocument::restoreByteAfter() {
  if (length_ > 0) {
    begin_[length_] = byteAfter_;
  }
}

/// Makes more than `length` bytes available, or all that the document has.
void ChunkedDocument::provide(std::size_t length) {
  if (isWholeInMemory_ || available() > length) {
    return;
  }
  const std::size_t rest = available();
  // One byte more shows that the document goes on. The NUL after the chunk takes its place.
  makeRoom(length + 1);
  end_ = begin_ + rest;
  while (!isWholeInMemory_ && available() <= length) {
    const std::size_t count = readSome_(end_, length + 1 - available());
    end_ += count;
    isWholeInMemory_ = count == 0;
  }
}

/// Moves the available bytes to the beginning of a buffer of at least `size` bytes.
void ChunkedDocument::makeRoom(std::size_t size) {
  if (memory_.size >= size) {
    std::memmove(memory_.bytes.get(), begin_, available());
  } else {
    // Not std::make_unique, which would write to the whole buffer at once.
    std::unique_ptr<char[]> larger(new char[size]);
    std::ranges::copy(begin_, end_, larger.get());
    memory_.bytes = std::move(larger);
    memory_.size = size;
  }
  begin_ = memory_.bytes.get();
}

}  // namespace velmora::internal

#include "json/streaming/ChunkedDocument.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace velmora::internal {

namespace {

bool isLetter(char byte) { return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z'); }

/// The last place in `text` that no token of JSON reaches across; 0 where none is found.
///
/// Inside of a string is neither a line break, which would have to be escaped, nor `},{"` with a
/// letter behind it: that quote would end the string, and no letter follows one. In what is no JSON
/// the place may be inside of a string, which has no end before it then.
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

/// Makes more than `length` bytes available, or all there are.
void ChunkedDocument::provide(std::size_t length) {
  if (isWholeInMemory_ || available() > length) {
    return;
  }
  const std::size_t rest = available();
  // One byte more tells that there are more, and one is for the NUL.
  makeRoom(length + 2);
  end_ = begin_ + rest;
  while (!isWholeInMemory_ && available() <= length) {
    const std::size_t count = readSome_(end_, length + 1 - available());
    end_ += count;
    isWholeInMemory_ = count == 0;
  }
}

/// Moves what is left to the beginning of `size` bytes of memory.
void ChunkedDocument::makeRoom(std::size_t size) {
  if (memory_.size >= size) {
    std::memmove(memory_.bytes.get(), begin_, available());
  } else {
    // Not std::make_unique: memory is touched as bytes arrive.
    std::unique_ptr<char[]> larger(new char[size]);
    std::ranges::copy(begin_, end_, larger.get());
    memory_.bytes = std::move(larger);
    memory_.size = size;
  }
  begin_ = memory_.bytes.get();
}

}  // namespace velmora::internal

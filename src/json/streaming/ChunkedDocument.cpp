// Bytes of the document that follow the chunk stay in memory, and begin the next one. ChunkEnd.h
// finds the end of a chunk. If the whole chunk would be part of one token, it grows to twice its
// length.
#include "json/streaming/ChunkedDocument.h"

#include "json/streaming/ChunkEnd.h"
#include "text/UTF8.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <stdexcept>
#include <utility>

namespace velmora::internal {

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

bool ChunkedDocument::mayBeginWith(char punctuation) {
  begin();
  return internal::mayBeginWith(punctuation, {begin_, available()});
}

bool ChunkedDocument::advance(std::size_t unreadLength, std::size_t maxLength) {
  leave(unreadLength);
  wantedLength_ = std::max(wantedLength_, 2 * std::exchange(replacementLength_, 0));
  return findChunk(maxLength, /*cutsStrings=*/false);
}

bool ChunkedDocument::advanceThroughString(std::size_t maxLength) {
  leave(0);
  becomeStream();
  return findChunk(maxLength, /*cutsStrings=*/true);
}

void ChunkedDocument::replaceRead(std::string_view text, std::size_t unreadLength) {
  leave(unreadLength);
  becomeStream();
  const std::size_t rest = available();
  makeRoom(text.size() + rest + 1);
  std::memmove(begin_ + text.size(), begin_, rest);
  std::ranges::copy(text, begin_);
  end_ = begin_ + text.size() + rest;
  replacementLength_ = text.size();
  isLast_ = false;
}

/// Leaves the current chunk, but for its unread end.
void ChunkedDocument::leave(std::size_t unreadLength) {
  restoreByteAfter();
  const bool isUnread = length_ > 0 && unreadLength == length_;
  wantedLength_ = isUnread ? 2 * wantedLength_ : chunkLength_;
  if (endsInString_) {
    begin_[length_ - 1] = cutByte_;
    unreadLength = 2;
    begin_[length_ - unreadLength] = '"';
    endsInString_ = false;
  }
  begin_ += length_ - unreadLength;
  length_ = 0;
  if (isUnread && readSome_) {
    dropBlanksAtTheEnd(unreadLength);
  }
}

/// If the unread text is mostly blanks at its end, drops all of them but one.
void ChunkedDocument::dropBlanksAtTheEnd(std::size_t unreadLength) {
  constexpr std::size_t manyBlanks = 4096;
  const char* const end = begin_ + unreadLength;
  const char* const blanks =
      std::find_if_not(std::reverse_iterator(end), std::reverse_iterator<const char*>(begin_),
                       isJSONBlank)
          .base();
  const auto count = static_cast<std::size_t>(end - blanks);
  if (count > manyBlanks && count > unreadLength / 2) {
    std::memmove(begin_ + count - 1, begin_, unreadLength - count);
    begin_ += count - 1;
    wantedLength_ = chunkLength_;
  }
}

bool ChunkedDocument::findChunk(std::size_t maxLength, bool cutsStrings) {
  begin();
  while (true) {
    limitWindow(maxLength);
    provide(wantedLength_);
    isLast_ = isWholeInMemory_ && available() <= wantedLength_;
    if (isLast_) {
      return findTokens(available()) == TokenFault::none;
    }
    TokenFault fault = findTokens(lastChunkEnd({begin_, wantedLength_}));
    if (fault == TokenFault::unclosedString) {
      fault = findTokens(unclosedStringOffset(text()));
    }
    if (fault != TokenFault::none || !mayTokenFollow()) {
      return false;
    }
    if (length_ > 0) {
      return true;
    }
    if (cutsStrings && *begin_ == '"') {
      if (const std::size_t length = cutString(); length != 0) {
        return findTokens(length) == TokenFault::none;
      }
    }
    wantedLength_ *= 2;
  }
}

/// Makes the chunk `length` bytes long, and finds its tokens. Only the last chunk may be empty.
TokenFault ChunkedDocument::findTokens(std::size_t length) {
  restoreByteAfter();
  length_ = length;
  if (length_ == 0 && !isLast_) {
    return TokenFault::none;
  }
  byteAfter_ = std::exchange(begin_[length_], '\0');
  FoundTokens found = memory_.finder.find(text());
  constexpr std::size_t tokenCost = 8;
  if (readSome_ && length_ + tokenCost * found.count > maxChunkMemory) {
    throw std::length_error("a chunk of a document takes too much memory");
  }
  if (found.fault == TokenFault::empty) {
    onlyEnd_.fill(static_cast<std::uint32_t>(length_));
    found = {.fault = TokenFault::none, .first = onlyEnd_.data()};
  }
  tokens_ = found.first;
  return found.fault;
}

/// Limits the window of a stream, which has just doubled if it is longer than `maxLength`.
void ChunkedDocument::limitWindow(std::size_t maxLength) {
  if (!readSome_ || wantedLength_ <= maxLength) {
    return;
  }
  if (wantedLength_ / 2 >= maxLength) {
    throw std::length_error("a chunk of a document is too long");
  }
  wantedLength_ = maxLength;
}

/// Whether the rest of the window, after the chunk, may be the beginning of a token.
bool ChunkedDocument::mayTokenFollow() {
  restoreByteAfter();
  const bool mayFollow = mayBeginToken({begin_ + length_, wantedLength_ - length_});
  if (length_ > 0) {
    begin_[length_] = '\0';
  }
  return mayFollow;
}

/// Closes the string that the window is part of. Returns the length up to there; 0 if the window is
/// too short for that.
std::size_t ChunkedDocument::cutString() {
  constexpr std::size_t shortWindow = 16;
  if (wantedLength_ < shortWindow) {
    return 0;
  }
  // One byte of the window is replaced by the closing quote.
  std::size_t place = lastOffsetOutsideOfEscapes({begin_ + 1, wantedLength_ - 2}) + 1;
  // Not inside of a character, which has at most three bytes after the first.
  for (int count = 0; count < 3 && isContinuation(begin_[place]); ++count) {
    --place;
  }
  cutByte_ = std::exchange(begin_[place], '"');
  endsInString_ = true;
  return place + 1;
}

/// Passes over a byte-order mark at the beginning of the document.
void ChunkedDocument::begin() {
  if (!std::exchange(isAtStart_, false)) {
    return;
  }
  provide(std::max(chunkLength_, byteOrderMark.size()));
  if (std::string_view(begin_, available()).starts_with(byteOrderMark)) {
    begin_ += byteOrderMark.size();
  }
}

/// Changes to copies of the document's chunks, because the document itself must not change.
void ChunkedDocument::becomeStream() {
  if (readSome_) {
    return;
  }
  readSome_ = [rest = std::string_view(begin_, available())](char* room, std::size_t size) mutable {
    const std::size_t count = rest.copy(room, size);
    rest.remove_prefix(count);
    return count;
  };
  isWholeInMemory_ = false;
  begin_ = memory_.bytes.get();
  end_ = begin_;
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

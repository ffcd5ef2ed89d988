#include "warpshared/records/WarpSharedEntries.h"

#include "warpshared/records/FieldLists.h"
#include "warpshared/records/RecordPacking.h"

#include <algorithm>
#include <utility>

namespace velmora {
namespace {

// The first chunk is small, because most manifests are. Each chunk is twice as large as the one
// before, up to the largest.
constexpr std::size_t smallestChunk = std::size_t{4} * 1024;
constexpr std::size_t maxChunk = std::size_t{1024} * 1024;

}  // namespace

WarpSharedEntries::Chunk::Chunk(std::size_t capacity)
    : bytes_(new char[capacity]), capacity_(capacity) {}

WarpSharedEntries::Chunk::Chunk(const Chunk& other) : Chunk(other.size_) {
  setEnd(std::copy_n(other.bytes_.get(), other.size_, end()));
}

WarpSharedEntries::WarpSharedEntries(const WarpSharedEntries& other)
    : chunks_(other.chunks_.begin(),
              other.chunks_.begin() + static_cast<std::ptrdiff_t>(other.usedChunkCount_)),
      usedChunkCount_(other.usedChunkCount_),
      positions_(other.positions_) {}

void WarpSharedEntries::swap(WarpSharedEntries& other) noexcept {
  chunks_.swap(other.chunks_);
  std::swap(usedChunkCount_, other.usedChunkCount_);
  positions_.swap(other.positions_);
}

template <class Entry>
void WarpSharedEntries::appendPacked(const Entry& entry) {
  Chunk& chunk = chunkWithRoom(pack(internal::ByteLimit(), entry).count());
  positions_.push_back({.chunk = static_cast<std::uint32_t>(usedChunkCount_ - 1),
                        .offset = static_cast<std::uint32_t>(chunk.size())});
  chunk.setEnd(pack(internal::ByteWriter(chunk.end()), entry).place());
}

void WarpSharedEntries::append(const WarpSharedEntry<TextView>& entry) { appendPacked(entry); }

void WarpSharedEntries::append(const WarpSharedEntry<Text>& entry) { appendPacked(entry); }

WarpSharedEntries::Chunk& WarpSharedEntries::chunkWithRoom(std::size_t size) {
  std::size_t capacity = smallestChunk;
  if (usedChunkCount_ > 0) {
    Chunk& last = chunks_[usedChunkCount_ - 1];
    // Offsets stay small: a chunk that one long entry has made larger takes no more than maxChunk.
    if (last.size() < maxChunk && size <= last.room()) {
      return last;
    }
    capacity = std::clamp(2 * last.capacity(), smallestChunk, maxChunk);
  }
  if (usedChunkCount_ == chunks_.size() || chunks_[usedChunkCount_].capacity() < size) {
    while (chunks_.size() > usedChunkCount_) {
      chunks_.pop_back();
    }
    chunks_.emplace_back(std::max(capacity, size));
  }
  return chunks_[usedChunkCount_++];
}

void WarpSharedEntries::clear() {
  for (Chunk& chunk : chunks_) {
    chunk.clear();
  }
  usedChunkCount_ = 0;
  positions_.clear();
}

void WarpSharedEntries::read(std::size_t index, WarpSharedEntry<TextView>& entry) const {
  const Position position = positions_[index];
  internal::ByteReader bytes(chunks_[position.chunk].at(position.offset));
  unpack(bytes, entry);
}

// NOLINTBEGIN(readability-const-return-type): so that no assignment to a view compiles.
WarpSharedEntries::const_reference WarpSharedEntries::operator[](std::size_t index) const {
  WarpSharedEntry<TextView> entry;
  read(index, entry);
  return entry;
}

WarpSharedEntryIterator::reference WarpSharedEntryIterator::operator*() const {
  return (*entries_)[static_cast<std::size_t>(index_)];
}
// NOLINTEND(readability-const-return-type)

bool operator==(const WarpSharedEntries& a, const WarpSharedEntries& b) {
  if (a.size() != b.size()) {
    return false;
  }
  WarpSharedEntry<TextView> entryOfA;
  WarpSharedEntry<TextView> entryOfB;
  for (std::size_t index = 0; index < a.size(); ++index) {
    a.read(index, entryOfA);
    b.read(index, entryOfB);
    if (entryOfA != entryOfB) {
      return false;
    }
  }
  return true;
}

}  // namespace velmora

// The entries of a manifest in little memory: a manifest may have a million of them.
#pragma once

#include "warpshared/records/VelmoraWarpSharedEntry.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

namespace velmora {

/// Entries in a row, a plain value. Each is kept as its texts and lists and some eighty bytes for
/// all else, in chunks of memory: no entry has an allocation of its own, and none is moved when
/// others come.
///
/// Entries are read as views: their texts lie in here and last until these entries are assigned to,
/// cleared or destroyed. They stay in place when others are appended, or when all are moved to
/// another object.
///
/// Each operation that needs memory throws std::bad_alloc when there is none; these entries are as
/// before then.
class WarpSharedEntries {
 public:
  WarpSharedEntries() = default;
  WarpSharedEntries(const WarpSharedEntries& other);
  WarpSharedEntries(WarpSharedEntries&& other) noexcept { swap(other); }
  WarpSharedEntries& operator=(const WarpSharedEntries& other) {
    return *this = WarpSharedEntries(other);
  }
  WarpSharedEntries& operator=(WarpSharedEntries&& other) noexcept {
    WarpSharedEntries moved(std::move(other));
    swap(moved);
    return *this;
  }
  ~WarpSharedEntries() = default;

  /// Adds a copy of the entry, its texts included.
  void append(const WarpSharedEntry<TextView>& entry);
  void append(const VelmoraWarpSharedEntry& entry);

  /// Keeps the memory for others.
  void clear();

  [[nodiscard]] std::size_t size() const { return positions_.size(); }
  [[nodiscard]] bool empty() const { return positions_.empty(); }

  /// `index` is less than `size()`. Only an entry with lists allocates memory.
  [[nodiscard]] WarpSharedEntry<TextView> operator[](std::size_t index) const;

  /// The same into the memory of the entry that was there before, for loops. `entry` is worth
  /// nothing when it throws.
  void read(std::size_t index, WarpSharedEntry<TextView>& entry) const;

  /// Whether the same entries are there in the same order.
  friend bool operator==(const WarpSharedEntries& a, const WarpSharedEntries& b);

 private:
  /// Memory that is filled from its beginning on.
  class Chunk {
   public:
    explicit Chunk(std::size_t capacity);
    /// A copy without the room that is left.
    Chunk(const Chunk& other);
    Chunk(Chunk&&) noexcept = default;
    Chunk& operator=(const Chunk&) = delete;
    Chunk& operator=(Chunk&&) = delete;
    ~Chunk() = default;

    [[nodiscard]] std::size_t size() const { return size_; }
    [[nodiscard]] std::size_t capacity() const { return capacity_; }
    [[nodiscard]] std::size_t room() const { return capacity_ - size_; }
    [[nodiscard]] const char* at(std::size_t offset) const { return bytes_.get() + offset; }

    /// Where the room begins; and where it begins from now on.
    [[nodiscard]] char* end() { return bytes_.get() + size_; }
    void clear() { size_ = 0; }
    void setEnd(const char* end) { size_ = static_cast<std::size_t>(end - bytes_.get()); }

   private:
    std::unique_ptr<char[]> bytes_;
    std::size_t size_ = 0;
    std::size_t capacity_;
  };

  struct Position {
    std::uint32_t chunk;
    std::uint32_t offset;
  };

  void swap(WarpSharedEntries& other) noexcept;

  template <class Entry>
  void appendPacked(const Entry& entry);

  /// The last one in use.
  Chunk& chunkWithRoom(std::size_t size);

  std::vector<Chunk> chunks_;
  /// The first ones are in use.
  std::size_t usedChunkCount_ = 0;
  std::vector<Position> positions_;
};

}  // namespace velmora

// The entries of a manifest in little memory, because a manifest may have a million of them. No
// program here keeps entries: it is for programs that list or restore the items of a folder.
#pragma once

#include "warpshared/records/VelmoraWarpSharedEntry.h"
#include "warpshared/records/WarpSharedEntryIterator.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

namespace velmora {

/// A list of entries, which is a plain value. Entries are packed into chunks of memory: no entry
/// has an allocation of its own, and none is moved when others are appended.
///
/// Entries are read as views, which cannot be assigned to: a list changes only as a whole. The
/// texts of a view become invalid when the list is assigned to, cleared or destroyed. They stay
/// valid when entries are appended and when the list is moved.
///
/// An operation that runs out of memory throws std::bad_alloc and leaves the list unchanged.
class WarpSharedEntries {
 public:
  // NOLINTBEGIN(readability-identifier-naming): the standard requires these names of containers.
  using iterator = WarpSharedEntryIterator;
  using const_iterator = iterator;
  using value_type = iterator::value_type;
  using const_reference = iterator::reference;
  // NOLINTEND(readability-identifier-naming)

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

  /// Appends a copy of the entry with its texts.
  void append(const WarpSharedEntry<TextView>& entry);
  void append(const WarpSharedEntry<Text>& entry);

  /// Removes all entries, and keeps the memory for others.
  void clear();

  [[nodiscard]] std::size_t size() const { return positions_.size(); }
  [[nodiscard]] bool empty() const { return positions_.empty(); }

  [[nodiscard]] iterator begin() const { return {*this, 0}; }
  [[nodiscard]] iterator end() const { return begin() + static_cast<std::ptrdiff_t>(size()); }

  /// `index` is less than `size()`. Only an entry with lists allocates memory.
  [[nodiscard]] const_reference operator[](std::size_t index) const;

  /// The same, and reuses the memory of `entry`, for long loops. After an error, `entry` is
  /// invalid.
  void read(std::size_t index, WarpSharedEntry<TextView>& entry) const;

  /// Whether both have equal entries in the same order.
  friend bool operator==(const WarpSharedEntries& a, const WarpSharedEntries& b);

 private:
  /// A block of memory that is filled from its beginning.
  class Chunk {
   public:
    explicit Chunk(std::size_t capacity);
    /// A copy without the unused memory.
    Chunk(const Chunk& other);
    Chunk(Chunk&&) noexcept = default;
    Chunk& operator=(const Chunk&) = delete;
    Chunk& operator=(Chunk&&) = delete;
    ~Chunk() = default;

    [[nodiscard]] std::size_t size() const { return size_; }
    [[nodiscard]] std::size_t capacity() const { return capacity_; }
    [[nodiscard]] std::size_t room() const { return capacity_ - size_; }
    [[nodiscard]] const char* at(std::size_t offset) const { return bytes_.get() + offset; }

    /// The end of the used memory.
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

  /// The last used chunk, or a new one, with room for `size` bytes.
  Chunk& chunkWithRoom(std::size_t size);

  std::vector<Chunk> chunks_;
  /// Chunks after these are unused.
  std::size_t usedChunkCount_ = 0;
  std::vector<Position> positions_;
};

}  // namespace velmora

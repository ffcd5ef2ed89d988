// A set for the many paths of one file. It compares by canonical equivalence like a set of Text,
// but neither copies each text nor allocates memory for it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace velmora::internal {

/// Texts that differ by canonical equivalence (Text.h). The set refers to their bytes, which must
/// stay in place until the set is cleared or destroyed. An ASCII text causes no allocation except
/// the growth of the set, which doubles its capacity. Nobody can prepare texts that make it slow,
/// because the hashes are seeded at random.
class CanonicalTextSet {
 public:
  /// Adds `text`. Returns false, and keeps the texts as they are, when an equal one is present.
  /// Throws std::length_error when the set holds 2^30 texts already.
  bool insert(std::string_view text);

  [[nodiscard]] bool contains(std::string_view text) const;

  /// Removes all texts, in time that depends on their number alone. Keeps the memory for later use.
  void clear();

  /// Makes room for `count` texts in total, so that the set grows only beyond that number. Throws
  /// std::length_error for more than 2^30.
  void reserve(std::size_t count);

  [[nodiscard]] std::size_t size() const { return entries_.size(); }
  [[nodiscard]] bool empty() const { return entries_.empty(); }

 private:
  struct Entry {
    std::size_t hash;
    std::string_view text;
  };

  /// A slot of the hash table: the number of its entry, and part of the entry's hash. That part
  /// excludes most other texts without access to the entry.
  struct Slot {
    std::uint32_t entryNumber;  ///< counted from 1; 0 marks an empty slot
    std::uint32_t tag;
  };

  [[nodiscard]] std::size_t find(std::size_t hash, std::string_view text) const;
  [[nodiscard]] std::size_t slotOf(std::size_t hash, std::uint32_t entryNumber) const;
  void growTo(std::size_t slotCount);

  /// In the order of insertion, and apart from the slots: only the small slots are accessed at
  /// random.
  std::vector<Entry> entries_;
  /// Their number is a power of two, and at least twice the number of entries; 0 at first.
  std::vector<Slot> slots_;
};

}  // namespace velmora::internal

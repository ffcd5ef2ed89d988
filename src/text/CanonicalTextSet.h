// A set for the many paths of one file: by canonical equivalence, like a set of Text, but without a
// copy or an allocation for each of them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace velmora::internal {

/// Texts that are different by canonical equivalence (Text.h). Their bytes lie elsewhere and must
/// outlive the set, or stay until it is cleared. An ASCII text costs no allocation but the set's
/// own growth, which is by doubling. Nobody can prepare texts that make it slow.
class CanonicalTextSet {
 public:
  /// Adds `text`. False, and nothing changed, when an equal one is there. Throws std::length_error
  /// when there are 2^30 already.
  bool insert(std::string_view text);

  [[nodiscard]] bool contains(std::string_view text) const;

  /// Takes all texts out, in time that depends on their number alone. Keeps the memory for others.
  void clear();

  /// Makes room for `count` texts altogether, so that the set does not grow before there are more.
  /// Throws std::length_error for more than 2^30.
  void reserve(std::size_t count);

  [[nodiscard]] std::size_t size() const { return entries_.size(); }
  [[nodiscard]] bool empty() const { return entries_.empty(); }

 private:
  struct Entry {
    std::size_t hash;
    std::string_view text;
  };

  // A place of the table: which entry is there, and enough of its hash to pass by most others
  // without a look at them.
  struct Slot {
    std::uint32_t entryNumber;  // from 1 on; 0 is nobody's
    std::uint32_t tag;
  };

  [[nodiscard]] std::size_t find(std::size_t hash, std::string_view text) const;
  [[nodiscard]] std::size_t slotOf(std::size_t hash, std::uint32_t entryNumber) const;
  void growTo(std::size_t slotCount);

  // In the order of their insertion, so that the table may stay small: only it is met at random.
  std::vector<Entry> entries_;
  // As many as a power of two, at least twice as many as the entries; none at first.
  std::vector<Slot> slots_;
};

}  // namespace velmora::internal

// Iterators over the entries of a manifest, for loops and for the algorithms of std::ranges.
#pragma once

#include "warpshared/records/VelmoraWarpSharedEntry.h"

#include <compare>
#include <cstddef>
#include <iterator>

namespace velmora {

class WarpSharedEntries;

/// A position in a WarpSharedEntries, with random access. It stays valid when entries are appended,
/// and becomes invalid when the list is cleared, assigned to, moved or destroyed.
///
/// Each dereference reads the entry anew, as a view that is constant: a change would be lost.
class WarpSharedEntryIterator {
 public:
  // NOLINTBEGIN(readability-identifier-naming): the standard requires these names of iterators.
  using iterator_concept = std::random_access_iterator_tag;
  using iterator_category = std::input_iterator_tag;
  using difference_type = std::ptrdiff_t;
  using value_type = WarpSharedEntry<TextView>;
  using reference = const value_type;
  // NOLINTEND(readability-identifier-naming)

  /// The entry of an expression such as `iterator->size`.
  class Pointer {
   public:
    explicit Pointer(const WarpSharedEntryIterator& iterator) : entry_(*iterator) {}

    const value_type* operator->() const { return &entry_; }

   private:
    value_type entry_;
  };

  WarpSharedEntryIterator() = default;
  WarpSharedEntryIterator(const WarpSharedEntries& entries, difference_type index)
      : entries_(&entries), index_(index) {}

  reference operator*() const;
  Pointer operator->() const { return Pointer(*this); }
  // NOLINTNEXTLINE(readability-const-return-type): so that no assignment to a view compiles.
  reference operator[](difference_type distance) const { return *(*this + distance); }

  WarpSharedEntryIterator& operator++() { return *this += 1; }
  WarpSharedEntryIterator& operator--() { return *this -= 1; }
  WarpSharedEntryIterator operator++(int) { return {*entries_, index_++}; }
  WarpSharedEntryIterator operator--(int) { return {*entries_, index_--}; }

  WarpSharedEntryIterator& operator+=(difference_type distance) {
    index_ += distance;
    return *this;
  }
  WarpSharedEntryIterator& operator-=(difference_type distance) { return *this += -distance; }

  friend WarpSharedEntryIterator operator+(WarpSharedEntryIterator iterator,
                                           difference_type distance) {
    return iterator += distance;
  }
  friend WarpSharedEntryIterator operator+(difference_type distance,
                                           WarpSharedEntryIterator iterator) {
    return iterator += distance;
  }
  friend WarpSharedEntryIterator operator-(WarpSharedEntryIterator iterator,
                                           difference_type distance) {
    return iterator -= distance;
  }

  /// For iterators over one list.
  friend difference_type operator-(const WarpSharedEntryIterator& a,
                                   const WarpSharedEntryIterator& b) {
    return a.index_ - b.index_;
  }

  friend bool operator==(const WarpSharedEntryIterator& a,
                         const WarpSharedEntryIterator& b) = default;
  friend auto operator<=>(const WarpSharedEntryIterator& a,
                          const WarpSharedEntryIterator& b) = default;

 private:
  const WarpSharedEntries* entries_ = nullptr;
  difference_type index_ = 0;
};

}  // namespace velmora

// A hash table with open addressing and linear probing, over an array of entries. A slot holds the
// number of an entry and the upper half of its hash. When that half is equal, the whole hash and
// then the texts are compared. At least half of the slots are empty, so every probe ends. clear()
// is the only removal, so the table needs no marks for deleted entries.
#include "text/CanonicalTextSet.h"

#include "text/Text.h"

#include <algorithm>
#include <bit>
#include <stdexcept>

namespace velmora::internal {
namespace {

constexpr std::size_t maxTexts = std::size_t{1} << 30U;
constexpr std::size_t fewestSlots = 16;
constexpr std::size_t slotsPerEntry = 2;

/// The upper half of the hash; only lower bits choose the slot.
std::uint32_t tagOf(std::size_t hash) {
  return static_cast<std::uint32_t>(static_cast<std::uint64_t>(hash) >> 32U);
}

}  // namespace

bool CanonicalTextSet::insert(std::string_view text) {
  reserve(entries_.size() + 1);
  const std::size_t hash = canonicalHash(text);
  const std::size_t slot = find(hash, text);
  if (slots_[slot].entryNumber != 0) {
    return false;
  }
  entries_.push_back({.hash = hash, .text = text});
  slots_[slot] = {.entryNumber = static_cast<std::uint32_t>(entries_.size()), .tag = tagOf(hash)};
  return true;
}

bool CanonicalTextSet::contains(std::string_view text) const {
  return !empty() && slots_[find(canonicalHash(text), text)].entryNumber != 0;
}

void CanonicalTextSet::clear() {
  // A large table with few texts, as for a small file after a large one: empties their slots only.
  if (size() < slots_.size() / 16) {
    for (std::uint32_t number = 1; const Entry& entry : entries_) {
      slots_[slotOf(entry.hash, number++)] = {};
    }
  } else {
    std::ranges::fill(slots_, Slot{});
  }
  entries_.clear();
}

void CanonicalTextSet::reserve(std::size_t count) {
  if (count > maxTexts) {
    throw std::length_error("a set of too many texts");
  }
  if (count > slots_.size() / slotsPerEntry) {
    growTo(std::bit_ceil(std::max(count * slotsPerEntry, fewestSlots)));
  }
}

/// The slot of a text equal to `text`, or the empty slot where `text` belongs.
std::size_t CanonicalTextSet::find(std::size_t hash, std::string_view text) const {
  const std::uint32_t tag = tagOf(hash);
  const std::size_t mask = slots_.size() - 1;
  std::size_t slot = hash & mask;
  while (slots_[slot].entryNumber != 0) {
    if (slots_[slot].tag == tag) {
      const Entry& entry = entries_[slots_[slot].entryNumber - 1];
      if (entry.hash == hash && canonicallyEqual(entry.text, text)) {
        return slot;
      }
    }
    slot = (slot + 1) & mask;
  }
  return slot;
}

/// The slot of an entry that the table holds. Passes over empty slots, because clear() may have
/// emptied some on the way.
std::size_t CanonicalTextSet::slotOf(std::size_t hash, std::uint32_t entryNumber) const {
  const std::size_t mask = slots_.size() - 1;
  std::size_t slot = hash & mask;
  while (slots_[slot].entryNumber != entryNumber) {
    slot = (slot + 1) & mask;
  }
  return slot;
}

void CanonicalTextSet::growTo(std::size_t slotCount) {
  entries_.reserve(slotCount / slotsPerEntry);
  slots_.assign(slotCount, Slot{});
  const std::size_t mask = slotCount - 1;
  for (std::uint32_t number = 1; const Entry& entry : entries_) {
    std::size_t slot = entry.hash & mask;
    while (slots_[slot].entryNumber != 0) {
      slot = (slot + 1) & mask;
    }
    slots_[slot] = {.entryNumber = number++, .tag = tagOf(entry.hash)};
  }
}

}  // namespace velmora::internal

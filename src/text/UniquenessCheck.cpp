// The check compares 64-bit canonical hashes instead of texts. Many hashes are first grouped by
// their highest bits, by a counting sort; equal hashes fall into the same group. A hash table with
// linear probing, small enough for the processor's cache, then finds repetitions in each group.
// The lowest and the highest hash mark slots, so add() replaces them by their neighbours.
#include "text/UniquenessCheck.h"

#include "text/Text.h"

#include <algorithm>
#include <bit>
#include <span>

namespace velmora::internal {

namespace {

using Hashes = std::span<const std::uint64_t>;

/// A table of so few hashes stays in the processor's cache.
constexpr std::size_t fewHashes = 1024;
/// The ends of 2^11 groups stay there, too.
constexpr int maxGroupBits = 11;

/// The hashes are from 1 to 2^64-2.
constexpr std::uint64_t emptySlot = 0;
constexpr std::uint64_t foundSlot = ~emptySlot;

/// The slot of `hash`, or the empty one where it would be.
std::size_t slotOf(std::uint64_t hash, Hashes table) {
  std::size_t slot = hash & (table.size() - 1);
  while (table[slot] != emptySlot && table[slot] != hash) {
    slot = (slot + 1) & (table.size() - 1);
  }
  return slot;
}

/// Fills `table`, whose content is replaced. Returns the number of different hashes.
std::size_t fillTable(Hashes hashes, std::vector<std::uint64_t>& table) {
  table.assign(std::bit_ceil(2 * hashes.size() + 1), emptySlot);
  std::size_t count = 0;
  for (const std::uint64_t hash : hashes) {
    const std::size_t slot = slotOf(hash, table);
    count += table[slot] == emptySlot ? 1 : 0;
    table[slot] = hash;
  }
  return count;
}

/// Copies `hashes` to `grouped`, those with the same highest `bits` next to each other. Returns the
/// end of each group.
std::vector<std::size_t> groupByHighestBits(Hashes hashes, int bits,
                                            std::vector<std::uint64_t>& grouped) {
  const auto groupOf = [bits](std::uint64_t hash) { return hash >> (64 - bits); };
  std::vector<std::size_t> ends((std::size_t{1} << bits) + 1);
  for (const std::uint64_t hash : hashes) {
    ++ends[groupOf(hash) + 1];
  }
  // Now the beginning of each group, which moves to its end while the group is filled.
  for (std::size_t group = 1; group < ends.size(); ++group) {
    ends[group] += ends[group - 1];
  }
  grouped.resize(hashes.size());
  for (const std::uint64_t hash : hashes) {
    grouped[ends[groupOf(hash)]++] = hash;
  }
  ends.pop_back();
  return ends;
}

}  // namespace

void UniquenessCheck::add(std::string_view text) {
  const std::uint64_t hash = canonicalHash(text, salt_);
  hashes_.push_back(std::clamp(hash, emptySlot + 1, foundSlot - 1));
}

bool UniquenessCheck::includes(UniquenessCheck& others) const {
  std::vector<std::uint64_t>& table = others.table_;
  std::size_t missingCount = fillTable(others.hashes_, table);
  for (auto hash = hashes_.begin(); hash != hashes_.end() && missingCount > 0; ++hash) {
    const std::size_t slot = slotOf(*hash, table);
    if (table[slot] == *hash) {
      table[slot] = foundSlot;
      --missingCount;
    }
  }
  return missingCount == 0;
}

bool UniquenessCheck::allDistinct() {
  const int groupBits =
      std::min(static_cast<int>(std::bit_width(hashes_.size() / fewHashes)), maxGroupBits);
  bool verdict = true;
  if (groupBits == 0) {
    verdict = fillTable(hashes_, table_) == hashes_.size();
  } else {
    std::size_t begin = 0;
    for (const std::size_t end : groupByHighestBits(hashes_, groupBits, grouped_)) {
      const Hashes group = Hashes(grouped_).subspan(begin, end - begin);
      verdict = verdict && fillTable(group, table_) == group.size();
      begin = end;
    }
  }
  hashes_.clear();
  return verdict;
}

}  // namespace velmora::internal

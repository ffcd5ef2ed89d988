// The check compares 64-bit canonical hashes instead of texts. Many hashes are first grouped by
// their highest bits, by a counting sort; equal hashes fall into the same group. A hash table with
// linear probing, small enough for the processor's cache, then finds repetitions in each group.
// The hash 0 marks an empty slot, so add() replaces it by 1.
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

constexpr std::uint64_t emptySlot = 0;

/// `table` is scratch memory.
bool areDistinct(Hashes hashes, std::vector<std::uint64_t>& table) {
  const std::size_t slotCount = std::bit_ceil(2 * hashes.size() + 1);
  table.assign(slotCount, emptySlot);
  for (const std::uint64_t hash : hashes) {
    std::size_t slot = hash & (slotCount - 1);
    while (table[slot] != emptySlot) {
      if (table[slot] == hash) {
        return false;
      }
      slot = (slot + 1) & (slotCount - 1);
    }
    table[slot] = hash;
  }
  return true;
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
  hashes_.push_back(hash == emptySlot ? 1 : hash);
}

bool UniquenessCheck::includes(UniquenessCheck& others) const {
  std::vector<std::uint64_t>& wanted = others.hashes_;
  std::ranges::sort(wanted);
  wanted.erase(std::unique(wanted.begin(), wanted.end()), wanted.end());
  if (wanted.empty()) {
    return true;
  }
  std::vector<bool> isFound(wanted.size());
  for (const std::uint64_t hash : hashes_) {
    const auto place = std::ranges::lower_bound(wanted, hash);
    if (place != wanted.end() && *place == hash) {
      isFound[static_cast<std::size_t>(place - wanted.begin())] = true;
    }
  }
  return std::ranges::find(isFound, false) == isFound.end();
}

bool UniquenessCheck::allDistinct() {
  const int groupBits =
      std::min(static_cast<int>(std::bit_width(hashes_.size() / fewHashes)), maxGroupBits);
  bool verdict = true;
  if (groupBits == 0) {
    verdict = areDistinct(hashes_, table_);
  } else {
    std::size_t begin = 0;
    for (const std::size_t end : groupByHighestBits(hashes_, groupBits, grouped_)) {
      verdict = verdict && areDistinct(Hashes(grouped_).subspan(begin, end - begin), table_);
      begin = end;
    }
  }
  hashes_.clear();
  return verdict;
}

}  // namespace velmora::internal

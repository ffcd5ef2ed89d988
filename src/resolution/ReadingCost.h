// What the manifests read so far let expect of those to come.
#pragma once

#include <cstddef>
#include <cstdint>

namespace velmora {

/// Counts in entries, since a clock would have the same mirror read in another way each time.
class ReadingCost {
 public:
  /// One more file was read; a refused one has no entries.
  void addFile(std::size_t entryCount);

  /// How many helpers the `remaining` files would keep busy for long enough, if they are like those
  /// read so far. 0 before the first.
  [[nodiscard]] std::size_t helpersWorthStarting(std::size_t remaining) const;

 private:
  std::uint64_t fileCount_ = 0;
  std::uint64_t cost_ = 0;
};

}  // namespace velmora

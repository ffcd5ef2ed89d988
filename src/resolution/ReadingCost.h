// What the files read so far let expect of those to come.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

namespace velmora {

/// Counts in entries, since a clock would have the same mirror read in another way each time.
class ReadingCost {
 public:
  /// One more file was read, or looked for in vain. Only a valid manifest has entries.
  void addFile(std::size_t entryCount);

  /// One more file did not have to be read.
  void addUnreadFile();

  /// How many helpers the `remaining` files would keep busy for long enough, if they are like those
  /// added so far; with the calling thread no more than `workerCount` (at least 1), or than suit
  /// the machine (WorkerCount.h) where nobody asks for a number. 0 before the first file.
  [[nodiscard]] std::size_t helpersWorthStarting(std::size_t remaining,
                                                 std::optional<std::size_t> workerCount) const;

 private:
  std::uint64_t fileCount_ = 0;
  std::uint64_t cost_ = 0;
};

}  // namespace velmora

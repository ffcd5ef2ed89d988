// What the files read so far let expect of those to come.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

namespace velmora {

/// Counts in entries, since a clock would have the same mirror read in another way each time.
class ReadingCost {
 public:
  /// For at most `workerCount` (at least 1) threads, the calling one included; without a number for
  /// as many as suit the machine (WorkerCount.h).
  explicit ReadingCost(std::optional<std::size_t> workerCount) : workerCount_(workerCount) {}

  /// One more file was read, or looked for in vain. Only a valid manifest has entries.
  void addFile(std::size_t entryCount);

  /// One more file did not have to be read.
  void addUnreadFile();

  /// How many helpers the `remaining` files are worth, if they are like those added so far. 0
  /// before the first.
  [[nodiscard]] std::size_t helpersWorthStarting(std::size_t remaining);

 private:
  /// Known once a helper is wanted: counting the processors reads a file, too.
  std::optional<std::size_t> workerCount_;
  std::uint64_t fileCount_ = 0;
  std::uint64_t cost_ = 0;
};

}  // namespace velmora

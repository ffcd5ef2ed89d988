#include "resolution/ReadingCost.h"

#include "resolution/WorkerCount.h"

#include <algorithm>

namespace velmora {

namespace {

/// Finding, opening and closing a file takes some 10 us, as long as checking a few dozen entries at
/// most.
constexpr std::uint64_t costOfAFile = 20;

/// What must be left for each helper: nearly a hundred ordinary manifests, or 500 markers. On an
/// idle processor one pays from a fifth of that on: its start and its first memory cost some 100
/// us. But where all processors are busy, it waits for its turn, and the caller for its end: 3 ms
/// were measured.
constexpr std::uint64_t costWorthAHelper = 10'000;

}  // namespace

void ReadingCost::addFile(std::size_t entryCount) {
  ++fileCount_;
  cost_ += costOfAFile + entryCount;
}

void ReadingCost::addUnreadFile() { ++fileCount_; }

std::size_t ReadingCost::helpersWorthStarting(std::size_t remaining) {
  if (fileCount_ == 0) {
    return 0;
  }
  const auto worthwhile =
      static_cast<std::size_t>(cost_ / fileCount_ * remaining / costWorthAHelper);
  if (worthwhile == 0) {
    return 0;
  }
  if (!workerCount_.has_value()) {
    workerCount_ = usualWorkerCount();
  }
  return std::min(worthwhile, *workerCount_ - 1);
}

}  // namespace velmora

#include "resolution/ReadingCost.h"

namespace velmora {

namespace {

/// Finding, opening and closing a file takes some 10 us, as long as checking a few dozen entries at
/// most.
constexpr std::uint64_t costOfAFile = 20;

/// What a helper must find to do, nearly a hundred ordinary manifests. On an idle processor it pays
/// from a fifth of that on: its start and its first memory cost some 100 us. But where all
/// processors are busy, it waits for its turn, and the caller for its end: 3 ms were measured.
constexpr std::uint64_t costWorthAHelper = 10'000;

}  // namespace

void ReadingCost::addFile(std::size_t entryCount) {
  ++fileCount_;
  cost_ += costOfAFile + entryCount;
}

std::size_t ReadingCost::helpersWorthStarting(std::size_t remaining) const {
  return fileCount_ == 0
             ? 0
             : static_cast<std::size_t>(cost_ / fileCount_ * remaining / costWorthAHelper);
}

}  // namespace velmora

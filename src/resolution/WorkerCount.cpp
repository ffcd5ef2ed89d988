#include "resolution/WorkerCount.h"

#include <algorithm>
#include <thread>

namespace velmora {

namespace {

constexpr std::size_t mostUsualWorkers = 4;

}  // namespace

std::size_t usualWorkerCount(std::size_t processorCount) {
  return std::clamp<std::size_t>(processorCount, 1, mostUsualWorkers);
}

std::size_t usualWorkerCount() { return usualWorkerCount(std::thread::hardware_concurrency()); }

}  // namespace velmora

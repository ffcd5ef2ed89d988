#include "resolution/WorkerCount.h"

#include <gtest/gtest.h>

#include <map>

namespace velmora {
namespace {

TEST(UsualWorkerCount, isThatOfTheProcessorsUpToALimit) {
  const std::map<std::size_t, std::size_t> workersByProcessors = {{0, 1}, {1, 1}, {2, 2},  {3, 3},
                                                                  {4, 4}, {5, 4}, {256, 4}};
  for (const auto& [processors, workers] : workersByProcessors) {
    EXPECT_EQ(usualWorkerCount(processors), workers) << processors;
  }
}

TEST(UsualWorkerCount, ofThisMachineMayBeAskedFor) {
  EXPECT_GE(usualWorkerCount(), 1U);
  EXPECT_LE(usualWorkerCount(), mostWorkers);
}

}  // namespace
}  // namespace velmora

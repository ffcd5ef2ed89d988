#include "resolution/ReadingCost.h"
#include "tests/RowName.h"

#include <gtest/gtest.h>

#include <vector>

namespace velmora {
namespace {

struct CostCase {
  const char* name;
  /// Of the files read so far.
  std::vector<std::size_t> entryCounts;
  std::size_t remaining;
  std::size_t helpers;
};

class WorthwhileHelpers : public testing::TestWithParam<CostCase> {};

TEST_P(WorthwhileHelpers, followFromTheFilesReadSoFar) {
  ReadingCost cost;
  for (const std::size_t count : GetParam().entryCounts) {
    cost.addFile(count);
  }
  EXPECT_EQ(cost.helpersWorthStarting(GetParam().remaining), GetParam().helpers);
}

INSTANTIATE_TEST_SUITE_P(
    Mirrors, WorthwhileHelpers,
    testing::Values(CostCase{"nothingRead", {}, 1000, 0}, CostCase{"nothingLeft", {100'000}, 0, 0},
                    CostCase{"fewOrdinaryFiles", {100}, 50, 0},
                    CostCase{"justTooFewOrdinaryFiles", {100}, 83, 0},
                    CostCase{"enoughOrdinaryFiles", {100}, 84, 1},
                    CostCase{"manyOrdinaryFiles", {100}, 999, 11},
                    CostCase{"fewLargeFiles", {10'000}, 2, 2},
                    CostCase{"emptyManifests", {0, 0, 0}, 499, 0},
                    CostCase{"manyEmptyManifests", {0, 0, 0}, 500, 1},
                    CostCase{"largeOneAmongSmallOnes", {0, 0, 0, 4000}, 10, 1},
                    CostCase{"smallOnesAroundALargeOne", {0, 0, 0, 4000}, 9, 0},
                    CostCase{"absurdlyMany", {1'000'000}, 1'000'000, 100'002'000}),
    RowName());

}  // namespace
}  // namespace velmora

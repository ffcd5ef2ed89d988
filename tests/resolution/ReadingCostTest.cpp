#include "resolution/ReadingCost.h"
#include "resolution/WorkerCount.h"

#include <gtest/gtest.h>

#include <limits>
#include <map>
#include <optional>
#include <vector>

namespace velmora {
namespace {

TEST(WorthwhileHelpers, followFromTheFilesReadSoFar) {
  struct Row {
    const char* name;
    /// Of the files read so far.
    std::vector<std::size_t> entryCounts;
    std::size_t remaining;
    std::size_t helpers;
  };
  const Row rows[] = {{"nothingRead", {}, 1000, 0},
                      {"nothingLeft", {100'000}, 0, 0},
                      {"fewOrdinaryFiles", {100}, 50, 0},
                      {"justTooFewOrdinaryFiles", {100}, 83, 0},
                      {"enoughOrdinaryFiles", {100}, 84, 1},
                      {"manyOrdinaryFiles", {100}, 999, 11},
                      {"fewLargeFiles", {10'000}, 2, 2},
                      {"emptyManifests", {0, 0, 0}, 499, 0},
                      {"manyEmptyManifests", {0, 0, 0}, 500, 1},
                      {"largeOneAmongSmallOnes", {0, 0, 0, 4000}, 10, 1},
                      {"smallOnesAroundALargeOne", {0, 0, 0, 4000}, 9, 0},
                      {"absurdlyMany", {1'000'000}, 1'000'000, 100'002'000}};
  for (const Row& row : rows) {
    ReadingCost cost(std::numeric_limits<std::size_t>::max());
    for (const std::size_t count : row.entryCounts) {
      cost.addFile(count);
    }
    EXPECT_EQ(cost.helpersWorthStarting(row.remaining), row.helpers) << row.name;
  }
}

TEST(WorthwhileHelpersOfFewerFiles, doNotCountThoseThatNeedNotBeRead) {
  ReadingCost cost(8);
  cost.addFile(0);
  cost.addUnreadFile();
  cost.addUnreadFile();
  cost.addUnreadFile();
  EXPECT_EQ(cost.helpersWorthStarting(1999), 0U);
  EXPECT_EQ(cost.helpersWorthStarting(2000), 1U);
}

TEST(WorthwhileHelpersOfFewerFiles, areNoneWhereNothingHadToBeRead) {
  ReadingCost cost(8);
  cost.addUnreadFile();
  EXPECT_EQ(cost.helpersWorthStarting(1'000'000), 0U);
}

TEST(WorthwhileHelpersOfManyFiles, areFewerThanTheWorkersAskedFor) {
  // Eleven are worth it.
  for (const auto& [workers, helpers] :
       std::map<std::size_t, std::size_t>{{1, 0}, {2, 1}, {11, 10}, {12, 11}, {13, 11}, {64, 11}}) {
    ReadingCost cost(workers);
    cost.addFile(100);
    EXPECT_EQ(cost.helpersWorthStarting(999), helpers) << workers;
    // The answer does not use up workers.
    EXPECT_EQ(cost.helpersWorthStarting(999), helpers) << workers;
  }
}

TEST(WorthwhileHelpersOfManyFiles, areFewerThanTheUsualWorkersWhereNobodyAsks) {
  ReadingCost cost(std::nullopt);
  cost.addFile(100);
  EXPECT_EQ(cost.helpersWorthStarting(999), usualWorkerCount() - 1);
}

}  // namespace
}  // namespace velmora

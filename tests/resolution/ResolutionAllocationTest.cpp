// Looks for warped folders while memory runs out. Either the caller gets the error, or every warped
// folder is found except those whose manifest memory did not suffice for: these are refused.

#include "resolution/WarpedFolders.h"
#include "tests/fakes/RecordedWarps.h"
#include "tests/support/FailingAllocations.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <new>
#include <string>
#include <vector>

namespace velmora {
namespace {

bool isOutOfMemory(const std::exception_ptr& fault) {
  try {
    std::rethrow_exception(fault);
  } catch (const std::bad_alloc&) {
    return true;
  } catch (...) {
    return false;
  }
}

TEST(ResolutionShortOfMemory, losesNoManifestSilently) {
  FakePlatform fake;
  std::vector<StandardizedPath> items;
  for (int number = 0; number < 3; ++number) {
    const std::string name = "a folder with a long name " + std::to_string(number);
    recordWarp(fake, "/" + name, name);
    items.push_back({"/" + name + "/\u00e9"});
  }
  int throwCount = 0;
  int refusalCount = 0;
  const long allocationCount = failEachAllocation(
      [] { return Resolution(); },
      [&](Resolution& resolution) {
        resolution = resolveWarpedFoldersAround(items, fake.platform());
      },
      [&](const Resolution& resolution, const Attempt& attempt) {
        throwCount += attempt.hasThrown ? 1 : 0;
        refusalCount += static_cast<int>(resolution.refused.size());
        for (const RefusedManifest& refused : resolution.refused) {
          EXPECT_TRUE(refused.fault != nullptr && isOutOfMemory(refused.fault));
        }
        if (!attempt.hasThrown) {
          EXPECT_EQ(confirmedWarpManifests(resolution).size() + resolution.refused.size(), 3U);
        }
        EXPECT_TRUE(attempt.hasFailed || confirmedWarpManifests(resolution).size() == 3U);
      });
  EXPECT_GT(allocationCount, 100);
  EXPECT_GT(throwCount, 100);
  EXPECT_GT(refusalCount, 10);
}

}  // namespace
}  // namespace velmora

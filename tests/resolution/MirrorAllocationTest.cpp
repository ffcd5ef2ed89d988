// Reads a mirror by several threads while memory runs out: each manifest is either read as a whole
// or refused, and the process goes on.

#include "resolution/ManifestMirror.h"
#include "tests/fakes/RecordedWarps.h"
#include "tests/fakes/WarpRecords.h"
#include "tests/resolution/CountingObserver.h"
#include "tests/support/FailingAllocations.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <vector>

namespace velmora {
namespace {

TEST(MirrorShortOfMemory, isReadAsFarAsThereIs) {
  constexpr std::size_t fileCount = 24;
  constexpr std::size_t workerCount = 2;
  FakePlatform fake;
  for (std::size_t number = 0; number < fileCount; ++number) {
    VelmoraWarpSharedManifest manifest = manifestOf(
        "/a folder with a long name", "a Warp with a long name " + std::to_string(number));
    // The first is large enough to have a helper started.
    for (int entry = 0; entry < (number == 0 ? 450 : 3); ++entry) {
      manifest.entries.append(
          entryOf(manifest.originalFolderPath.utf8() + "/and an entry " + std::to_string(entry)));
    }
    mirror(fake, manifest);
  }
  struct Reading {
    CountingObserver observer = {};
    std::vector<MirroredManifest> manifests;
  };
  std::size_t refusals = 0;
  const Text root = recordedWarpRoot;
  const long allocationCount =
      failEachAllocation([] { return Reading(); },
                         [&](Reading& reading) {
                           reading.manifests = mirroredManifests(root, fake.fileSystem, fake.paths,
                                                                 reading.observer, workerCount);
                         },
                         [&](const Reading& reading, const Attempt& attempt) {
                           const CountingObserver& told = reading.observer;
                           EXPECT_EQ(told.otherRefusals, 0U);
                           // There may be no memory for the list itself.
                           if (!attempt.hasThrown) {
                             EXPECT_EQ(reading.manifests.size(), told.readCount);
                             EXPECT_EQ(told.readCount + told.refusalsForWantOfMemory, fileCount);
                           }
                           EXPECT_TRUE(attempt.hasFailed || told.readCount == fileCount);
                           EXPECT_TRUE(attempt.shortage == MemoryShortage::forGood ||
                                       told.refusalsForWantOfMemory <= 1);
                           refusals += told.refusalsForWantOfMemory;
                         });
  EXPECT_GT(allocationCount, 100);
  EXPECT_GT(refusals, 40U);
}

}  // namespace
}  // namespace velmora

// Judges manifests by several threads while memory runs out: the list is whole, or the caller hears
// of it. A warped folder must not be taken for an ordinary one.

#include "resolution/WarpMarker.h"
#include "tests/fakes/RecordedWarps.h"
#include "tests/resolution/CountingObserver.h"
#include "tests/resolution/MirroredManifests.h"
#include "tests/support/FailingAllocations.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace velmora {
namespace {

TEST(MarkersShortOfMemory, areNotTakenForMissing) {
  // Enough to have a helper started.
  constexpr std::size_t folderCount = 520;
  constexpr std::size_t workerCount = 2;
  FakePlatform fake;
  prepareMirror(fake);
  std::vector<MirroredManifest> manifests;
  for (std::size_t number = 0; number < folderCount; ++number) {
    const std::string name = "a folder with a long name " + std::to_string(number);
    manifests.push_back(mirroredManifestOf("/" + name, name));
    mark(fake, "/" + name, name);
  }
  struct Judged {
    std::vector<MirroredManifest> manifests;
    CountingObserver observer = {};
  };
  int throwCount = 0;
  const Text root = recordedWarpRoot;
  const long allocationCount = failEachAllocation(
      [&] { return Judged{.manifests = manifests}; },
      [&](Judged& judged) {
        judged.manifests =
            confirmedWarpManifests(std::move(judged.manifests), root, fake.fileSystem, fake.paths,
                                   judged.observer, workerCount);
      },
      [&](const Judged& judged, const Attempt& attempt) {
        EXPECT_EQ(judged.observer.otherVerdicts, 0U);
        throwCount += attempt.hasThrown ? 1 : 0;
        if (!attempt.hasThrown) {
          EXPECT_EQ(judged.manifests.size(), folderCount);
          EXPECT_EQ(judged.observer.confirmedCount, folderCount);
        }
      },
      // The first allocations are for what is made once; after them each marker is like the last.
      64);
  EXPECT_GT(allocationCount, static_cast<long>(folderCount));
  EXPECT_GT(throwCount, 200);
}

}  // namespace
}  // namespace velmora

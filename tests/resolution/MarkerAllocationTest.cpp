// Judges manifests by several threads again and again, each time with another allocation failing,
// on whatever thread: the list is whole, or the caller hears of it. A warped folder must not be
// taken for an ordinary one.

#include "resolution/ResolutionObserver.h"
#include "resolution/WarpMarker.h"
#include "tests/support/FailingAllocations.h"
#include "tests/fakes/RecordedWarps.h"
#include "tests/resolution/MirroredManifests.h"

#include <gtest/gtest.h>

#include <limits>
#include <new>
#include <optional>
#include <string>
#include <utility>

namespace velmora {
namespace {

/// Enough to have a helper started.
constexpr std::size_t folderCount = 520;
constexpr std::size_t workerCount = 2;

/// Allocates nothing, so that only the failures of what is tested count.
class Counter final : public ResolutionObserver {
 public:
  std::size_t confirmedCount = 0;
  std::size_t otherCount = 0;

  void didJudgeManifest(const MirroredManifest& /*manifest*/, ManifestVerdict verdict,
                        const std::exception* /*error*/) override {
    ++(verdict == ManifestVerdict::confirmed ? confirmedCount : otherCount);
  }
};

class MarkersShortOfMemory : public testing::TestWithParam<MemoryShortage> {
 protected:
  MarkersShortOfMemory() {
    prepareMirror(fake);
    for (std::size_t number = 0; number < folderCount; ++number) {
      const std::string name = "a folder with a long name " + std::to_string(number);
      manifests.push_back(mirroredManifestOf("/" + name, name));
      mark(fake, "/" + name, name);
    }
    // simdjson ends a process that has no memory when it is used for the first time.
    EXPECT_TRUE(judge(std::numeric_limits<long>::max()));
  }
  ~MarkersShortOfMemory() override { letAllocationsSucceed(); }

  /// Whether all were judged without reaching the failing allocation.
  bool judge(long successfulAllocations) {
    std::vector<MirroredManifest> copies = manifests;
    Counter counter;
    std::optional<std::vector<MirroredManifest>> confirmed;
    failAllocations(successfulAllocations, GetParam());
    try {
      confirmed = confirmedWarpManifests(std::move(copies), root, fake.fileSystem, fake.paths,
                                         counter, workerCount);
    } catch (const std::bad_alloc&) {
      ++failureCount;
    }
    const bool hasFailed = letAllocationsSucceed();
    EXPECT_EQ(counter.otherCount, 0U);
    if (confirmed.has_value()) {
      EXPECT_EQ(confirmed->size(), folderCount);
      EXPECT_EQ(counter.confirmedCount, folderCount);
    }
    EXPECT_TRUE(hasFailed || confirmed.has_value());
    return !hasFailed;
  }

  const Text root = std::string(recordedWarpRoot);
  FakePlatform fake;
  std::vector<MirroredManifest> manifests;
  std::size_t failureCount = 0;
};

TEST_P(MarkersShortOfMemory, areNotTakenForMissing) {
  long allocationCount = 0;
  while (!judge(allocationCount) && !HasFailure()) {
    // Each of the first ones, among which all is made that is made once. What follows is one marker
    // like the other.
    allocationCount += 1 + allocationCount / 64;
  }
  EXPECT_GT(allocationCount, static_cast<long>(folderCount));
  EXPECT_GT(failureCount, 100U);
}

INSTANTIATE_TEST_SUITE_P(OnceOrForGood, MarkersShortOfMemory,
                         testing::Values(MemoryShortage::once, MemoryShortage::forGood));

}  // namespace
}  // namespace velmora

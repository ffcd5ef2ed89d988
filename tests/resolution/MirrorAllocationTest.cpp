// Reads a mirror by several threads again and again, each time with another allocation failing, on
// whatever thread: what was read is whole, what could not be is refused, and the process goes on.

#include "resolution/ManifestMirror.h"
#include "resolution/ResolutionObserver.h"
#include "tests/support/FailingAllocations.h"
#include "tests/fakes/RecordedWarps.h"

#include <gtest/gtest.h>

#include <limits>
#include <new>
#include <optional>
#include <string>

namespace velmora {
namespace {

constexpr std::size_t fileCount = 24;
constexpr std::size_t workerCount = 2;

/// Allocates nothing, so that only the failures of what is tested count.
class Counter final : public ResolutionObserver {
 public:
  std::size_t readCount = 0;
  std::size_t refusalsForWantOfMemory = 0;
  std::size_t otherRefusals = 0;

  void didReadManifest(const MirroredManifest& /*manifest*/) override { ++readCount; }
  void didRefuseManifest(const Text& /*filePath*/, const std::exception& error) override {
    ++(dynamic_cast<const std::bad_alloc*>(&error) != nullptr ? refusalsForWantOfMemory
                                                              : otherRefusals);
  }
};

class MirrorShortOfMemory : public testing::TestWithParam<MemoryShortage> {
 protected:
  MirrorShortOfMemory() {
    prepareMirror(fake);
    for (std::size_t number = 0; number < fileCount; ++number) {
      VelmoraWarpSharedManifest manifest =
          manifestOf("/a folder with a long name", "a Warp with a long name");
      // The first is large enough to have a helper started.
      for (int entry = 0; entry < (number == 0 ? 450 : 3); ++entry) {
        manifest.entries.append(
            entryOf(manifest.originalFolderPath.utf8() + "/and an entry " + std::to_string(entry)));
      }
      fake.fileSystem.files["/C/Warp/ManifestMirror/" + std::to_string(number + 10) + ".json"] =
          encodeManifest(manifest);
    }
    // simdjson ends a process that has no memory when it is used for the first time.
    EXPECT_TRUE(read(std::numeric_limits<long>::max()));
  }
  ~MirrorShortOfMemory() override { letAllocationsSucceed(); }

  /// Whether all was read without reaching the failing allocation.
  bool read(long successfulAllocations) {
    Counter counter;
    std::optional<std::vector<MirroredManifest>> manifests;
    failAllocations(successfulAllocations, GetParam());
    try {
      manifests = mirroredManifests(root, fake.fileSystem, fake.paths, counter, workerCount);
    } catch (const std::bad_alloc&) {
      // For the list itself.
    }
    const bool hasFailed = letAllocationsSucceed();
    EXPECT_EQ(counter.otherRefusals, 0U);
    if (manifests.has_value()) {
      EXPECT_EQ(manifests->size(), counter.readCount);
      EXPECT_EQ(counter.readCount + counter.refusalsForWantOfMemory, fileCount);
    }
    EXPECT_TRUE(hasFailed || (manifests.has_value() && counter.readCount == fileCount));
    if (GetParam() == MemoryShortage::once) {
      EXPECT_LE(counter.refusalsForWantOfMemory, 1U);
    }
    refusals += counter.refusalsForWantOfMemory;
    return !hasFailed;
  }

  const Text root = std::string(recordedWarpRoot);
  FakePlatform fake;
  std::size_t refusals = 0;
};

TEST_P(MirrorShortOfMemory, isReadAsFarAsThereIs) {
  long allocationCount = 0;
  while (!read(allocationCount) && !HasFailure()) {
    ++allocationCount;
  }
  EXPECT_GT(allocationCount, 100);
  EXPECT_GT(refusals, 20U);
}

INSTANTIATE_TEST_SUITE_P(OnceOrForGood, MirrorShortOfMemory,
                         testing::Values(MemoryShortage::once, MemoryShortage::forGood));

}  // namespace
}  // namespace velmora

// Large manifests: the rules for an ASCII path allocate nothing, and neither does each kept entry.
// Kept entries survive a failed allocation.

#include "tests/fakes/WarpRecords.h"
#include "tests/support/FailingAllocations.h"
#include "text/CanonicalTextSet.h"
#include "text/Characters.h"
#include "text/Text.h"
#include "warpshared/records/WarpSharedEntries.h"
#include "warpshared/rules/TextRules.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace velmora::internal {
namespace {

constexpr std::string_view path =
    "/Users/mika/Documents/Projects/2025/Camera Originals/Take 12/A long name of a file.mov";

TEST(Allocations, areCounted) {
  EXPECT_EQ(allocationsOf([] { static_cast<void>(std::string(path)); }), 1);
}

TEST(Allocations, areAbsentInThePredicates) {
  EXPECT_EQ(allocationsOf([] {
              EXPECT_TRUE(isCanonicalAbsolutePath(path));
              EXPECT_TRUE(isSafeRelativeObjectKey(path.substr(1)));
              EXPECT_TRUE(isStandardBase64("QUJDREVGR0g="));
              EXPECT_FALSE(isSHA256Hex(path));
            }),
            0);
}

TEST(Allocations, areAbsentInComparisonsOfPaths) {
  EXPECT_EQ(allocationsOf([] {
              EXPECT_TRUE(canonicallyEqual(path, path));
              EXPECT_FALSE(canonicallyEqual(path, path.substr(1)));
              EXPECT_TRUE(hasCharacterPrefix(path, "/Users/mika/"));
              EXPECT_NE(canonicalHash(path), canonicalHash(path.substr(1)));
            }),
            0);
}

TEST(Allocations, areAbsentInASetWithReservedRoom) {
  CanonicalTextSet set;
  set.reserve(path.size());
  EXPECT_EQ(allocationsOf([&set] {
              for (std::size_t length = 1; length <= path.size(); ++length) {
                EXPECT_TRUE(set.insert(path.substr(0, length)));
              }
              EXPECT_TRUE(set.contains(path));
            }),
            0);
}

/// An entry with two lists.
VelmoraWarpSharedEntry fullEntry() {
  VelmoraWarpSharedEntry entry = entryOf(path);
  entry.extendedAttributes = {{.name = "com.example.a", .base64Value = "QQ=="}};
  entry.payloadParts = {{.key = "objects/a", .offset = 0, .size = 1, .payloadNamespace = {}}};
  return entry;
}

TEST(KeptEntries, areAllocatedInChunks) {
  const VelmoraWarpSharedEntry entry = fullEntry();
  WarpSharedEntries entries;
  // About 25 MB in chunks of one million bytes.
  EXPECT_LT(allocationsOf([&] {
              for (int count = 0; count < 100'000; ++count) {
                entries.append(entry);
              }
            }),
            100);
  EXPECT_EQ(entries.size(), 100'000);
}

TEST(KeptEntries, areReadWithoutAllocations) {
  WarpSharedEntries entries;
  for (int count = 0; count < 100; ++count) {
    entries.append(fullEntry());
    entries.append(entryOf(path));
  }
  WarpSharedEntry<TextView> scratch;
  entries.read(0, scratch);
  EXPECT_EQ(allocationsOf([&] {
              for (std::size_t index = 0; index < entries.size(); ++index) {
                entries.read(index, scratch);
              }
              EXPECT_TRUE(entries[1].payloadParts.empty());
            }),
            0);
}

TEST(KeptEntries, areUnchangedWhenAnAppendRunsOutOfMemory) {
  std::vector<VelmoraWarpSharedEntry> given(300, fullEntry());
  given[99].aclText = given[199].aclText = given[299].aclText = std::string(2'000'000, 'x');
  WarpSharedEntries expected;
  for (const VelmoraWarpSharedEntry& entry : given) {
    expected.append(entry);
  }
  struct Subject {
    WarpSharedEntries entries;
    std::size_t appendedCount = 0;
  };
  const auto appendTheRest = [&](Subject& subject) {
    for (; subject.appendedCount < given.size(); ++subject.appendedCount) {
      subject.entries.append(given[subject.appendedCount]);
    }
  };
  EXPECT_GT(failEachAllocation([] { return Subject(); }, appendTheRest,
                               [&](Subject& subject, const Attempt& attempt) {
                                 EXPECT_EQ(attempt.hasThrown, attempt.hasFailed);
                                 EXPECT_EQ(subject.entries.size(), subject.appendedCount);
                                 appendTheRest(subject);
                                 EXPECT_EQ(subject.entries, expected);
                               }),
            10);
}

TEST(KeptEntries, areUnchangedWhenACopyRunsOutOfMemory) {
  WarpSharedEntries original;
  for (int count = 0; count < 1000; ++count) {
    original.append(fullEntry());
  }
  WarpSharedEntries before;
  before.append(entryOf("/before"));
  EXPECT_GT(
      failEachAllocation([&] { return before; }, [&](WarpSharedEntries& copy) { copy = original; },
                         [&](const WarpSharedEntries& copy, const Attempt& attempt) {
                           EXPECT_EQ(attempt.hasThrown, attempt.hasFailed);
                           EXPECT_EQ(copy, attempt.hasThrown ? before : original);
                         }),
      1);
}

}  // namespace
}  // namespace velmora::internal

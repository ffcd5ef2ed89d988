#include "json/RecordEncoding.h"
#include "tests/fakes/WarpRecords.h"
#include "tests/warpshared/RecordsAtTheirEnds.h"
#include "warpshared/records/FieldCodecs.h"
#include "warpshared/records/FieldLists.h"
#include "warpshared/records/WarpSharedEntries.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <optional>
#include <ranges>
#include <string>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

// As a user declares an entry before its use.
namespace velmora {
struct VelmoraWarpSharedEntry;
}  // namespace velmora

namespace velmora::internal {
namespace {

using Entry = VelmoraWarpSharedEntry;
using EntryView = WarpSharedEntry<TextView>;

/// The bytes of all fields of an entry.
template <class String>
std::string contentOf(const WarpSharedEntry<String>& entry) {
  return encoded(entry);
}

/// For each field in turn: entries with only this field at its minimum or maximum, and entries with
/// all fields except this one.
std::vector<Entry> entriesWithOneFieldAtAnEnd() {
  std::vector<Entry> entries;
  const auto addFor = [&entries](const auto& field) {
    for (const End end : {End::minimum, End::maximum}) {
      Entry& alone = entries.emplace_back();
      put(alone.*field.member, end);
      Entry& allBut = entries.emplace_back();
      put(allBut, end);
      allBut.*field.member = {};
    }
  };
  std::apply([&](const auto&... fields) { (addFor(fields), ...); }, RecordFields<Entry>::list);
  return entries;
}

WarpSharedEntries entriesAt(const std::vector<std::string>& paths) {
  WarpSharedEntries entries;
  for (const std::string& path : paths) {
    entries.append(entryOf(path));
  }
  return entries;
}

std::vector<std::string> pathsOf(const WarpSharedEntries& entries) {
  std::vector<std::string> paths;
  for (const auto& entry : entries) {
    paths.emplace_back(entry.relativePath.view());
  }
  return paths;
}

/// Whether neither the result of an expression of this type nor a field of it can be assigned to.
template <class Result>
constexpr bool isReadOnly() {
  const auto isFieldReadOnly = []<class Value>(const RecordField<EntryView, Value>&) {
    using Field = decltype((std::declval<Result>().*std::declval<Value EntryView::*>()));
    return !std::is_assignable_v<Field, Value>;
  };
  return !std::is_assignable_v<Result, EntryView> &&
         std::apply([&](const auto&... fields) { return (isFieldReadOnly(fields) && ...); },
                    RecordFields<EntryView>::list);
}

static_assert(isReadOnly<decltype(std::declval<WarpSharedEntries&>()[0])>());
static_assert(isReadOnly<decltype(*std::declval<WarpSharedEntries&>().begin())>());
static_assert(isReadOnly<decltype(std::declval<WarpSharedEntries&>().begin()[0])>());
static_assert(
    isReadOnly<decltype(*std::declval<WarpSharedEntryIterator::Pointer&>().operator->())>());
static_assert(!isReadOnly<EntryView&>());

static_assert(std::ranges::random_access_range<const WarpSharedEntries>);
static_assert(std::ranges::sized_range<const WarpSharedEntries>);

TEST(WarpSharedEntries, keepEveryFieldOfOwnedEntriesAndOfViews) {
  const std::vector<Entry> originals = entriesWithOneFieldAtAnEnd();
  WarpSharedEntries entries;
  WarpSharedEntries copies;
  for (const Entry& original : originals) {
    entries.append(original);
    copies.append(entries[entries.size() - 1]);
  }
  ASSERT_EQ(entries.size(), originals.size());
  EntryView scratch;
  for (std::size_t index = 0; index < originals.size(); ++index) {
    SCOPED_TRACE(index);
    const std::string content = contentOf(originals[index]);
    EXPECT_EQ(contentOf(entries[index]), content);
    EXPECT_EQ(contentOf(ownedEntry(entries[index])), content);
    EXPECT_EQ(contentOf(copies[index]), content);
    // The scratch entry must keep nothing of the earlier entry.
    entries.read(index, scratch);
    EXPECT_EQ(contentOf(scratch), content);
  }
}

TEST(WarpSharedEntries, distinguishAbsentFromEmpty) {
  WarpSharedEntries entries;
  Entry entry;
  entry.aclText = "";
  entry.multipartPartCount = 0;
  entry.hardLinkIdentity.emplace();
  entry.payloadParts = {{}, {}};
  entry.payloadParts[1].payloadNamespace = VelmoraPayloadNamespace::backup;
  entries.append(entry);
  EXPECT_EQ(entries[0].aclText, TextView());
  EXPECT_EQ(entries[0].symlinkTarget, std::nullopt);
  EXPECT_EQ(entries[0].multipartPartCount, 0);
  EXPECT_EQ(entries[0].multipartPartSizeBytes, std::nullopt);
  EXPECT_EQ(entries[0].hardLinkIdentity, VelmoraWarpSharedHardLinkIdentity());
  EXPECT_EQ(entries[0].payloadParts[0].payloadNamespace, std::nullopt);
  EXPECT_EQ(entries[0].payloadParts[1].payloadNamespace, VelmoraPayloadNamespace::backup);
}

// Lengths around the limits of their encoding and around whole chunks.
TEST(WarpSharedEntries, takeTextsOfAnyLength) {
  std::vector<std::string> paths;
  for (const std::size_t length :
       {std::size_t{0}, std::size_t{0xFF}, std::size_t{0x100}, std::size_t{0x1000},
        std::size_t{0x10000}, std::size_t{0x100000}, std::size_t{0x180000}}) {
    for (std::size_t distance = 0; distance <= 120; distance += distance < 3 ? 1 : 13) {
      paths.push_back(std::string(length, 'x') + std::string(distance, 'y'));
      paths.push_back(std::string(length - std::min(length, distance), 'z'));
    }
  }
  EXPECT_EQ(pathsOf(entriesAt(paths)), paths);
}

TEST(WarpSharedEntries, takeListsOfAnyLength) {
  WarpSharedEntries entries;
  const std::vector<std::size_t> lengths = {0, 1, 254, 255, 256, 70000};
  for (const std::size_t length : lengths) {
    Entry entry;
    entry.sparseExtents.resize(length, {.logicalOffset = 1, .storedOffset = 2, .length = 3});
    entry.extendedAttributes.resize(length, {.name = "n", .base64Value = "QQ=="});
    entries.append(entry);
    EXPECT_EQ(contentOf(entries[entries.size() - 1]), contentOf(entry));
  }
}

std::vector<std::string> manyPaths() {
  std::vector<std::string> paths;
  for (std::size_t number = 0; number < 20000; ++number) {
    paths.push_back('/' + std::to_string(number) + std::string(number % 300, 'x'));
  }
  return paths;
}

TEST(WarpSharedEntries, areFoundByTheirNumber) {
  const std::vector<std::string> paths = manyPaths();
  const WarpSharedEntries entries = entriesAt(paths);
  for (std::size_t step = 0; step < paths.size(); ++step) {
    const std::size_t index = step * 7919 % paths.size();
    EXPECT_EQ(entries[index].relativePath.view(), paths[index]);
  }
}

TEST(WarpSharedEntries, keepTheirAddressWhenOthersAreAppended) {
  WarpSharedEntries entries = entriesAt({"/first"});
  const EntryView first = entries[0];
  for (const std::string& path : manyPaths()) {
    entries.append(entryOf(path));
  }
  const WarpSharedEntries moved = std::move(entries);
  EXPECT_EQ(moved[0].relativePath.view().data(), first.relativePath.view().data());
  EXPECT_EQ(first.relativePath, "/first");
}

TEST(WarpSharedEntries, storeTheirOwnCopies) {
  WarpSharedEntries entries = entriesAt({"/a"});
  for (std::size_t index = 0; index < 5000; ++index) {
    entries.append(entries[index]);
  }
  EXPECT_EQ(pathsOf(entries), std::vector<std::string>(5001, "/a"));
}

TEST(WarpSharedEntries, copyTheirTexts) {
  const std::vector<std::string> paths = manyPaths();
  std::optional<WarpSharedEntries> original = entriesAt(paths);
  const WarpSharedEntries copy = *original;
  original.reset();
  EXPECT_EQ(pathsOf(copy), paths);
}

TEST(WarpSharedEntries, growIndependentlyOfTheirCopy) {
  WarpSharedEntries original = entriesAt({"/a"});
  WarpSharedEntries copy = entriesAt({"/x", "/y"});
  copy = original;
  original.append(entryOf("/original"));
  copy.append(entryOf("/copy"));
  EXPECT_EQ(pathsOf(original), (std::vector<std::string>{"/a", "/original"}));
  EXPECT_EQ(pathsOf(copy), (std::vector<std::string>{"/a", "/copy"}));
}

TEST(WarpSharedEntries, areEmptyAtFirstAndWhenCleared) {
  EXPECT_TRUE(WarpSharedEntries().empty());
  EXPECT_EQ(WarpSharedEntries().size(), 0);
  WarpSharedEntries entries = entriesAt({"/a", "/b"});
  entries.clear();
  EXPECT_TRUE(entries.empty());
  entries.append(entryOf("/c"));
  EXPECT_EQ(pathsOf(entries), std::vector<std::string>{"/c"});
}

TEST(WarpSharedEntries, areReusedForAnEntryLongerThanAllChunks) {
  WarpSharedEntries entries = entriesAt(manyPaths());
  entries.clear();
  const std::string path = '/' + std::string(3'000'000, 'x');
  entries.append(entryOf(path));
  entries.append(entryOf("/a"));
  EXPECT_EQ(pathsOf(entries), (std::vector<std::string>{path, "/a"}));
  EXPECT_EQ(pathsOf(WarpSharedEntries(entries)), pathsOf(entries));
}

TEST(WarpSharedEntries, arePassedOverInOrder) {
  const WarpSharedEntries none;
  EXPECT_EQ(none.begin(), none.end());
  const std::vector<std::string> paths = manyPaths();
  const WarpSharedEntries entries = entriesAt(paths);
  EXPECT_EQ(pathsOf(entries), paths);
  const auto found = std::ranges::find(entries, TextView(paths[7]), &EntryView::relativePath);
  EXPECT_EQ(found - entries.begin(), 7);
  EXPECT_EQ(found->relativePath, paths[7]);
  EXPECT_EQ(std::ranges::find(entries, TextView("/none"), &EntryView::relativePath), entries.end());
}

TEST(WarpSharedEntries, areReachedByEachStepOfAnIterator) {
  WarpSharedEntries entries = entriesAt({"/0", "/1", "/2"});
  const WarpSharedEntries::iterator begin = entries.begin();
  auto iterator = begin;
  EXPECT_EQ(iterator++, begin);
  EXPECT_EQ(iterator, begin + 1);
  EXPECT_EQ(++iterator, 2 + begin);
  EXPECT_EQ(iterator--, begin + 2);
  EXPECT_EQ(iterator, (begin + 2) - 1);
  EXPECT_EQ(--iterator, begin);
  EXPECT_EQ(begin[2].relativePath, "/2");
  EXPECT_EQ((iterator += 3), entries.end());
  EXPECT_EQ((iterator -= 2)->relativePath, "/1");
  EXPECT_LT(begin, iterator);
  EXPECT_EQ(entries.end() - begin, 3);
  entries.append(entryOf("/3"));
  EXPECT_EQ(begin[3].relativePath, "/3");
}

TEST(WarpSharedEntries, areEqualWithEqualEntriesInOrder) {
  const WarpSharedEntries entries = entriesAt({"/\u00e9", "/b"});
  EXPECT_EQ(entries, entriesAt({"/\u00e9", "/b"}));
  EXPECT_EQ(entries, entriesAt({"/e\u0301", "/b"}));
  EXPECT_NE(entries, entriesAt({"/b", "/\u00e9"}));
  EXPECT_NE(entries, entriesAt({"/\u00e9"}));
  EXPECT_NE(entries, entriesAt({"/\u00e9", "/B"}));
  EXPECT_NE(entriesAt({"/\u00e9"}), entries);
  EXPECT_NE(entries, WarpSharedEntries());
}

TEST(WarpSharedEntries, areEqualInAnyMemoryLayout) {
  const std::vector<std::string> paths = manyPaths();
  WarpSharedEntries copied = entriesAt({paths.begin(), paths.begin() + 5000});
  copied = WarpSharedEntries(copied);
  for (std::size_t index = 5000; index < paths.size(); ++index) {
    copied.append(entryOf(paths[index]));
  }
  EXPECT_EQ(copied, entriesAt(paths));
}

}  // namespace
}  // namespace velmora::internal

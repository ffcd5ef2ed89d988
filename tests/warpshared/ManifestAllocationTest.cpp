// Reading manifests allocates nothing for an entry, and survives each allocation that fails.

#include "platform/FileReader.h"
#include "tests/support/FailingAllocations.h"
#include "tests/warpshared/PlainManifests.h"
#include "warpshared/ManifestDecoding.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <memory>
#include <new>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace velmora {
namespace {

std::string numberedPath(std::size_t number) { return "/a/" + std::to_string(number); }

/// Entries with lists and escapes.
std::string manifestText(std::size_t count) {
  JSONTree entry = entryDocument("PATH");
  entry.erase("hardLinkIdentity");
  entry.erase("hardLinkPrimaryPath");
  entry["displayName"] = R"("with \"quotes\"")";
  const std::string text = entry.text();
  std::string manifest = plainManifestDocument({"ENTRIES"}).text();
  std::string entries;
  for (std::size_t number = 0; number < count; ++number) {
    entries += number == 0 ? "" : ",";
    entries += text;
    entries.replace(entries.rfind("PATH"), 4, numberedPath(number));
  }
  return manifest.replace(manifest.find("ENTRIES"), 7, entries);
}

/// Delivers a text as a file does.
class TextFile final : public FileReader {
 public:
  explicit TextFile(std::string text) : text_(std::move(text)) {}

  bool exists(std::string_view) const override { return true; }
  bool isDirectory(std::string_view) const override { return false; }
  std::vector<std::string> entryNames(std::string_view) const override { return {}; }
  std::string read(std::string_view, std::size_t) const override { return text_; }

  std::unique_ptr<FileContent> open(std::string_view, std::size_t) const override {
    return std::make_unique<Content>(text_);
  }

 private:
  class Content final : public FileContent {
   public:
    explicit Content(std::string_view text) : text_(text) {}

    std::size_t read(char* room, std::size_t size) override {
      const std::size_t count = text_.copy(room, size);
      text_.remove_prefix(count);
      return count;
    }

   private:
    std::string_view text_;
  };

  std::string text_;
};

std::size_t allocationsOfReading(std::size_t entryCount, ManifestDecoder& decoder) {
  const TextFile file(manifestText(entryCount));
  return allocationsOf(
      [&] { EXPECT_EQ(decoder.readSummary("/file", file).entryCount, entryCount); });
}

TEST(ManifestAllocations, areAsManyForManyEntriesAsForFewButForTheListOfHashes) {
  ManifestDecoder few;
  ManifestDecoder many;
  const std::size_t ofFew = allocationsOfReading(100, few);
  const std::size_t ofMany = allocationsOfReading(10'000, many);
  // The list doubles seven times more; then there are a list by groups and their ends.
  EXPECT_LE(ofMany, ofFew + 7 + 2);
  EXPECT_EQ(few.reconsideredCount() + many.reconsideredCount(), 0);
}

TEST(ManifestAllocations, areAsManyForManyEntriesAsForFewTheSecondTime) {
  ManifestDecoder decoder;
  allocationsOfReading(10'000, decoder);
  // Only of the groups' ends is nothing kept.
  EXPECT_EQ(allocationsOfReading(10'000, decoder), allocationsOfReading(100, decoder) + 1);
  EXPECT_EQ(decoder.reconsideredCount(), 0);
}

/// Lets memory run out at each allocation of `operation` in turn. It gets what `prepare` makes, and
/// so does `check` afterwards. Returns how many there are.
template <class Prepare, class Operation, class Check>
long failEachAllocation(MemoryShortage shortage, Prepare prepare, Operation operation,
                        Check check) {
  // simdjson ends a process that has no memory when it is used for the first time.
  auto first = prepare();
  operation(first);
  for (long number = 0;; ++number) {
    auto subject = prepare();
    bool hasThrown = false;
    failAllocations(number, shortage);
    try {
      operation(subject);
    } catch (const std::bad_alloc&) {
      hasThrown = true;
    }
    const bool hasFailed = letAllocationsSucceed();
    EXPECT_EQ(hasThrown, hasFailed) << number;
    check(subject);
    if (!hasFailed) {
      return number;
    }
  }
}

/// A manifest that everything is kept of: links, samples, escapes.
std::string richManifest() {
  return manifestDocument().text({"", JSONStyle::Order::asBuilt, true, true});
}

class FailedAllocations : public testing::TestWithParam<std::string> {
 protected:
  /// Whatever fails, the decoder can read this file and a smaller one afterwards.
  void expectDecoderToWork(MemoryShortage shortage, bool isNew) const {
    const TextFile small(plainManifestDocument().text());
    const TextFile file(GetParam());
    const ManifestSummary summary = ManifestDecoder().readSummary("/file", file);
    const long count = failEachAllocation(
        shortage,
        [&] {
          ManifestDecoder decoder;
          EXPECT_TRUE(isNew || decoder.readSummary("/file", small).entryCount == 0);
          return decoder;
        },
        [&](ManifestDecoder& decoder) { static_cast<void>(decoder.read("/file", file)); },
        [&](ManifestDecoder& decoder) {
          EXPECT_EQ(decoder.readSummary("/file", small).entryCount, 0);
          EXPECT_EQ(decoder.readSummary("/file", file), summary);
        });
    EXPECT_GT(count, 10);
  }
};

TEST_P(FailedAllocations, leaveANewDecoderThatWorks) {
  expectDecoderToWork(MemoryShortage::once, true);
  expectDecoderToWork(MemoryShortage::forGood, true);
}

TEST_P(FailedAllocations, leaveAnOldDecoderThatWorks) {
  expectDecoderToWork(MemoryShortage::once, false);
  expectDecoderToWork(MemoryShortage::forGood, false);
}

INSTANTIATE_TEST_SUITE_P(Documents, FailedAllocations,
                         testing::Values(richManifest(),
                                         "{\"more\":1," + richManifest().substr(1)));

TEST(FailedAllocationsOfManyEntries, leaveADecoderThatWorks) {
  // So many that their hashes are looked at in groups, and of more than one piece.
  constexpr std::size_t count = 1100;
  const TextFile file(plainManifestText(count, numberedPath));
  failEachAllocation(
      MemoryShortage::once, [] { return ManifestDecoder(); },
      [&](ManifestDecoder& decoder) { static_cast<void>(decoder.readSummary("/file", file)); },
      [&](ManifestDecoder& decoder) {
        EXPECT_EQ(decoder.readSummary("/file", file).entryCount, count);
      });
}

TEST(FailedAllocationsInMemory, leaveTheDocumentToTheNextAttempt) {
  const std::string text = richManifest();
  std::string bytes = text;
  failEachAllocation(
      MemoryShortage::once, [] { return std::pair<PieceMemory, QuickManifestReader>(); },
      [&](auto& subject) {
        DocumentPieces pieces(bytes, subject.first, 500);
        EXPECT_TRUE(subject.second.read(pieces, [](const auto&) {}).has_value());
      },
      [&](auto& subject) {
        EXPECT_EQ(bytes, text);
        DocumentPieces pieces(bytes, subject.first, 500);
        EXPECT_TRUE(subject.second.read(pieces, [](const auto&) {}).has_value());
      });
}

}  // namespace
}  // namespace velmora

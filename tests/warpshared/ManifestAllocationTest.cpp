// Reading a manifest allocates nothing per entry, and survives each failed allocation.

#include "json/streaming/ChunkedDocument.h"
#include "platform/FileReader.h"
#include "tests/support/FailingAllocations.h"
#include "tests/warpshared/PlainManifests.h"
#include "tests/warpshared/WholeReadCounter.h"
#include "warpshared/reading/ManifestDecoding.h"
#include "warpshared/reading/StreamingManifestReader.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace velmora::internal {
namespace {

std::string numberedPath(std::size_t number) { return "/a/" + std::to_string(number); }

/// A manifest whose entries have lists and escapes.
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

/// Delivers a text as a file.
class TextFile final : public FileReader {
 public:
  explicit TextFile(std::string text) : text_(std::move(text)) {}

  bool exists(std::string_view) const override { return true; }
  bool isDirectory(std::string_view) const override { return false; }
  std::vector<std::string> entryNames(std::string_view, std::size_t) const override { return {}; }
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
  const WholeReadCounter files(file);
  const std::size_t count =
      allocationsOf([&] { EXPECT_EQ(decoder.readSummary("/file", files).entryCount, entryCount); });
  EXPECT_EQ(files.count(), 0);
  return count;
}

TEST(ManifestAllocations, areIndependentOfTheEntryCountExceptForTheHashes) {
  ManifestDecoder few;
  ManifestDecoder many;
  const std::size_t ofFew = allocationsOfReading(100, few);
  const std::size_t ofMany = allocationsOfReading(3000, many);
  // The list of hashes doubles five more times. Two further lists hold the groups and their ends.
  EXPECT_LE(ofMany, ofFew + 5 + 2);
}

TEST(ManifestAllocations, areIndependentOfTheEntryCountTheSecondTime) {
  ManifestDecoder decoder;
  allocationsOfReading(3000, decoder);
  // Only the list of the groups' ends is allocated each time.
  EXPECT_EQ(allocationsOfReading(3000, decoder), allocationsOfReading(100, decoder) + 1);
}

/// A manifest of which the reader keeps everything: links, samples, escapes.
std::string richManifest() {
  return manifestDocument().text({"", JSONStyle::Order::asBuilt, true, true});
}

/// Expects that the decoder can read this file and a smaller one after each failure.
void expectUsableDecoder(const TextFile& file, bool isNew) {
  const TextFile small(plainManifestDocument().text());
  const ManifestSummary summary = ManifestDecoder().readSummary("/file", file);
  const long count = failEachAllocation(
      [&] {
        auto decoder = std::make_unique<ManifestDecoder>();
        EXPECT_TRUE(isNew || decoder->readSummary("/file", small).entryCount == 0);
        return decoder;
      },
      [&](const auto& decoder) { static_cast<void>(decoder->read("/file", file)); },
      [&](const auto& decoder, const Attempt& attempt) {
        EXPECT_EQ(attempt.hasThrown, attempt.hasFailed);
        EXPECT_EQ(decoder->readSummary("/file", small).entryCount, 0);
        EXPECT_EQ(decoder->readSummary("/file", file), summary);
      });
  EXPECT_GT(count, 10);
}

TEST(FailedAllocations, leaveAUsableDecoder) {
  for (const std::string& text :
       {richManifest(), "{\"more\":[" + std::string(2 * documentChunkLength, ' ') + "]," +
                            richManifest().substr(1)}) {
    for (const bool isNew : {true, false}) {
      SCOPED_TRACE(text.substr(0, 20) + (isNew ? " for a new one" : " for an old one"));
      expectUsableDecoder(TextFile(text), isNew);
    }
  }
}

TEST(FailedAllocations, leaveAUsableDecoderAfterManyEntries) {
  // So many entries that their hashes are grouped and that they need several chunks.
  constexpr std::size_t count = 1100;
  const TextFile file(plainManifestText(count, numberedPath));
  failEachAllocation(
      [] { return ManifestDecoder(); },
      [&](ManifestDecoder& decoder) { static_cast<void>(decoder.readSummary("/file", file)); },
      [&](ManifestDecoder& decoder, const Attempt& attempt) {
        EXPECT_EQ(attempt.hasThrown, attempt.hasFailed);
        EXPECT_EQ(decoder.readSummary("/file", file).entryCount, count);
      });
}

TEST(FailedAllocations, restoreADocumentInMemory) {
  const std::string text = richManifest();
  std::string bytes = text;
  const auto read = [&](std::pair<ChunkBuffer, StreamingManifestReader>& subject) {
    const auto open = [&] { return std::make_unique<ChunkedDocument>(bytes, subject.first, 500); };
    const ManifestVisitor visitor = {
        .begin = [] {}, .sample = [](TextView) {}, .entry = [](const auto&) {}};
    EXPECT_TRUE(subject.second.read(open, visitor).has_value());
  };
  failEachAllocation([] { return std::pair<ChunkBuffer, StreamingManifestReader>(); }, read,
                     [&](auto& subject, const Attempt& attempt) {
                       EXPECT_EQ(attempt.hasThrown, attempt.hasFailed);
                       EXPECT_EQ(bytes, text);
                       read(subject);
                     });
}

}  // namespace
}  // namespace velmora::internal

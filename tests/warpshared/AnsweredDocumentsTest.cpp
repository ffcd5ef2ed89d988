// Documents whose answers were worked out independently of this code.

#include "json/DecodingError.h"
#include "json/JSONWriting.h"
#include "json/strict/JSONReader.h"
#include "platform/PlatformError.h"
#include "tests/support/AnsweredDocuments.h"
#include "tests/support/JSONRewriting.h"
#include "tests/warpshared/ManifestReadings.h"
#include "warpshared/reading/DestroyedManifestIndexDecoding.h"
#include "warpshared/reading/ManifestDecoding.h"
#include "warpshared/writing/ManifestEncoding.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <string_view>

namespace velmora::internal {
namespace {

std::string answerOf(const ManifestSummary& manifest) {
  const auto quoted = [](std::string_view text) {
    std::string json;
    appendJSONString(json, text);
    return json;
  };
  const auto seconds = static_cast<std::int64_t>(manifest.createdAt.secondsSinceReferenceDate);
  return "{\"createdAt\":" + std::to_string(seconds) +
         ",\"entries\":" + std::to_string(manifest.entryCount) +
         ",\"manifestKey\":" + quoted(manifest.manifestKey) +
         ",\"originalFolderPath\":" + quoted(manifest.originalFolderPath) +
         ",\"samples\":" + std::to_string(manifest.sampleCount) +
         ",\"status\":" + quoted(rawValue(manifest.status)) +
         ",\"warpID\":" + quoted(manifest.warpID) + '}';
}

/// Decodes a document and compares its answer, or those parts of the error that the row has.
template <class Decoding>
void expectAnswer(const AnsweredDocument& document, Decoding decoding) {
  const DocumentError* const expected = document.error();
  try {
    const std::string answer = decoding(document.bytes);
    ASSERT_NE(document.okJSON(), nullptr) << document.name;
    EXPECT_EQ(answer, *document.okJSON()) << document.name;
  } catch (const DecodingError& error) {
    ASSERT_NE(expected, nullptr) << document.name << ": " << error.what();
    EXPECT_EQ(name(error.kind()), expected->kind) << document.name;
    EXPECT_EQ(error.codingPath(), expected->codingPath) << document.name;
    EXPECT_EQ(error.what(), expected->text.value_or(error.what())) << document.name;
  } catch (const PlatformError&) {
    ASSERT_NE(expected, nullptr) << document.name;
    EXPECT_EQ(expected->kind, "corruptFile") << document.name;
  }
}

TEST(AnsweredDocuments, ofManifestsHaveTheirAnswersAndReadBackWhenEncoded) {
  const auto documents = readAnsweredDocuments("warpshared/manifest.jsonl");
  EXPECT_EQ(documents.size(), 2637);
  std::size_t validCount = 0;
  ManifestDecoder decoder;
  for (const AnsweredDocument& document : documents) {
    expectAnswer(document,
                 [&](std::string bytes) { return answerOf(decoder.decodeSummary(bytes)); });
    if (document.okJSON() != nullptr) {
      std::string bytes = document.bytes;
      const VelmoraWarpSharedManifest manifest = decoder.decode(bytes);
      std::string encoded = encodeManifest(manifest);
      EXPECT_EQ(decoder.decode(encoded), manifest) << document.name;
      ++validCount;
    }
  }
  EXPECT_EQ(validCount, 594);
}

std::string answerToIndex(std::string bytes) {
  const VelmoraWarpSharedDestroyedManifestIndex index = decodeDestroyedManifestIndex(bytes);
  validateDestroyedManifestIndex(index);
  return "{\"records\":" + std::to_string(index.records.size()) + '}';
}

TEST(AnsweredDocuments, ofIndexesHaveTheirAnswers) {
  const auto documents = readAnsweredDocuments("warpshared/index.jsonl");
  EXPECT_EQ(documents.size(), 209);
  for (const AnsweredDocument& document : documents) {
    expectAnswer(document, answerToIndex);
  }
}

/// The content of a document, whatever its layout and the order of its keys.
std::string contentOf(std::string document) {
  JSONReader reader;
  return rewritten(reader.read(document), {.isSorted = true});
}

// The JSON encoder of the application's platform wrote these documents, in all its forms and from
// hostile texts and extreme numbers.
TEST(WrittenDocuments, ofManifestsKeepTheirContentInBothReaders) {
  const auto documents = readAnsweredDocuments("warpshared/writtenManifest.jsonl");
  EXPECT_EQ(documents.size(), 72);
  ManifestDecoder decoder;
  ManifestReaders readers;
  for (const AnsweredDocument& document : documents) {
    SCOPED_TRACE(document.name);
    expectAnswer(document,
                 [&](std::string bytes) { return answerOf(decoder.decodeSummary(bytes)); });
    std::string bytes = document.bytes;
    const ManifestReading streamed = readers.streamed(bytes, 500);
    const ManifestReading diagnosed = readers.diagnosed(bytes);
    ASSERT_TRUE(diagnosed.has_value());
    EXPECT_EQ(contentOf(*diagnosed), contentOf(bytes));
    EXPECT_EQ(streamed, diagnosed);
    std::string again = *diagnosed;
    EXPECT_EQ(decoder.decode(again), decoder.decode(bytes));
  }
}

TEST(WrittenDocuments, ofIndexesKeepTheirContent) {
  const auto documents = readAnsweredDocuments("warpshared/writtenIndex.jsonl");
  EXPECT_EQ(documents.size(), 36);
  for (const AnsweredDocument& document : documents) {
    SCOPED_TRACE(document.name);
    expectAnswer(document, answerToIndex);
    std::string bytes = document.bytes;
    const VelmoraWarpSharedDestroyedManifestIndex index = decodeDestroyedManifestIndex(bytes);
    std::string again = encodeDestroyedManifestIndex(index);
    EXPECT_EQ(contentOf(again), contentOf(document.bytes));
    EXPECT_EQ(decodeDestroyedManifestIndex(again), index);
  }
}

}  // namespace
}  // namespace velmora::internal

// Documents whose answers were worked out independently of this code.

#include "json/DecodingError.h"
#include "json/JSONWriting.h"
#include "platform/PlatformError.h"
#include "tests/support/AnsweredDocuments.h"
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

TEST(AnsweredDocuments, ofIndexesHaveTheirAnswers) {
  const auto documents = readAnsweredDocuments("warpshared/index.jsonl");
  EXPECT_EQ(documents.size(), 209);
  for (const AnsweredDocument& document : documents) {
    expectAnswer(document, [](std::string bytes) {
      const VelmoraWarpSharedDestroyedManifestIndex index = decodeDestroyedManifestIndex(bytes);
      validateDestroyedManifestIndex(index);
      return "{\"records\":" + std::to_string(index.records.size()) + '}';
    });
  }
}

}  // namespace
}  // namespace velmora::internal

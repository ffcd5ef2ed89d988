// Documents with their answers, worked out by another reader of the same rules.

#include "json/JSONWriting.h"
#include "platform/PlatformError.h"
#include "tests/support/AnsweredDocuments.h"
#include "tests/warpshared/SharedWarpDocuments.h"
#include "warpshared/DestroyedManifestIndex.h"
#include "warpshared/ManifestDecoding.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace velmora {
namespace {

/// Puts together one JSON object.
class ObjectText {
 public:
  ObjectText& add(std::string_view key, std::string_view value) {
    addKey(key);
    appendJSONString(json_, value);
    return *this;
  }

  ObjectText& add(std::string_view key, std::int64_t value) {
    addKey(key);
    json_ += std::to_string(value);
    return *this;
  }

  std::string text() const { return json_ + '}'; }

 private:
  void addKey(std::string_view key) {
    json_ += json_.empty() ? '{' : ',';
    appendJSONString(json_, key);
    json_ += ':';
  }

  std::string json_;
};

std::string answerOf(const ManifestSummary& manifest) {
  return ObjectText()
      .add("createdAt", static_cast<std::int64_t>(manifest.createdAt.secondsSinceReferenceDate))
      .add("entries", static_cast<std::int64_t>(manifest.entryCount))
      .add("manifestKey", manifest.manifestKey)
      .add("originalFolderPath", manifest.originalFolderPath)
      .add("samples", static_cast<std::int64_t>(manifest.sampleCount))
      .add("status", rawValue(manifest.status))
      .add("warpID", manifest.warpID)
      .text();
}

/// Decodes a document and compares its answer, or its error as far as that is told.
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

TEST(AnsweredDocuments, ofManifestsGetTheirAnswers) {
  const auto documents = readAnsweredDocuments("warpshared/manifest.jsonl");
  EXPECT_EQ(documents.size(), 2637);
  ManifestDecoder decoder;
  for (const AnsweredDocument& document : documents) {
    expectAnswer(document,
                 [&](std::string bytes) { return answerOf(decoder.decodeSummary(bytes)); });
  }
}

TEST(AnsweredDocuments, ofManifestsDecodeToWhatWasEncoded) {
  std::size_t count = 0;
  ManifestDecoder decoder;
  for (AnsweredDocument& document : readAnsweredDocuments("warpshared/manifest.jsonl")) {
    if (document.okJSON() != nullptr) {
      const VelmoraWarpSharedManifest manifest = decoder.decode(document.bytes);
      std::string encoded = encodeManifest(manifest);
      EXPECT_EQ(decoder.decode(encoded), manifest) << document.name;
      ++count;
    }
  }
  EXPECT_EQ(count, 594);
}

TEST(AnsweredDocuments, ofIndexesGetTheirAnswers) {
  const auto documents = readAnsweredDocuments("warpshared/index.jsonl");
  EXPECT_EQ(documents.size(), 209);
  for (const AnsweredDocument& document : documents) {
    expectAnswer(document, [](std::string bytes) {
      const VelmoraWarpSharedDestroyedManifestIndex index = decodeDestroyedManifestIndex(bytes);
      validateDestroyedManifestIndex(index);
      return ObjectText().add("records", static_cast<std::int64_t>(index.records.size())).text();
    });
  }
}

}  // namespace
}  // namespace velmora

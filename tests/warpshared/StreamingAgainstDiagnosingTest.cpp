// Both readers accept the same manifests, and read the same content.

#include "json/strict/JSONReader.h"
#include "tests/support/AnsweredDocuments.h"
#include "tests/support/JSONRewriting.h"
#include "tests/warpshared/ManifestReadings.h"
#include "tests/warpshared/PlainManifests.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <random>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace velmora::internal {
namespace {

/// Compares the results of both readers, and counts them.
class Comparison {
 public:
  void compare(const std::string& document, std::size_t chunkLength, std::size_t portion) {
    ++comparedCount;
    std::string bytes = document;
    const ManifestReading streamed = readers_.streamed(bytes, chunkLength);
    ASSERT_EQ(bytes, document);
    ASSERT_EQ(readers_.streamedInPortions(document, portion, chunkLength), streamed) << document;
    const ManifestReading diagnosed = readers_.diagnosed(document);
    ASSERT_EQ(streamed, diagnosed) << document;
    validCount += diagnosed.has_value() ? 1 : 0;
  }

  std::size_t comparedCount = 0;
  std::size_t validCount = 0;

 private:
  ManifestReaders readers_;
};

TEST(StreamingAgainstDiagnosing, agreesOnAnsweredDocuments) {
  Comparison comparison;
  std::size_t chunkLength = 1;
  for (const AnsweredDocument& document : readAnsweredDocuments("warpshared/manifest.jsonl")) {
    comparison.compare(document.bytes, chunkLength, 1 + chunkLength % 13);
    chunkLength = chunkLength % 300 + 1;
  }
  EXPECT_EQ(comparison.comparedCount, 2637);
  EXPECT_EQ(comparison.validCount, 594);
}

/// Parts of documents, and texts that resemble them.
std::vector<std::string> wordsOfDocuments() {
  std::istringstream text(
      R"(null true [] {} "" 0 -1 1.5 1e2 -0 18446744073709551616 9223372036854775808 },{ ": "," )"
      R"(\u0000 \" \\ \/ \n \ud834 /../ // , x )"
      "\u0301 \u00e9 e\u0301 \xFF \n \r\n");
  std::vector<std::string> words;
  for (std::string word; std::getline(text, word, ' ');) {
    words.push_back(word);
  }
  return words;
}

/// Small random changes to a document.
class Mutations {
 public:
  explicit Mutations(std::uint64_t seed) : random_(seed) {}

  std::size_t below(std::size_t limit) { return random_() % limit; }

  void mutate(std::string& document) {
    for (std::size_t count = 1 + below(3) / 2; count > 0; --count) {
      change(document);
    }
  }

 private:
  void change(std::string& document) {
    constexpr std::string_view bytes = "{}[]:,\"\\/ \n\t\r\f01239.-eEtfnau";
    const std::size_t place = below(document.size());
    switch (below(6)) {
      case 0:
        document.erase(place, 1 + below(4));
        break;
      case 1:
        document[place] = bytes[below(bytes.size())];
        break;
      case 2:
        document.insert(place, 1, bytes[below(bytes.size())]);
        break;
      case 3:
        document.insert(place, words_[below(words_.size())]);
        break;
      case 4:
        changeDigit(document, place);
        break;
      default:
        document.insert(below(document.size()), document.substr(place, below(40)));
        break;
    }
  }

  /// Most likely leaves the document valid.
  void changeDigit(std::string& document, std::size_t place) {
    const std::size_t digit = document.find_first_of("0123456789", place);
    if (digit != std::string::npos) {
      document[digit] = static_cast<char>('0' + below(10));
    }
  }

  std::mt19937_64 random_;
  const std::vector<std::string> words_ = wordsOfDocuments();
};

std::vector<std::string> validManifests() {
  const JSONTree plain =
      plainManifestDocument({plainEntryDocument("/a/x"), plainEntryDocument("/a/y")});
  std::vector<std::string> documents;
  for (const JSONStyle& style : jsonStyles) {
    documents.push_back(manifestDocument().text(style));
    documents.push_back(plain.text(style));
    documents.push_back(plainManifestDocument().text(style));
  }
  for (const std::uint64_t seed : {1U, 2U}) {
    std::string text = plain.text();
    JSONReader reader;
    const JSONValue value = reader.read(text);
    documents.push_back(rewritten(
        value, {.isSpacious = seed == 1, .slashes = SlashStyle::escaped, .shuffleSeed = seed}));
  }
  return documents;
}

TEST(StreamingAgainstDiagnosing, agreesOnFaultyManifests) {
  const std::vector<std::string> manifests = validManifests();
  Mutations mutations(1);
  Comparison comparison;
  for (int count = 0; count < 4000; ++count) {
    std::string document = manifests[mutations.below(manifests.size())];
    mutations.mutate(document);
    comparison.compare(document, 1 + mutations.below(300), 1 + mutations.below(100));
    if (HasFatalFailure()) {
      return;
    }
  }
  EXPECT_GT(comparison.validCount, 400);
}

TEST(StreamingAgainstDiagnosing, agreesOnValidManifests) {
  Comparison comparison;
  for (const std::string& document : validManifests()) {
    comparison.compare(document, 100, 7);
  }
  EXPECT_EQ(comparison.validCount, comparison.comparedCount);
}

}  // namespace
}  // namespace velmora::internal

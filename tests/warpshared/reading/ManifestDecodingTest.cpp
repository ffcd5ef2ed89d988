#include "tests/warpshared/ManifestCases.h"
#include "tests/warpshared/PlainManifests.h"
#include "warpshared/reading/ManifestDecoding.h"
#include "warpshared/writing/ManifestEncoding.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <random>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace velmora::internal {
namespace {

TEST(ManifestDecoding, readsEveryField) {
  const VelmoraWarpSharedManifest manifest = decodedManifest(manifestDocument().text());
  EXPECT_EQ(manifest.version, 4);
  EXPECT_EQ(manifest.warpID, "W-1");
  EXPECT_EQ(manifest.id(), "W-1");
  EXPECT_EQ(manifest.deviceID, "D-1");
  EXPECT_EQ(manifest.manifestKey, "manifests/W-1.json");
  EXPECT_EQ(manifest.originalFolderPath, "/Users/a/Docs");
  EXPECT_EQ(manifest.displayName, "Docs");
  EXPECT_EQ(manifest.createdAt.secondsSinceReferenceDate, 762523200);
  EXPECT_EQ(manifest.uploadedAt.value().secondsSinceReferenceDate, 762519900);
  EXPECT_EQ(manifest.replacedAt.value().secondsSinceReferenceDate, 762566400);
  EXPECT_EQ(manifest.status, VelmoraWarpSharedStatus::needsAttention);
  EXPECT_EQ(manifest.failureDescription, "no network");
  EXPECT_EQ(manifest.verificationSampleRelativePaths,
            (std::vector<Text>{"/Users/a/Docs/file", "/Users/a/Docs"}));
  EXPECT_EQ(manifest.rootMetadata.relativePath, "/Users/a/Docs");
  ASSERT_EQ(manifest.entries.size(), 2);
  EXPECT_EQ(manifest.entries[0].relativePath, "/Users/a/Docs/file");
  EXPECT_EQ(manifest.entries[0].hardLinkPrimaryPath, "/Users/a/Docs/primary");
  EXPECT_EQ(manifest.entries[1].relativePath, "/Users/a/Docs/primary");
  EXPECT_EQ(manifest.entries[1].hardLinkPrimaryPath, std::nullopt);
}

TEST(ManifestDecoding, ignoresOtherKeysAndTakesTheFirstOfDuplicateOnes) {
  const std::vector<Edit> otherKeys = {{"/+Version", "'other'"},
                                       {"/+later", "{'version':[1e999,null]}"},
                                       {"/entries/0/+relativePath", "7"}};
  const std::vector<Edit> duplicates = {
      {"/+version", "3"}, {"/entries/0/+size", "-1"}, {"/entries/0/hardLinkIdentity/+inode", "{}"}};
  for (const std::vector<Edit>& edits : {otherKeys, duplicates}) {
    JSONTree document = manifestDocument();
    for (const Edit& edit : edits) {
      document.change(edit.path, edit.json);
    }
    EXPECT_EQ(decodedManifest(document.text()), decodedManifest(manifestDocument().text()));
  }
}

TEST(ManifestDecoding, readsTheWholeDocumentBeforeAnyField) {
  struct {
    const char* document;
    std::string_view verdict;
  } const rows[] = {
      {"", "dataCorrupted at : The document is empty."},
      {"null", "valueNotFound at : Expected an object but found null."},
      {"[4]", "typeMismatch at : Expected an object but found an array."},
      {R"({"version":3,"x":[1,]})", "dataCorrupted at : Expected a value."},
      {R"({"version":3} x)", "dataCorrupted at : Something follows the document's value."},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(verdictOf([&] { static_cast<void>(decodedManifest(row.document)); }), row.verdict);
  }
}

TEST(ManifestDecoding, raisesTheFaultWithItsPlace) {
  const std::string document = manifestDocument().text({"", JSONStyle::Order::sorted, true, true});
  std::string changed = document;
  const std::size_t offset = changed.rfind("\"file\"");
  changed.replace(offset, 6, "\"fILE\"");
  try {
    static_cast<void>(decodedManifest(changed));
    FAIL() << "nothing was raised";
  } catch (const DecodingError& error) {
    EXPECT_EQ(error.byteOffset(), offset);
  }
}

// In quadratic time, this test would not end.
TEST(ManifestDecoding, isNotQuadraticForPathsBesideALongFolder) {
  constexpr int count = 2000;
  std::string folder = "'/e";
  for (int mark = 0; mark < count * 250; ++mark) {
    folder += "\u0301";
  }
  folder += '\'';
  JSONTree document = plainManifestDocument();
  document["originalFolderPath"] = folder;
  document["rootMetadata"]["absolutePath"] = folder;
  for (int number = 0; number < count; ++number) {
    document["entries"].members().emplace_back(
        "", plainEntryDocument("/\u00e9" + std::to_string(number)));
  }
  std::string bytes = document.text();
  EXPECT_EQ(verdictOf([&] { static_cast<void>(ManifestDecoder().decodeSummary(bytes)); }),
            inconsistent);
}

TEST(ManifestDecoding, takesManyEntries) {
  const auto path = [](int number) { return "/Users/a/Docs/" + std::to_string(number); };
  JSONTree document = manifestDocument();
  document["entries"].members().clear();
  for (int number = 0; number < 500; ++number) {
    JSONTree entry = entryDocument(path(number));
    entry["hardLinkPrimaryPath"] = '\'' + path(499 - number) + '\'';
    document["entries"].members().emplace_back("", std::move(entry));
  }
  EXPECT_EQ(decodedManifest(document.text()).entries.size(), 500);
  document.change("/entries/499/absolutePath", '\'' + path(0) + '\'');
  EXPECT_EQ(verdictOf([&] { static_cast<void>(decodedManifest(document.text())); }), inconsistent);
}

/// A name of each kind, as JSON text.
const std::vector<std::string> names = {
    "plain",           R"(with \'quotes\')", R"(back\\slash)", R"(line\nbreak\ttab\u0001)",
    "caf\u00e9",       "nai\u0308ve",        "\u65e5\u672c",   "\U0001F600",
    R"(\ud83d\ude01)", R"(},{\'b\':[1]},{)", "a:b,c",          std::string(300, 'x')};

/// A manifest as the application writes it, with names of all kinds. Some of its optional fields
/// are absent.
JSONTree manyNamesDocument(std::mt19937_64& random) {
  JSONTree document = manifestDocument();
  JSONTree::Array entries;
  for (const std::string& name : names) {
    JSONTree entry = entryDocument("/Users/a/Docs/" + name);
    entry["displayName"] = '\'' + name + '\'';
    entry["aclText"] = '\'' + name + name + '\'';
    entry.erase("hardLinkPrimaryPath");
    for (const char* key : {"birthTimeNanoseconds", "aclText", "symlinkTarget", "payloadKey",
                            "contentChecksumSHA256", "hardLinkIdentity"}) {
      if (random() % 3 == 0) {
        entry[key] = "null";
      } else if (random() % 2 == 0) {
        entry.erase(key);
      }
    }
    entries.push_back(std::move(entry));
  }
  document["entries"] = std::move(entries);
  document["displayName"] = '\'' + names[random() % names.size()] + '\'';
  return document;
}

void shuffleMembers(JSONTree& tree, std::mt19937_64& random) {
  std::ranges::shuffle(tree.members(), random);
}

TEST(ManifestDecoding, readsTheApplicationsManifestsOnce) {
  std::mt19937_64 random(1);
  ManifestReaders readers;
  ManifestDecoder decoder;
  for (int round = 0; round < 30; ++round) {
    JSONTree document = round == 0 ? manifestDocument() : manyNamesDocument(random);
    if (round % 3 == 2) {
      shuffleMembers(document, random);
      shuffleMembers(document["rootMetadata"], random);
      for (auto& [key, entry] : document["entries"].members()) {
        shuffleMembers(entry, random);
      }
    }
    for (JSONStyle style : jsonStyles) {
      for (const bool escapesSlashes : {false, true}) {
        style.escapesSlashes = escapesSlashes;
        std::string bytes = document.text(style);
        const ManifestSummary summary = decoder.decodeSummary(bytes);
        EXPECT_EQ(summary.entryCount, document["entries"].members().size());
        bytes = document.text(style);
        ASSERT_TRUE(readers.streamed(bytes).has_value()) << bytes;
      }
    }
  }
}

TEST(ManifestDecoding, readsItsOwnManifestsOnce) {
  std::mt19937_64 random(2);
  ManifestReaders readers;
  ManifestDecoder decoder;
  for (int round = 0; round < 10; ++round) {
    std::string bytes = manyNamesDocument(random).text();
    const VelmoraWarpSharedManifest manifest = decoder.decode(bytes);
    bytes = encodeManifest(manifest);
    EXPECT_TRUE(readers.streamed(bytes).has_value());
    EXPECT_EQ(decoder.decode(bytes), manifest);
  }
}

}  // namespace
}  // namespace velmora::internal

#include "tests/support/RowName.h"
#include "tests/warpshared/SharedWarpDocuments.h"
#include "warpshared/ManifestDecoding.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <functional>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace velmora {
namespace {

VelmoraWarpSharedManifest decodeManifest(std::string bytes) {
  return ManifestDecoder().decode(bytes);
}

/// What decoding says, which is the same with and without keeping the entries, in every style.
Verdict verdictOnManifest(const JSONTree& document) {
  ManifestDecoder decoder;
  std::string bytes = document.text();
  const Verdict verdict = verdictOf([&] { static_cast<void>(decoder.decode(bytes)); });
  for (const JSONStyle& style : jsonStyles) {
    bytes = document.text(style);
    EXPECT_EQ(verdictOf([&] { static_cast<void>(decoder.decodeSummary(bytes)); }), verdict)
        << style.name;
  }
  return verdict;
}

TEST(ManifestDecoding, readsEveryField) {
  const VelmoraWarpSharedManifest manifest = decodeManifest(manifestDocument().text());
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

TEST(ManifestDecoding, sumsUpWhatItRead) {
  std::string bytes = manifestDocument().text();
  const ManifestSummary summary = ManifestDecoder().decodeSummary(bytes);
  EXPECT_EQ(summary.warpID, "W-1");
  EXPECT_EQ(summary.manifestKey, "manifests/W-1.json");
  EXPECT_EQ(summary.originalFolderPath, "/Users/a/Docs");
  EXPECT_EQ(summary.createdAt.secondsSinceReferenceDate, 762523200);
  EXPECT_EQ(summary.status, VelmoraWarpSharedStatus::needsAttention);
  EXPECT_EQ(summary.entryCount, 2);
  EXPECT_EQ(summary.sampleCount, 2);
}

TEST(ManifestDecoding, givesTheSameValueInEveryStyle) {
  const VelmoraWarpSharedManifest manifest = decodeManifest(manifestDocument().text());
  for (const JSONStyle& style : jsonStyles) {
    EXPECT_EQ(decodeManifest(manifestDocument().text(style)), manifest) << style.name;
  }
}

TEST(ManifestDecoding, readsOneManifestAfterTheOther) {
  ManifestDecoder decoder;
  std::string good = manifestDocument().text();
  std::string bad = good;
  std::string broken = "{";
  static_cast<void>(decoder.decodeSummary(good));
  bad.replace(bad.find("\"version\":4"), 11, "\"version\":3");
  EXPECT_THROW(static_cast<void>(decoder.decodeSummary(bad)), DecodingError);
  EXPECT_THROW(static_cast<void>(decoder.decodeSummary(broken)), DecodingError);
  // The paths of the first time are forgotten: they do not count as listed twice.
  good = manifestDocument().text();
  EXPECT_EQ(decoder.decode(good), decodeManifest(manifestDocument().text()));
}

TEST(ManifestDecoding, ignoresOtherKeys) {
  JSONTree document = manifestDocument();
  document.members().insert(document.members().begin(), {"Version", "\"other\""});
  document.members().emplace_back("later", "{\"version\":[1e999,null]}");
  document["entries"][0].members().emplace_back("relativePath", "7");
  EXPECT_EQ(decodeManifest(document.text()), decodeManifest(manifestDocument().text()));
}

TEST(ManifestDecoding, takesTheFirstOfDuplicateKeys) {
  JSONTree document = manifestDocument();
  document.members().emplace_back("version", "3");
  document["entries"][0].members().emplace_back("size", "-1");
  document["entries"][0]["hardLinkIdentity"].members().emplace_back("inode", "{}");
  EXPECT_EQ(decodeManifest(document.text()), decodeManifest(manifestDocument().text()));
}

struct ManifestCase {
  const char* name;
  std::function<void(JSONTree&)> change;
  Verdict verdict = valid;
};

class ManifestRules : public testing::TestWithParam<ManifestCase> {};

TEST_P(ManifestRules, acceptOrRefuse) {
  JSONTree document = manifestDocument();
  GetParam().change(document);
  EXPECT_EQ(verdictOnManifest(document), GetParam().verdict);
}

const Verdict unsupportedVersion = {
    "dataCorrupted", {"version"}, "Unsupported shared Warp manifest version."};
const Verdict unsafeIdentity = {"dataCorrupted",
                                {"originalFolderPath"},
                                "Shared Warp identity, object key, or original path is unsafe."};
const Verdict inconsistent = {
    "dataCorrupted",
    {"entries"},
    "Shared Warp manifest dates or original-path ownership are inconsistent."};
const Verdict strayHardLink = {"dataCorrupted",
                               {"entries"},
                               "Shared Warp hard-link references must remain inside the manifest."};

/// A change that puts `text` at a key of the manifest.
std::function<void(JSONTree&)> setting(const char* key, const char* text) {
  return [=](JSONTree& manifest) { manifest[key] = text; };
}

/// A change that moves the manifest to another folder, its root entry, too, with one sample and
/// one entry of the paths given.
std::function<void(JSONTree&)> moving(const std::string& folder, const std::string& path) {
  return [=](JSONTree& manifest) {
    manifest["originalFolderPath"] = '"' + folder + '"';
    manifest["rootMetadata"]["absolutePath"] = '"' + folder + '"';
    manifest["verificationSampleAbsolutePaths"] = JSONTree::Array{'"' + path + '"'};
    manifest["entries"] = JSONTree::Array{entryDocument(path)};
    manifest["entries"][0].erase("hardLinkPrimaryPath");
  };
}

/// A change that gives the manifest these samples.
std::function<void(JSONTree&)> sampling(std::vector<std::string> paths) {
  return [paths = std::move(paths)](JSONTree& manifest) {
    JSONTree::Array samples;
    for (const std::string& path : paths) {
      samples.emplace_back('"' + path + '"');
    }
    manifest["verificationSampleAbsolutePaths"] = samples;
  };
}

/// A change that gives both entries other paths.
std::function<void(JSONTree&)> naming(const std::string& first, const std::string& second) {
  return [=](JSONTree& manifest) {
    manifest["entries"][0]["absolutePath"] = '"' + first + '"';
    manifest["entries"][1]["absolutePath"] = '"' + second + '"';
    manifest["entries"][0].erase("hardLinkPrimaryPath");
  };
}

/// A change of the first entry's primary path.
std::function<void(JSONTree&)> linking(const std::string& primaryPath) {
  return [=](JSONTree& manifest) {
    manifest["entries"][0]["hardLinkPrimaryPath"] = '"' + primaryPath + '"';
  };
}

const std::vector<ManifestCase> manifestCases = {
    {"everyField", [](JSONTree&) {}},
    {"version3", setting("version", "3"), unsupportedVersion},
    {"version5", setting("version", "5"), unsupportedVersion},
    {"versionInOtherWriting", setting("version", "40e-1")},
    {"otherVersionAlone",
     [](JSONTree& manifest) {
       manifest = JSONTree::Object{{"version", "5"}};
     },
     unsupportedVersion},
    {"emptyWarpID", setting("warpID", "\"\""), unsafeIdentity},
    {"emptyDeviceID", setting("deviceID", "\"\""), unsafeIdentity},
    {"emptyManifestKey", setting("manifestKey", "\"\""), unsafeIdentity},
    {"absoluteManifestKey", setting("manifestKey", "\"/a\""), unsafeIdentity},
    {"relativeFolder", setting("originalFolderPath", "\"Users/a/Docs\""), unsafeIdentity},
    {"folderWithTrailingSlash", setting("originalFolderPath", "\"/Users/a/Docs/\""),
     unsafeIdentity},
    {"folderWithNUL", setting("originalFolderPath", "\"/Users/a/Docs\\u0000\""), unsafeIdentity},
    {"emptyDisplayName", setting("displayName", "\"\"")},
    {"optionalFieldsMissing",
     [](JSONTree& manifest) {
       for (const char* key : {"uploadedAt", "replacedAt", "failureDescription"}) {
         manifest.erase(key);
       }
     }},
    {"optionalFieldsNull",
     [](JSONTree& manifest) {
       for (const char* key : {"uploadedAt", "replacedAt", "failureDescription"}) {
         manifest[key] = "null";
       }
     }},
    {"uploadedBeforeCreated", setting("uploadedAt", "\"1999-01-01T00:00:00Z\"")},
    {"verifiedButNotUploaded",
     [](JSONTree& manifest) {
       manifest["status"] = "\"verified\"";
       manifest.erase("uploadedAt");
     }},
    {"statusInUpperCase",
     setting("status", "\"Verified\""),
     {"dataCorrupted", {"status"}, "The text is none of the words that may stand here."}},
    {"fractionalSeconds",
     setting("createdAt", "\"2025-03-01T12:00:00.123Z\""),
     {"dataCorrupted", {"createdAt"}, "Expected a date such as 2025-03-01T12:00:00Z."}},
    {"noEntries",
     [](JSONTree& manifest) {
       manifest["entries"] = JSONTree::Array{};
       manifest["verificationSampleAbsolutePaths"] = JSONTree::Array{};
     }},
    {"samplesUnderTheFieldsName",
     [](JSONTree& manifest) {
       manifest.erase("verificationSampleAbsolutePaths");
       manifest.members().emplace_back("verificationSampleRelativePaths", "[]");
     },
     {"keyNotFound",
      {"verificationSampleAbsolutePaths"},
      "The key \"verificationSampleAbsolutePaths\" is missing."}},
    {"entryPathUnderTheFieldsName",
     [](JSONTree& manifest) {
       manifest["entries"][0].erase("absolutePath");
       manifest["entries"][0].members().emplace_back("relativePath", "\"/Users/a/Docs/x\"");
     },
     {"keyNotFound",
      {"entries", std::size_t{0}, "absolutePath"},
      "The key \"absolutePath\" is missing."}},
    {"rootOfAnotherFolder",
     [](JSONTree& manifest) { manifest["rootMetadata"]["absolutePath"] = "\"/Users/a\""; },
     inconsistent},
    {"rootInOtherNormalForm",
     [](JSONTree& manifest) {
       moving("/e\u0301", "/\u00e9/x")(manifest);
       manifest["rootMetadata"]["absolutePath"] = "\"/\u00e9\"";
     }},
    {"pathTwice", naming("/Users/a/Docs/x", "/Users/a/Docs/x"), inconsistent},
    {"pathTwiceInOtherNormalForm", naming("/Users/a/Docs/e\u0301", "/Users/a/Docs/\u00e9"),
     inconsistent},
    {"pathOfTheRoot", naming("/Users/a/Docs", "/Users/a/Docs/x")},
    {"pathOfASibling", naming("/Users/a/Docs/x", "/Users/a/Docsx"), inconsistent},
    {"pathOfTheParent", naming("/Users/a/Docs/x", "/Users/a"), inconsistent},
    {"markOnTheSlashBehindTheFolder", naming("/Users/a/Docs/x", "/Users/a/Docs/\u0301x"),
     inconsistent},
    {"folderIsTheRoot", moving("/", "/x")},
    {"folderInOtherNormalForm", moving("/e\u0301", "/\u00e9/x")},
    {"markBehindTheFoldersName", moving("/a/e", "/a/e\u0301/x"), inconsistent},
    {"sampleTwice", sampling({"/Users/a/Docs/x", "/Users/a/Docs/x"}), inconsistent},
    {"sampleTwiceInOtherNormalForm", sampling({"/Users/a/Docs/e\u0301", "/Users/a/Docs/\u00e9"}),
     inconsistent},
    {"sampleThatIsNoEntry", sampling({"/Users/a/Docs/none"})},
    {"sampleWithDot", sampling({"/Users/a/Docs/./x"}), inconsistent},
    {"sampleWithDotDot", sampling({"/Users/a/Docs/../Docs/x"}), inconsistent},
    {"sampleRelative", sampling({"Users/a/Docs/x"}), inconsistent},
    {"sampleWithNUL", sampling({"/Users/a/Docs/\\u0000"}), inconsistent},
    {"sampleElsewhere", sampling({"/Users/a/Docsx"}), inconsistent},
    {"sampleNull",
     [](JSONTree& manifest) { manifest["verificationSampleAbsolutePaths"][1] = "null"; },
     {"valueNotFound",
      {"verificationSampleAbsolutePaths", std::size_t{1}},
      "Expected a string but found null."}},
    {"linkToItself", linking("/Users/a/Docs/file"), strayHardLink},
    {"linkToNothing", linking("/Users/a/Docs/none"), strayHardLink},
    {"linkToTheRoot", linking("/Users/a/Docs"), strayHardLink},
    {"linkToAnEntryOfTheRootsPath",
     [](JSONTree& manifest) {
       linking("/Users/a/Docs")(manifest);
       manifest["entries"][1]["absolutePath"] = "\"/Users/a/Docs\"";
     }},
    {"linkInOtherNormalForm",
     [](JSONTree& manifest) {
       linking("/Users/a/Docs/e\u0301")(manifest);
       manifest["entries"][1]["absolutePath"] = "\"/Users/a/Docs/\u00e9\"";
     }},
    {"linksInACircle",
     [](JSONTree& manifest) {
       manifest["entries"][1]["hardLinkPrimaryPath"] = "\"/Users/a/Docs/file\"";
     }},
    {"linkOfTheRootEntryIsNotLookedAt",
     [](JSONTree& manifest) {
       manifest["rootMetadata"]["hardLinkPrimaryPath"] = "\"/elsewhere\"";
     }},
    {"secondEntryNull",
     [](JSONTree& manifest) { manifest["entries"][1] = "null"; },
     {"valueNotFound", {"entries", std::size_t{1}}, "Expected an object but found null."}},
    {"secondEntryArray",
     [](JSONTree& manifest) { manifest["entries"][1] = "[]"; },
     {"typeMismatch", {"entries", std::size_t{1}}, "Expected an object but found an array."}},
};

INSTANTIATE_TEST_SUITE_P(Cases, ManifestRules, testing::ValuesIn(manifestCases), RowName());

struct DocumentCase {
  const char* name;
  const char* document;
  Verdict verdict;
};

class WholeDocuments : public testing::TestWithParam<DocumentCase> {};

TEST_P(WholeDocuments, areReadBeforeAnyField) {
  EXPECT_EQ(verdictOf([] { static_cast<void>(decodeManifest(GetParam().document)); }),
            GetParam().verdict);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, WholeDocuments,
    testing::Values(
        DocumentCase{"empty", "", {"dataCorrupted", {}, "The document is empty."}},
        DocumentCase{"null", "null", {"valueNotFound", {}, "Expected an object but found null."}},
        DocumentCase{
            "array", "[4]", {"typeMismatch", {}, "Expected an object but found an array."}},
        DocumentCase{"brokenBehindAnotherVersion",
                     R"({"version":3,"x":[1,]})",
                     {"dataCorrupted", {}, "Expected a value."}},
        DocumentCase{"brokenBehindTheValue",
                     R"({"version":3} x)",
                     {"dataCorrupted", {}, "Something follows the document's value."}}),
    RowName());

TEST(ManifestDecoding, tellsWhereTheFaultIs) {
  const std::string document = manifestDocument().text({"", JSONStyle::Order::sorted, true, true});
  std::string changed = document;
  const std::size_t offset = changed.rfind("\"file\"");
  changed.replace(offset, 6, "\"fILE\"");
  try {
    static_cast<void>(decodeManifest(changed));
    FAIL() << "nothing was raised";
  } catch (const DecodingError& error) {
    EXPECT_EQ(error.byteOffset(), offset);
  }
}

// In time that grows with the square of the length, this one would not end.
TEST(ManifestDecoding, endsSoonWhenManyPathsLieBesideALongFolder) {
  constexpr int count = 2000;
  std::string folder = "/e";
  for (int mark = 0; mark < count * 250; ++mark) {
    folder += "\u0301";
  }
  JSONTree document = manifestDocument();
  moving(folder, "/\u00e9")(document);
  document["verificationSampleAbsolutePaths"] = "[]";
  const JSONTree entry = document["entries"][0];
  for (int number = 0; number < count; ++number) {
    JSONTree another = entry;
    another["absolutePath"] = "\"/\u00e9" + std::to_string(number) + '"';
    document["entries"].elements().push_back(std::move(another));
  }
  std::string bytes = document.text();
  EXPECT_EQ(verdictOf([&] { static_cast<void>(ManifestDecoder().decodeSummary(bytes)); }),
            inconsistent);
}

TEST(ManifestDecoding, takesManyEntries) {
  JSONTree document = manifestDocument();
  document["entries"].elements().clear();
  for (int number = 0; number < 500; ++number) {
    JSONTree entry = entryDocument("/Users/a/Docs/" + std::to_string(number));
    entry["hardLinkPrimaryPath"] = '"' + ("/Users/a/Docs/" + std::to_string(499 - number)) + '"';
    document["entries"].elements().push_back(std::move(entry));
  }
  EXPECT_EQ(decodeManifest(document.text()).entries.size(), 500);
  document["entries"][499]["absolutePath"] = "\"/Users/a/Docs/0\"";
  EXPECT_EQ(verdictOnManifest(document), inconsistent);
}

/// A name of each kind, as it stands in JSON.
const std::vector<std::string> names = {
    "plain",           R"(with \"quotes\")", R"(back\\slash)", R"(line\nbreak\ttab\u0001)",
    "caf\u00e9",       "nai\u0308ve",        "\u65e5\u672c",   "\U0001F600",
    R"(\ud83d\ude01)", R"(},{\"b\":[1]},{)", "a:b,c",          std::string(300, 'x')};

/// A manifest as the application writes it: names of all kinds, and what may be absent is absent
/// here and there.
JSONTree manyNamesDocument(std::mt19937_64& random) {
  JSONTree document = manifestDocument();
  JSONTree::Array entries;
  for (const std::string& name : names) {
    JSONTree entry = entryDocument("/Users/a/Docs/" + name);
    entry["displayName"] = '"' + name + '"';
    entry["aclText"] = '"' + name + name + '"';
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
  document["displayName"] = '"' + names[random() % names.size()] + '"';
  return document;
}

void shuffleMembers(JSONTree& tree, std::mt19937_64& random) {
  std::ranges::shuffle(tree.members(), random);
}

TEST(ManifestDecoding, readsOnceWhatTheApplicationWrites) {
  std::mt19937_64 random(1);
  ManifestDecoder decoder;
  for (int round = 0; round < 30; ++round) {
    JSONTree document = round == 0 ? manifestDocument() : manyNamesDocument(random);
    if (round % 3 == 2) {
      shuffleMembers(document, random);
      shuffleMembers(document["rootMetadata"], random);
      for (JSONTree& entry : document["entries"].elements()) {
        shuffleMembers(entry, random);
      }
    }
    for (JSONStyle style : jsonStyles) {
      for (const bool escapesSlashes : {false, true}) {
        style.escapesSlashes = escapesSlashes;
        std::string bytes = document.text(style);
        const ManifestSummary summary = decoder.decodeSummary(bytes);
        EXPECT_EQ(summary.entryCount, document["entries"].elements().size());
        ASSERT_EQ(decoder.reconsideredCount(), 0) << bytes;
      }
    }
  }
}

TEST(ManifestDecoding, readsOnceWhatItWrites) {
  std::mt19937_64 random(2);
  ManifestDecoder decoder;
  for (int round = 0; round < 10; ++round) {
    std::string bytes = manyNamesDocument(random).text();
    const VelmoraWarpSharedManifest manifest = decoder.decode(bytes);
    bytes = encodeManifest(manifest);
    EXPECT_EQ(decoder.decode(bytes), manifest);
  }
  EXPECT_EQ(decoder.reconsideredCount(), 0);
}

struct OddCase {
  const char* name;
  std::function<void(JSONTree&)> change;
};

class OddManifests : public testing::TestWithParam<OddCase> {};

TEST_P(OddManifests, areReadAgainOnce) {
  JSONTree document = manifestDocument();
  GetParam().change(document);
  ManifestDecoder decoder;
  std::size_t count = 0;
  for (const JSONStyle& style : jsonStyles) {
    const std::string text = document.text(style);
    std::string bytes = text;
    EXPECT_EQ(verdictOf([&] { static_cast<void>(decoder.decode(bytes)); }), verdictOf([&] {
                std::string others = text;
                static_cast<void>(
                    ExactManifestReader().read(others, [](const WarpSharedEntry<TextView>&) {}));
              }));
    EXPECT_EQ(decoder.reconsideredCount(), ++count);
  }
  std::string usual = manifestDocument().text();
  EXPECT_EQ(decoder.decode(usual), decodeManifest(manifestDocument().text()));
  EXPECT_EQ(decoder.reconsideredCount(), count);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, OddManifests,
    testing::Values(
        OddCase{"otherVersion", setting("version", "3")},
        OddCase{"versionInOtherWriting", setting("version", "4.0")},
        OddCase{"unknownKey",
                [](JSONTree& manifest) { manifest.members().emplace_back("more", "1"); }},
        OddCase{"keyTwice",
                [](JSONTree& manifest) { manifest.members().emplace_back("version", "4"); }},
        OddCase{"keyMissing", [](JSONTree& manifest) { manifest.erase("version"); }},
        OddCase{"nullForText", setting("displayName", "null")},
        OddCase{"pathTwice", naming("/Users/a/Docs/x", "/Users/a/Docs/x")},
        OddCase{"pathElsewhere", naming("/Users/a/Docs/x", "/Users/a/Docsx")},
        OddCase{"pathOfTheRoot", naming("/Users/a/Docs", "/Users/a/Docs/x")},
        OddCase{"linkToNothing", linking("/Users/a/Docs/none")},
        OddCase{"primaryWithoutIdentity",
                [](JSONTree& manifest) { manifest["entries"][1].erase("hardLinkIdentity"); }},
        OddCase{"brokenString", setting("displayName", "\"a\nb\"")},
        OddCase{"notUTF8", setting("displayName", "\"\xFF\"")},
        OddCase{"nothing", [](JSONTree& manifest) { manifest = "{}"; }}),
    RowName());

TEST(ManifestDecoding, takesAByteOrderMarkForTheSecondReading) {
  ManifestDecoder decoder;
  std::string bytes = "\xEF\xBB\xBF" + manifestDocument().text();
  EXPECT_EQ(decoder.decode(bytes), decodeManifest(manifestDocument().text()));
  EXPECT_EQ(decoder.reconsideredCount(), 1);
}

}  // namespace
}  // namespace velmora

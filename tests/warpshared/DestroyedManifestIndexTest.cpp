#include "platform/PlatformError.h"
#include "tests/support/RowName.h"
#include "tests/fakes/RecordedWarps.h"
#include "tests/warpshared/SharedWarpDocuments.h"
#include "warpshared/DestroyedManifestIndex.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <functional>
#include <string>
#include <vector>

namespace velmora {
namespace {

using Records = std::vector<VelmoraWarpSharedDestroyedManifestRecord>;

const std::string indexPath = std::string(recordedWarpRoot) + "/destroyed-manifest-index.json";

Records load(const FakePlatform& fake) {
  return loadDestroyedManifestRecords(recordedWarpRoot, fake.fileSystem, fake.paths);
}

Records loadDocument(const std::string& document) {
  FakePlatform fake;
  fake.fileSystem.files[indexPath] = document;
  return load(fake);
}

TEST(DestroyedManifestRecords, areNoneWithoutAFile) { EXPECT_TRUE(load(FakePlatform()).empty()); }

TEST(DestroyedManifestRecords, areThoseOfTheFileInItsOrder) {
  const Records records = loadDocument(indexDocument().text());
  ASSERT_EQ(records.size(), 2);
  EXPECT_EQ(records[0].warpID, "W-b");
  EXPECT_EQ(records[0].manifestKey, "manifests/b");
  EXPECT_EQ(records[0].originalFolderPath, "/Users/a/b");
  EXPECT_EQ(records[0].destroyedAt.secondsSinceReferenceDate, 762523200);
  EXPECT_EQ(records[1].warpID, "W-a");
}

TEST(DestroyedManifestRecords, areReadUnderTheStandardisedRoot) {
  FakePlatform fake;
  fake.fileSystem.files[indexPath] = indexDocument().text();
  EXPECT_EQ(loadDestroyedManifestRecords(std::string(recordedWarpRoot) + "/x/..", fake.fileSystem,
                                         fake.paths)
                .size(),
            2);
}

TEST(DestroyedManifestRecords, areRefusedWhenTheFileCannotBeRead) {
  FakePlatform fake;
  fake.fileSystem.directories.insert(indexPath);
  try {
    static_cast<void>(load(fake));
    FAIL() << "nothing was raised";
  } catch (const PlatformError& error) {
    EXPECT_EQ(error.domain(), posixErrorDomain);
    EXPECT_EQ(error.code(), EISDIR);
  }
}

/// What the load of a changed document says.
Verdict verdictAfter(const std::function<void(JSONTree&)>& change) {
  JSONTree document = indexDocument();
  change(document);
  try {
    return verdictOf([&] { static_cast<void>(loadDocument(document.text())); });
  } catch (const PlatformError& error) {
    EXPECT_EQ(error.domain(), cocoaErrorDomain);
    EXPECT_EQ(error.code(), fileReadCorruptFileErrorCode);
    return {"corruptFile", {}, ""};
  }
}

struct IndexCase {
  const char* name;
  std::function<void(JSONTree&)> change;
  Verdict verdict = valid;
};

class IndexRules : public testing::TestWithParam<IndexCase> {};

TEST_P(IndexRules, acceptOrRefuse) {
  EXPECT_EQ(verdictAfter(GetParam().change), GetParam().verdict);
}

const Verdict corrupt = {"corruptFile", {}, ""};
const Verdict unsupportedVersion = {
    "dataCorrupted", {"version"}, "Unsupported restored-Warp tombstone index version."};

std::function<void(JSONTree&)> changingFirst(const char* key, const char* value) {
  return [=](JSONTree& index) { index["records"][0][key] = value; };
}

const std::vector<IndexCase> indexCases = {
    {"twoRecords", [](JSONTree&) {}},
    {"noRecords", [](JSONTree& index) { index["records"] = "[]"; }},
    {"version2", [](JSONTree& index) { index["version"] = "2"; }, unsupportedVersion},
    {"version0WithoutRecords",
     [](JSONTree& index) {
       index = JSONTree::Object{{"version", "0"}};
     },
     unsupportedVersion},
    {"otherKeys",
     [](JSONTree& index) {
       index.members().emplace_back("device", "{}");
       index["records"][0].members().emplace_back("reason", "\"restored\"");
     }},
    {"generatedBeforeDestroyed",
     [](JSONTree& index) { index["generatedAt"] = "\"1999-01-01T00:00:00Z\""; }},
    {"dateWithFraction",
     [](JSONTree& index) { index["generatedAt"] = "\"2025-03-05T00:00:00.0Z\""; },
     {"dataCorrupted", {"generatedAt"}, "Expected a date such as 2025-03-01T12:00:00Z."}},
    {"emptyWarpID", changingFirst("warpID", "\"\""), corrupt},
    {"emptyManifestKey", changingFirst("manifestKey", "\"\""), corrupt},
    {"absoluteManifestKey", changingFirst("manifestKey", "\"/a\""), corrupt},
    {"manifestKeyWithDotDot", changingFirst("manifestKey", "\"a/../b\""), corrupt},
    {"manifestKeyWithDoubleSlash", changingFirst("manifestKey", "\"a//b\""), corrupt},
    {"folderWithTrailingSlash", changingFirst("originalFolderPath", "\"/Users/a/\""), corrupt},
    {"relativeFolder", changingFirst("originalFolderPath", "\"Users/a\""), corrupt},
    {"warpIDTwice", changingFirst("warpID", "\"W-a\""), corrupt},
    {"manifestKeyTwice", changingFirst("manifestKey", "\"manifests/a\""), corrupt},
    {"warpIDTwiceInOtherNormalForm",
     [](JSONTree& index) {
       index["records"][0]["warpID"] = "\"e\u0301\"";
       index["records"][1]["warpID"] = "\"\u00e9\"";
     },
     corrupt},
    {"warpIDsThatDifferInCase", changingFirst("warpID", "\"w-A\"")},
    {"folderTwice", changingFirst("originalFolderPath", "\"/Users/a/a\"")},
    {"warpIDThatIsAnothersManifestKey", changingFirst("warpID", "\"manifests/a\"")},
};

INSTANTIATE_TEST_SUITE_P(Cases, IndexRules, testing::ValuesIn(indexCases), RowName());

TEST(DestroyedManifestIndex, decodesToWhatWasEncoded) {
  std::string bytes = indexDocument().text();
  const VelmoraWarpSharedDestroyedManifestIndex index = decodeDestroyedManifestIndex(bytes);
  std::string encoded = encodeDestroyedManifestIndex(index);
  EXPECT_EQ(encoded, indexDocument().text());
  EXPECT_EQ(decodeDestroyedManifestIndex(encoded), index);
}

TEST(DestroyedManifestIndex, isAnotherWithAnyOtherField) {
  std::string bytes = indexDocument().text();
  const VelmoraWarpSharedDestroyedManifestIndex index = decodeDestroyedManifestIndex(bytes);
  VelmoraWarpSharedDestroyedManifestIndex other = index;
  other.generatedAt.secondsSinceReferenceDate += 1;
  EXPECT_NE(other, index);
  other = index;
  other.records[1].destroyedAt.secondsSinceReferenceDate += 1;
  EXPECT_NE(other, index);
  other = index;
  other.records.pop_back();
  EXPECT_NE(other, index);
  other = index;
  other.version = 2;
  EXPECT_NE(other, index);
}

TEST(DestroyedManifestIndex, refusesDatesThatAreNoInstant) {
  std::string bytes = indexDocument().text();
  const VelmoraWarpSharedDestroyedManifestIndex index = decodeDestroyedManifestIndex(bytes);
  VelmoraWarpSharedDestroyedManifestIndex endless = index;
  endless.generatedAt.secondsSinceReferenceDate = std::numeric_limits<double>::infinity();
  EXPECT_THROW(validateDestroyedManifestIndex(endless), PlatformError);
  VelmoraWarpSharedDestroyedManifestIndex undefined = index;
  undefined.records[1].destroyedAt.secondsSinceReferenceDate =
      std::numeric_limits<double>::quiet_NaN();
  EXPECT_THROW(validateDestroyedManifestIndex(undefined), PlatformError);
}

}  // namespace
}  // namespace velmora

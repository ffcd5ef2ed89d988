#include "platform/PlatformError.h"
#include "tests/fakes/RecordedWarps.h"
#include "tests/fakes/WarpRecords.h"
#include "tests/warpshared/SharedWarpDocuments.h"
#include "warpshared/reading/DestroyedManifestIndexDecoding.h"
#include "warpshared/writing/ManifestEncoding.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

namespace velmora::internal {
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

TEST(DestroyedManifestRecords, areAbsentWithoutAFile) { EXPECT_TRUE(load(FakePlatform()).empty()); }

TEST(DestroyedManifestRecords, areInTheOrderOfTheFile) {
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
  const std::string root = std::string(recordedWarpRoot) + "/x/..";
  EXPECT_EQ(loadDestroyedManifestRecords(root, fake.fileSystem, fake.paths).size(), 2);
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

/// The verdict on the load of a document.
std::string verdictOn(const JSONTree& document) {
  try {
    return verdictOf([&] { static_cast<void>(loadDocument(document.text())); });
  } catch (const PlatformError& error) {
    EXPECT_EQ(error.domain(), cocoaErrorDomain);
    EXPECT_EQ(error.code(), fileReadCorruptFileErrorCode);
    return "corruptFile";
  }
}

TEST(DestroyedManifestRecords, areRefusedWhenTheyTakeTooMuchMemory) {
  FakePlatform fake;
  std::string values = "[[]";
  while (values.size() < 6'000'000) {
    values += ",[]";
  }
  const std::string index = indexJSON({});
  fake.fileSystem.files[indexPath] = "{\"more\":" + values + "]," + index.substr(1);
  EXPECT_THROW(static_cast<void>(load(fake)), DecodingError);
  fake.fileSystem.files[indexPath] =
      "{\"more\":\"" + std::string(6'000'000, 'x') + "\"," + index.substr(1);
  EXPECT_TRUE(load(fake).empty());
}

TEST(DestroyedManifestRecords, areCheckedByTheRules) {
  constexpr const char* unsupportedVersion =
      "dataCorrupted at /version: Unsupported restored-Warp tombstone index version.";
  constexpr const char* corrupt = "corruptFile";
  struct {
    const char* name;
    const char* path;
    const char* json;
    std::string_view verdict = valid;
  } const rows[] = {
      {"noRecords", "/records", "[]"},
      {"version2", "/version", "2", unsupportedVersion},
      {"version0WithoutRecords", "", "{'version':0}", unsupportedVersion},
      {"otherKey", "/+device", "{}"},
      {"otherKeyOfARecord", "/records/0/+reason", "'restored'"},
      {"generatedBeforeDestroyed", "/generatedAt", "'1999-01-01T00:00:00Z'"},
      {"dateWithFraction", "/generatedAt", "'2025-03-05T00:00:00.0Z'",
       "dataCorrupted at /generatedAt: Expected a date such as 2025-03-01T12:00:00Z."},
      {"emptyWarpID", "/records/0/warpID", "''", corrupt},
      {"emptyManifestKey", "/records/0/manifestKey", "''", corrupt},
      {"absoluteManifestKey", "/records/0/manifestKey", "'/a'", corrupt},
      {"manifestKeyWithDotDot", "/records/0/manifestKey", "'a/../b'", corrupt},
      {"manifestKeyWithDoubleSlash", "/records/0/manifestKey", "'a//b'", corrupt},
      {"folderWithTrailingSlash", "/records/0/originalFolderPath", "'/Users/a/'", corrupt},
      {"relativeFolder", "/records/0/originalFolderPath", "'Users/a'", corrupt},
      {"warpIDTwice", "/records/0/warpID", "'W-a'", corrupt},
      {"manifestKeyTwice", "/records/0/manifestKey", "'manifests/a'", corrupt},
      {"warpIDsThatDifferInCase", "/records/0/warpID", "'w-A'"},
      {"folderTwice", "/records/0/originalFolderPath", "'/Users/a/a'"},
      {"warpIDThatIsAnothersManifestKey", "/records/0/warpID", "'manifests/a'"},
  };
  for (const auto& row : rows) {
    JSONTree document = indexDocument();
    document.change(row.path, row.json);
    EXPECT_EQ(verdictOn(document), row.verdict) << row.name;
  }
  JSONTree document = indexDocument();
  document.change("/records/0/warpID", "'e\u0301'");
  document.change("/records/1/warpID", "'\u00e9'");
  EXPECT_EQ(verdictOn(document), corrupt) << "warpIDTwiceInOtherNormalForm";
}

VelmoraWarpSharedDestroyedManifestIndex soundIndex() {
  std::string bytes = indexDocument().text();
  return decodeDestroyedManifestIndex(bytes);
}

TEST(DestroyedManifestIndex, readsBackWhenEncoded) {
  EXPECT_EQ(encodeDestroyedManifestIndex(soundIndex()), indexDocument().text());
}

TEST(DestroyedManifestIndex, refusesInvalidDates) {
  VelmoraWarpSharedDestroyedManifestIndex endless = soundIndex();
  EXPECT_NO_THROW(validateDestroyedManifestIndex(endless));
  endless.generatedAt.secondsSinceReferenceDate = std::numeric_limits<double>::infinity();
  EXPECT_THROW(validateDestroyedManifestIndex(endless), PlatformError);
  VelmoraWarpSharedDestroyedManifestIndex undefined = soundIndex();
  undefined.records[1].destroyedAt.secondsSinceReferenceDate =
      std::numeric_limits<double>::quiet_NaN();
  EXPECT_THROW(validateDestroyedManifestIndex(undefined), PlatformError);
}

}  // namespace
}  // namespace velmora::internal

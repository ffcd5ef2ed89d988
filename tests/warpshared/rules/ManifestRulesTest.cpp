// The rules for a manifest, with both of its readers.

#include "tests/warpshared/ManifestCases.h"
#include "warpshared/rules/ManifestRules.h"

#include <gtest/gtest.h>

#include <limits>
#include <optional>
#include <string>
#include <string_view>

namespace velmora::internal {
namespace {

/// The only entry, which is no hard link.
constexpr Edits oneEntry = {{"/entries/1", ""},
                            {"/entries/0/hardLinkIdentity", ""},
                            {"/entries/0/hardLinkPrimaryPath", ""}};

/// The manifest of another folder, with one sample and one entry of this path.
constexpr Edits moving(std::string_view folder, std::string_view path) {
  return {{"/originalFolderPath", folder},
          {"/rootMetadata/absolutePath", folder},
          {"/verificationSampleAbsolutePaths/1", ""},
          {"/verificationSampleAbsolutePaths/0", path},
          {"/entries/1", ""},
          {"/entries/0/absolutePath", path},
          {"/entries/0/hardLinkPrimaryPath", ""}};
}

constexpr Edits sampling(std::string_view first, std::string_view second = "'/Users/a/Docs'") {
  return {{"/verificationSampleAbsolutePaths/0", first},
          {"/verificationSampleAbsolutePaths/1", second}};
}

/// Both entries with other paths and without a link.
constexpr Edits naming(std::string_view first, std::string_view second) {
  return {{"/entries/0/absolutePath", first},
          {"/entries/1/absolutePath", second},
          {"/entries/0/hardLinkPrimaryPath", ""}};
}

/// The same with a usual first path.
constexpr Edits naming(std::string_view second) { return naming("'/Users/a/Docs/x'", second); }

/// A link from the first entry, and the path of the second entry.
constexpr Edits linking(std::string_view primary,
                        std::string_view second = "'/Users/a/Docs/primary'") {
  return {{"/entries/0/hardLinkPrimaryPath", primary}, {"/entries/1/absolutePath", second}};
}

constexpr std::string_view notCanonicalEntry =
    "dataCorrupted at /entries/1/absolutePath: Shared Warp entries require canonical absolute "
    "paths.";
constexpr std::string_view badEscape =
    "dataCorrupted at : A string holds an escape that is none of JSON's.";

constexpr ManifestCase manifestCases[] = {
    {"everyField", {}},
    {"version3", {{"/version", "3"}}, unsupportedVersion},
    {"version5", {{"/version", "5"}}, unsupportedVersion},
    {"otherVersionAlone", {{"", "{'version':5}"}}, unsupportedVersion},
    {"versionBeyond",
     {{"/version", "18446744073709551620"}},
     "dataCorrupted at /version: The number is not whole, or too large."},
    {"versionWithEightDigitsAndAFraction",
     {{"/version", "4.000001"}},
     "dataCorrupted at /version: The number is not whole, or too large."},
    {"versionInOtherWriting", {{"/version", "40e-1"}}, valid},
    {"versionWithFraction", {{"/version", "4.0"}}, valid},
    {"sizeWithFraction", {{"/entries/0/size", "1000.0000"}}, valid},
    {"sizeWithExponent", {{"/entries/0/size", "1e3"}}, valid},
    {"sizeOfManyDigits", {{"/entries/0/size", "1000.0000000000000000000000"}}, valid},
    {"sizeWithAFractionOfManyDigits",
     {{"/entries/0/size", "1234.678"}},
     "dataCorrupted at /entries/0/size: The number is not whole, or too large."},
    {"sizeWithAMinusInside",
     {{"/entries/0/size", "1234-678"}},
     "dataCorrupted at : Expected a value."},
    {"sizeWithASlashInside",
     {{"/entries/0/size", "1234/678"}},
     "dataCorrupted at : Expected a value."},
    {"sizeNegative",
     {{"/entries/0/size", "-1"}},
     "dataCorrupted at /entries/0/size: Shared Warp entry sizes cannot be negative."},
    {"extremeNumbers",
     {{"/entries/0/modificationTimeNanoseconds", "-9223372036854775808"},
      {"/entries/0/statusChangeTimeNanoseconds", "9223372036854775807"},
      {"/entries/0/birthTimeNanoseconds", "-0"},
      {"/entries/0/ownerUserID", "4294967295"},
      {"/entries/0/ownerGroupID", "0"},
      {"/entries/0/posixPermissions", "65535"},
      {"/entries/0/hardLinkIdentity/deviceID", "18446744073709551615"}}},

    {"warpIDEmpty", {{"/warpID", "''"}}, unsafeIdentity},
    {"deviceIDEmpty", {{"/deviceID", "''"}}, unsafeIdentity},
    {"manifestKeyEmpty", {{"/manifestKey", "''"}}, unsafeIdentity},
    {"manifestKeyAbsolute", {{"/manifestKey", "'/a'"}}, unsafeIdentity},
    {"manifestKeyWithDotDot", {{"/manifestKey", "'a/../b'"}}, unsafeIdentity},
    {"folderEmpty", {{"/originalFolderPath", "''"}}, unsafeIdentity},
    {"folderRelative", {{"/originalFolderPath", "'Users/a/Docs'"}}, unsafeIdentity},
    {"folderWithTrailingSlash", {{"/originalFolderPath", "'/Users/a/Docs/'"}}, unsafeIdentity},
    {"folderWithNUL", {{"/originalFolderPath", R"('/Users/a/Docs\u0000')"}}, unsafeIdentity},
    {"rootOfAnotherFolder", {{"/rootMetadata/absolutePath", "'/Users/a'"}}, inconsistent},
    {"folderIsTheRoot", moving("'/'", "'/x'")},
    {"folderIsTheRootFarAbove", moving("'/'", "'/Users/a/Docs/file'")},
    {"folderInOtherNormalForm", moving("'/e\u0301'", "'/\u00e9/x'")},
    {"rootInOtherNormalForm",
     {{"/originalFolderPath", "'/e\u0301'"},
      {"/rootMetadata/absolutePath", "'/\u00e9'"},
      {"/verificationSampleAbsolutePaths/0", "'/\u00e9/x'"},
      {"/verificationSampleAbsolutePaths/1", "'/e\u0301/y'"},
      {"/entries/1", ""},
      {"/entries/0/absolutePath", "'/\u00e9/x'"},
      {"/entries/0/hardLinkPrimaryPath", ""}}},
    {"markAfterTheFoldersName", moving("'/a/e'", "'/a/e\u0301/x'"), inconsistent},

    {"textsEmpty",
     {{"/displayName", "''"},
      {"/failureDescription", "''"},
      {"/entries/0/displayName", "''"},
      {"/entries/0/aclText", "''"}}},
    {"textBroken",
     {{"/displayName", "'a\nb'"}},
     "dataCorrupted at : A string holds an unescaped control character."},
    {"textNotUTF8", {{"/displayName", "'\xFF'"}}, "dataCorrupted at : The document is not UTF-8."},
    {"optionalFieldsMissing",
     {{"/uploadedAt", ""}, {"/replacedAt", ""}, {"/failureDescription", ""}}},
    {"optionalFieldsNull",
     {{"/uploadedAt", "null"}, {"/replacedAt", "null"}, {"/failureDescription", "null"}}},
    {"optionalFieldsOfAnEntryNull",
     {{"/entries/0/payloadKey", "null"},
      {"/entries/0/aclText", "null"},
      {"/entries/0/birthTimeNanoseconds", "null"}}},
    {"uploadedBeforeCreated", {{"/uploadedAt", "'1999-01-01T00:00:00Z'"}}},
    {"verifiedButNotUploaded", {{"/status", "'verified'"}, {"/uploadedAt", ""}}},

    {"unknownKey", {{"/+more", "1"}}, valid},
    {"unknownKeyOfAnEntry", {{"/entries/1/+more", "{}"}}, valid},
    {"keyTwice", {{"/+version", "4"}}, valid},
    {"keyTwiceInAnEntry", {{"/entries/1/+size", "1000"}}, valid},
    {"nothing", {{"", "{}"}}, "keyNotFound at /version: The key \"version\" is missing."},
    {"entryNull",
     {{"/entries/1", "null"}},
     "valueNotFound at /entries/1: Expected an object but found null."},
    {"entryAnArray",
     {{"/entries/1", "[]"}},
     "typeMismatch at /entries/1: Expected an object but found an array."},
    {"entryEmpty",
     {{"/entries/1", "{}"}},
     "keyNotFound at /entries/1/absolutePath: The key \"absolutePath\" is missing."},

    {"oneEntry", oneEntry},
    {"noEntries",
     {{"/entries/1", ""},
      {"/entries/0", ""},
      {"/verificationSampleAbsolutePaths/1", ""},
      {"/verificationSampleAbsolutePaths/0", ""}}},
    {"pathWithEscapes", naming(R"('/Users/\u0061/Docs/\'\\\b\f\n\r\t')",
                               R"('/Users/a/Docs/\ud83d\ude00\u0001\u00e9')")},
    {"pathLikeTokens",
     naming(R"('/Users/a/Docs/},{\'a\':[1],\n')", R"('/Users/a/Docs/\'},{\'b\':')")},
    {"pathTwice", naming("'/Users/a/Docs/x'"), inconsistent},
    {"pathTwiceByAnEscape", naming(R"('/Users/a/Docs/\u0078')"), inconsistent},
    {"pathTwiceInOtherNormalForm", naming("'/Users/a/Docs/e\u0301'", "'/Users/a/Docs/\u00e9'"),
     inconsistent},
    {"pathOfTheRoot", naming("'/Users/a/Docs'", "'/Users/a/Docs/x'"), valid},
    {"pathOfASibling", naming("'/Users/a/Docsx'"), inconsistent},
    {"pathOfTheParent", naming("'/Users/a'"), inconsistent},
    {"pathWithAMarkAfterTheFolder", naming("'/Users/a/Docs/\u0301x'"), inconsistent},
    {"pathWithAMarkFarBelow", naming("'/Users/a/Docs/x/\u0301y'", "'/Users/a/Docs/x/z'"), valid},
    {"pathWithDot", naming("'/Users/a/Docs/./y'"), notCanonicalEntry},
    {"pathWithNUL", naming(R"('/Users/a/Docs/\u0000')"), notCanonicalEntry},
    {"pathWithHalfOfAPair", naming(R"('/Users/a/Docs/\ud83d')"), badEscape},
    {"pathWithUnknownEscape", naming(R"('/Users/a/Docs/\x')"), badEscape},

    {"sampleTwice", sampling("'/Users/a/Docs/x'", "'/Users/a/Docs/x'"), inconsistent},
    {"sampleTwiceInOtherNormalForm", sampling("'/Users/a/Docs/e\u0301'", "'/Users/a/Docs/\u00e9'"),
     inconsistent},
    {"sampleThatIsNoEntry", sampling("'/Users/a/Docs/none'")},
    {"sampleWithDot", sampling("'/Users/a/Docs/./x'"), inconsistent},
    {"sampleWithDotDot", sampling("'/Users/a/Docs/../Docs/x'"), inconsistent},
    {"sampleRelative", sampling("'Users/a/Docs/x'"), inconsistent},
    {"sampleWithNUL", sampling(R"('/Users/a/Docs/\u0000')"), inconsistent},
    {"sampleElsewhere", sampling("'/Users/a/Docsx'"), inconsistent},
    {"sampleNull", sampling("'/Users/a/Docs/x'", "null"),
     "valueNotFound at /verificationSampleAbsolutePaths/1: Expected a string but found null."},

    {"linkToItself", linking("'/Users/a/Docs/file'"), strayHardLink},
    {"linkToItselfInOtherNormalForm",
     {{"/entries/0/absolutePath", "'/Users/a/Docs/e\u0301'"},
      {"/entries/0/hardLinkPrimaryPath", "'/Users/a/Docs/\u00e9'"}},
     strayHardLink},
    {"linkToNothing", linking("'/Users/a/Docs/none'"), strayHardLink},
    {"linkToAPathInOtherLetterCase", linking("'/Users/a/Docs/Primary'"), strayHardLink},
    {"linkToTheRoot", linking("'/Users/a/Docs'"), strayHardLink},
    {"linkToAnEntryOfTheRootsPath", linking("'/Users/a/Docs'", "'/Users/a/Docs'"), valid},
    {"linkInOtherNormalForm", linking("'/Users/a/Docs/e\u0301'", "'/Users/a/Docs/\u00e9'")},
    {"linkToAnEarlierEntry",
     {{"/entries/0/absolutePath", "'/Users/a/Docs/primary'"},
      {"/entries/0/hardLinkPrimaryPath", ""},
      {"/entries/1/absolutePath", "'/Users/a/Docs/file'"},
      {"/entries/1/hardLinkPrimaryPath", "'/Users/a/Docs/primary'"}}},
    {"linksInACircle", {{"/entries/1/hardLinkPrimaryPath", "'/Users/a/Docs/file'"}}},
    {"linkOfTheRootEntryIsNotLookedAt", {{"/rootMetadata/hardLinkPrimaryPath", "'/elsewhere'"}}},
    {"linkRelative", linking("'primary'"),
     "dataCorrupted at /entries/0/hardLinkPrimaryPath: Shared Warp hard-link paths must be "
     "canonical absolute paths."},
    {"linkToOneWithoutIdentity", {{"/entries/1/hardLinkIdentity", ""}}, valid},
    {"linkToOneWithNullIdentity", {{"/entries/1/hardLinkIdentity", "null"}}, valid},
};

TEST(ManifestRules, areAppliedByBothReaders) {
  for (const ManifestCase& row : manifestCases) {
    expectVerdict(row);
  }
}

TEST(ManifestRules, ignoreDuplicateEntriesAndRefuseNestedLists) {
  const std::string entries = manifestDocument()["entries"].text();
  const std::string nested = '[' + entries + ']';
  expectVerdict({"entriesTwice", {{"/+entries", entries}}, valid});
  expectVerdict({"entriesInAnotherList",
                 {{"/entries", nested}},
                 "typeMismatch at /entries/0: Expected an object but found an array."});
}

TEST(ManifestRules, acceptTextsOfAnyLength) {
  const std::string text = '\'' + std::string(20'000, 'x') + '\'';
  const std::string escaped = '\'' + std::string(20'000, 'x') + "\\n'";
  expectVerdict({"longTexts",
                 {{"/displayName", text},
                  {"/entries/0/aclText", escaped},
                  {"/entries/1/symlinkTarget", text}}});
}

TEST(ManifestRules, acceptFiniteDatesOnly) {
  constexpr Date infinite{std::numeric_limits<double>::infinity()};
  constexpr Date undefined{std::numeric_limits<double>::quiet_NaN()};
  struct {
    const char* name;
    Date createdAt;
    std::optional<Date> uploadedAt;
    std::optional<Date> replacedAt;
    bool areFinite;
  } const rows[] = {
      {"onlyCreated", {}, {}, {}, true},
      {"allFinite", {}, Date{-1}, Date{1e300}, true},
      {"createdInfinite", infinite, {}, {}, false},
      {"createdNotANumber", undefined, {}, {}, false},
      {"uploadedInfinite", {}, infinite, {}, false},
      {"replacedInfinite", {}, {}, infinite, false},
  };
  for (const auto& row : rows) {
    VelmoraWarpSharedManifest manifest;
    manifest.createdAt = row.createdAt;
    manifest.uploadedAt = row.uploadedAt;
    manifest.replacedAt = row.replacedAt;
    const ManifestRule& datesAndOwnership = manifestRules()[2];
    EXPECT_EQ(datesAndOwnership.holds({.manifest = manifest}), row.areFinite) << row.name;
  }
}

}  // namespace
}  // namespace velmora::internal

#include "json/strict/JSONReader.h"
#include "tests/warpshared/ManifestCases.h"
#include "tests/warpshared/PlainManifests.h"
#include "warpshared/reading/EntryDecoding.h"
#include "warpshared/records/VelmoraWarpSharedManifest.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

namespace velmora::internal {
namespace {

VelmoraWarpSharedEntry decodeEntry(const JSONTree& document) {
  JSONReader reader;
  std::string bytes = document.text();
  VelmoraWarpSharedEntry entry;
  decode(reader.read(bytes), entry);
  return entry;
}

TEST(EntryDecoding, readsEveryField) {
  const VelmoraWarpSharedEntry entry = decodeEntry(entryDocument("/a"));
  EXPECT_EQ(entry.relativePath, "/a");
  EXPECT_EQ(entry.id(), "/a");
  EXPECT_EQ(entry.displayName, "name");
  EXPECT_EQ(entry.kind, VelmoraWarpSharedEntryKind::file);
  EXPECT_EQ(entry.size, 1000);
  EXPECT_EQ(entry.modificationTimeNanoseconds, 1740830400123456789);
  EXPECT_EQ(entry.statusChangeTimeNanoseconds, 1740830400123456790);
  EXPECT_EQ(entry.birthTimeNanoseconds, -5);
  EXPECT_EQ(entry.ownerUserID, 501);
  EXPECT_EQ(entry.ownerGroupID, 20);
  EXPECT_EQ(entry.posixPermissions, 0644);
  EXPECT_EQ(entry.bsdFlags, 32768);
  EXPECT_TRUE(entry.hasModificationTimeMetadata && entry.hasOwnershipMetadata &&
              entry.hasPOSIXPermissionsMetadata && entry.hasBSDFlagsMetadata &&
              entry.hasExtendedAttributesMetadata && entry.hasACLMetadata);
  EXPECT_EQ(entry.extendedAttributes, (std::vector<VelmoraWarpSharedExtendedAttribute>{
                                          {.name = "com.example.a", .base64Value = "QQ=="},
                                          {.name = "com.example.b", .base64Value = ""}}));
  EXPECT_EQ(entry.aclText, "!#acl 1");
  EXPECT_EQ(entry.symlinkTarget, "../target");
  EXPECT_EQ(entry.payloadKey, "objects/a");
  EXPECT_EQ(entry.payloadParts,
            (std::vector<VelmoraWarpSharedPayloadPart>{
                {.key = "objects/a/1",
                 .offset = 0,
                 .size = 600,
                 .payloadNamespace = VelmoraPayloadNamespace::warp},
                {.key = "objects/a/2", .offset = 600, .size = 400, .payloadNamespace = {}}}));
  EXPECT_EQ(entry.uploadStrategy, "multipart");
  EXPECT_EQ(entry.multipartPartCount, 2);
  EXPECT_EQ(entry.multipartPartSizeBytes, 600);
  EXPECT_EQ(entry.contentChecksumSHA256, std::string(63, 'a') + 'F');
  EXPECT_EQ(entry.payloadEncoding, VelmoraWarpSharedPayloadEncoding::raw);
  EXPECT_EQ(entry.storedSize, 900);
  EXPECT_EQ(entry.sparseExtents, (std::vector<VelmoraWarpSharedSparseExtent>{
                                     {.logicalOffset = 100, .storedOffset = 0, .length = 900}}));
  EXPECT_EQ(entry.hardLinkIdentity,
            (VelmoraWarpSharedHardLinkIdentity{
                .deviceID = 16777231, .inode = std::numeric_limits<std::uint64_t>::max()}));
  EXPECT_EQ(entry.hardLinkPrimaryPath, "/Users/a/Docs/primary");
}

TEST(EntryDecoding, keepsNothingOfTheEarlierEntry) {
  JSONReader reader;
  WarpSharedEntry<TextView> entry;
  std::string full = entryDocument("/a").text();
  decode(reader.read(full), entry);
  std::string sparse = plainEntryDocument("/b").text();
  decode(reader.read(sparse), entry);
  EXPECT_EQ(ownedEntry(entry), decodeEntry(plainEntryDocument("/b")));
}

constexpr Edits sizing(std::string_view size, std::string_view storedSize) {
  return {{"/size", size}, {"/storedSize", storedSize}, {"/sparseExtents", "[]"}};
}

constexpr Edits attribute(std::string_view name, std::string_view value) {
  return {{"/extendedAttributes/1/name", name}, {"/extendedAttributes/1/base64Value", value}};
}

constexpr Edits attributes(std::string_view first, std::string_view second) {
  return {{"/extendedAttributes/0/name", first}, {"/extendedAttributes/1/name", second}};
}

constexpr Edits part(std::string_view key, std::string_view offset, std::string_view size) {
  return {{"/payloadParts/1/key", key},
          {"/payloadParts/1/offset", offset},
          {"/payloadParts/1/size", size}};
}

/// Adds an extent to a file of 1000 bytes, of which 900 are stored.
constexpr Edits extent(std::string_view logicalOffset, std::string_view storedOffset,
                       std::string_view length) {
  return {{"/sparseExtents/0/logicalOffset", logicalOffset},
          {"/sparseExtents/0/storedOffset", storedOffset},
          {"/sparseExtents/0/length", length},
          {"/sparseExtents/+", "{'logicalOffset':100,'storedOffset':0,'length':900}"}};
}

constexpr ManifestCase entryCases[] = {
    {"pathWithTrailingSlash", {{"/absolutePath", "'/Users/a/'"}}, notCanonical},
    {"pathWithDotDot", {{"/absolutePath", "'/Users/a/../b'"}}, notCanonical},
    {"pathRelative", {{"/absolutePath", "'Users/a'"}}, notCanonical},
    {"pathEmpty", {{"/absolutePath", "''"}}, notCanonical},
    {"pathWithNUL", {{"/absolutePath", R"('/Users/a\u0000b')"}}, notCanonical},
    {"nothingIsReadAfterABadPath", {{"", "{'absolutePath':'a'}"}}, notCanonical},
    {"sizesOfNothing", sizing("0", "0")},
    {"sizeNegative", sizing("-1", "0"), negativeSize},
    {"storedSizeNegative", sizing("0", "-1"), negativeStoredSize},
    {"sizeNegativeAndStoredSizeMissing", {{"/size", "-1"}, {"/storedSize", ""}}, negativeSize},
    {"checksumTooShort", {{"/contentChecksumSHA256", "'0'"}}, noChecksum},
    {"checksumEmpty", {{"/contentChecksumSHA256", "''"}}, noChecksum},
    {"noModificationTime", {{"/hasModificationTimeMetadata", "false"}}, incomplete},
    {"noOwnership", {{"/hasOwnershipMetadata", "false"}}, incomplete},
    {"noPermissions", {{"/hasPOSIXPermissionsMetadata", "false"}}, incomplete},
    {"noFlags", {{"/hasBSDFlagsMetadata", "false"}}, incomplete},
    {"noAttributes", {{"/hasExtendedAttributesMetadata", "false"}}, incomplete},
    {"noACL", {{"/hasACLMetadata", "false"}}, incomplete},
    {"noACLAndNoAttributesListed",
     {{"/hasACLMetadata", "false"}, {"/extendedAttributes", "[]"}},
     incomplete},
    {"noAttributesListed", {{"/extendedAttributes", "[]"}}},
    {"emptyACL", {{"/aclText", "''"}}},
    {"attributeTwice",
     {{"/extendedAttributes/+", "{'name':'com.example.a','base64Value':''}"}},
     incomplete},
    {"attributeTwiceInOtherNormalForm", attributes("'e\u0301'", "'\u00e9'"), incomplete},
    {"attributesThatDifferInCase", attributes("'a'", "'A'")},
    {"attributeWithoutName", attribute("''", "''"), incomplete},
    {"attributeWithNUL", attribute(R"('a\u0000')", "''"), incomplete},
    {"attributeOfOneByte", attribute("'a'", "'QQ=='")},
    {"attributeWithShortPadding", attribute("'a'", "'QQ='"), incomplete},
    {"attributeWithLineBreak", attribute("'a'", R"('QUJD\nQUJD')"), incomplete},
    {"hardLinkRelative", {{"/hardLinkPrimaryPath", "'a'"}}, unsafeHardLink},
    {"hardLinkWithTrailingSlash", {{"/hardLinkPrimaryPath", "'/a/'"}}, unsafeHardLink},
    {"hardLinkEmpty", {{"/hardLinkPrimaryPath", "''"}}, unsafeHardLink},
    {"hardLinkToItself", {{"/hardLinkPrimaryPath", "'/Users/a/Docs'"}}},
    {"partUpToTheGreatestOffset", part("'k'", "9223372036854775806", "1")},
    {"partBeyondTheGreatestOffset", part("'k'", "9223372036854775807", "1"), unsafePart},
    {"partEmptyAtTheGreatestOffset", part("'k'", "9223372036854775807", "0")},
    {"partOfTheGreatestSize", part("'k'", "0", "9223372036854775807")},
    {"partOffsetNegative", part("'k'", "-1", "1"), unsafePart},
    {"partSizeNegative", part("'k'", "0", "-1"), unsafePart},
    {"partOffsetLeast", part("'k'", "-9223372036854775808", "9223372036854775807"), unsafePart},
    {"partKeyEmpty", part("''", "0", "1"), unsafePart},
    {"partKeyAbsolute", part("'/k'", "0", "1"), unsafePart},
    {"partKeyWithDotDot", part("'a/../k'", "0", "1"), unsafePart},
    {"partKeyWithNUL", part(R"('a\u0000')", "0", "1"), unsafePart},
    {"partsOverlap", part("'k'", "0", "1000")},
    {"payloadKeyHidden", {{"/payloadKey", "'a/.b'"}}},
    {"payloadKeyBackslash", {{"/payloadKey", R"('a\\b')"}}},
    {"payloadKeyEmpty", {{"/payloadKey", "''"}}, unsafeKey},
    {"payloadKeyAbsolute", {{"/payloadKey", "'/a'"}}, unsafeKey},
    {"payloadKeyDotDot", {{"/payloadKey", "'a/../b'"}}, unsafeKey},
    {"extentUpToBothEnds", extent("500", "400", "500")},
    {"extentBeyondTheSize", extent("501", "400", "500"), outsideExtent},
    {"extentBeyondTheStoredSize", extent("500", "401", "500"), outsideExtent},
    {"extentEmptyAtTheEnds", extent("1000", "900", "0")},
    {"extentOffsetNegative", extent("-1", "0", "1"), outsideExtent},
    {"extentStoredOffsetNegative", extent("0", "-1", "1"), outsideExtent},
    {"extentLengthNegative", extent("0", "0", "-1"), outsideExtent},
    {"extentOverflows", extent("9223372036854775807", "0", "1"), outsideExtent},
    {"extentStoredOverflows", extent("0", "9223372036854775807", "1"), outsideExtent},
    {"extentOfTheGreatestLength", extent("1", "0", "9223372036854775807"), outsideExtent},
    {"directoryWithAPayload", {{"/kind", "'directory'"}}},
    {"linkWithoutATarget", {{"/kind", "'symlink'"}, {"/symlinkTarget", ""}}},
};

TEST(EntryDecoding, followsTheRulesWithBothReaders) {
  for (const ManifestCase& row : entryCases) {
    expectVerdict(row, "/rootMetadata");
  }
}

/// Attributes with these names and empty values.
std::string attributesNamed(const std::vector<std::string>& names) {
  JSONTree::Array attributes;
  for (const std::string& name : names) {
    attributes.push_back(JSONTree::Object{{"name", '\'' + name + '\''}, {"base64Value", "''"}});
  }
  return JSONTree(attributes).text();
}

// The reader checks many or long names differently from few short ones.
TEST(EntryDecoding, refusesADuplicateAmongManyOrLongAttributes) {
  const std::string longName(300, 'x');
  std::vector<std::string> names;
  for (int number = 0; number < 40; ++number) {
    names.push_back("attribute " + std::to_string(number));
  }
  names.emplace_back("another");
  const std::string many = attributesNamed(names);
  names.back() = names[7];
  const std::string manyAndOneTwice = attributesNamed(names);
  const std::string longNames = attributesNamed({longName + "a", longName + "b"});
  const std::string longNameTwice = attributesNamed({longName + "\u00e9", longName + "e\u0301"});
  const ManifestCase rows[] = {
      {"many", {{"/extendedAttributes", many}}},
      {"twiceAmongMany", {{"/extendedAttributes", manyAndOneTwice}}, incomplete},
      {"longNames", {{"/extendedAttributes", longNames}}},
      {"longNameTwice", {{"/extendedAttributes", longNameTwice}}, incomplete},
  };
  for (const ManifestCase& row : rows) {
    expectVerdict(row, "/rootMetadata");
  }
}

}  // namespace
}  // namespace velmora::internal

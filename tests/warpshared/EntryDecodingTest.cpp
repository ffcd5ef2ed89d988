#include "json/JSONReader.h"
#include "tests/support/RowName.h"
#include "tests/warpshared/SharedWarpDocuments.h"
#include "warpshared/VelmoraWarpSharedManifest.h"

#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <string>
#include <vector>

namespace velmora {
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

TEST(EntryDecoding, leavesNothingOfTheEntryBefore) {
  JSONReader reader;
  WarpSharedEntry<TextView> entry;
  std::string full = entryDocument("/a").text();
  decode(reader.read(full), entry);
  JSONTree document = entryDocument("/b");
  for (const char* key :
       {"statusChangeTimeNanoseconds", "birthTimeNanoseconds", "aclText", "symlinkTarget",
        "payloadKey", "uploadStrategy", "multipartPartCount", "multipartPartSizeBytes",
        "contentChecksumSHA256", "hardLinkIdentity", "hardLinkPrimaryPath"}) {
    document.erase(key);
  }
  for (const char* key : {"extendedAttributes", "payloadParts", "sparseExtents"}) {
    document[key] = "[]";
  }
  std::string sparse = document.text();
  decode(reader.read(sparse), entry);
  EXPECT_EQ(ownedEntry(entry), decodeEntry(document));
}

struct EntryCase {
  const char* name;
  std::function<void(JSONTree&)> change;
  Verdict verdict = valid;
};

class EntryRules : public testing::TestWithParam<EntryCase> {};

TEST_P(EntryRules, acceptOrRefuse) {
  JSONTree document = entryDocument("/a");
  GetParam().change(document);
  EXPECT_EQ(verdictOf([&] { static_cast<void>(decodeEntry(document)); }), GetParam().verdict);
}

std::function<void(JSONTree&)> setting(const char* key, const std::string& text) {
  return [=](JSONTree& entry) { entry[key] = text; };
}

Verdict refusedAt(const char* key, const char* message) {
  return {"dataCorrupted", {key}, message};
}

const Verdict notCanonical =
    refusedAt("absolutePath", "Shared Warp entries require canonical absolute paths.");
const Verdict negativeSize = refusedAt("size", "Shared Warp entry sizes cannot be negative.");
const Verdict negativeStoredSize =
    refusedAt("storedSize", "Shared Warp stored sizes cannot be negative.");
const Verdict noChecksum =
    refusedAt("contentChecksumSHA256", "Shared Warp checksums must be SHA-256 hex values.");
const Verdict incomplete =
    refusedAt("extendedAttributes", "Shared Warp entries require complete current metadata.");
const Verdict unsafeHardLink = refusedAt(
    "hardLinkPrimaryPath", "Shared Warp hard-link paths must be canonical absolute paths.");
const Verdict unsafePart =
    refusedAt("payloadParts", "Shared Warp payload parts contain an unsafe range or object key.");
const Verdict unsafeKey =
    refusedAt("payloadKey", "Shared Warp payload keys must be safe relative object keys.");
const Verdict outsideExtent =
    refusedAt("sparseExtents", "Shared Warp sparse extents fall outside the stored file range.");

/// A change to a file without extents of this size, stored so.
std::function<void(JSONTree&)> sizing(const char* size, const char* storedSize) {
  return [=](JSONTree& entry) {
    entry["size"] = size;
    entry["storedSize"] = storedSize;
    entry["sparseExtents"] = "[]";
  };
}

std::function<void(JSONTree&)> attributes(
    std::vector<std::pair<std::string, std::string>> attributes) {
  return [attributes = std::move(attributes)](JSONTree& entry) {
    JSONTree::Array elements;
    for (const auto& [name, value] : attributes) {
      elements.push_back(
          JSONTree::Object{{"name", '"' + name + '"'}, {"base64Value", '"' + value + '"'}});
    }
    entry["extendedAttributes"] = elements;
  };
}

std::vector<std::pair<std::string, std::string>> manyAttributes(const char* last) {
  std::vector<std::pair<std::string, std::string>> many;
  for (int number = 0; number < 40; ++number) {
    many.emplace_back("attribute " + std::to_string(number), "");
  }
  many.emplace_back(last, "");
  return many;
}

std::function<void(JSONTree&)> part(const char* key, const char* offset, const char* size) {
  return [=](JSONTree& entry) {
    entry["payloadParts"].elements().push_back(JSONTree::Object{
        {"key", '"' + std::string(key) + '"'}, {"offset", offset}, {"size", size}});
  };
}

/// A change to a file of 1000 bytes, 900 of them stored, with one more extent.
std::function<void(JSONTree&)> extent(const char* logicalOffset, const char* storedOffset,
                                      const char* length) {
  return [=](JSONTree& entry) {
    entry["sparseExtents"].elements().push_back(JSONTree::Object{
        {"logicalOffset", logicalOffset}, {"storedOffset", storedOffset}, {"length", length}});
  };
}

const std::string digits64(64, '0');

const std::vector<EntryCase> entryCases = {
    {"everyField", [](JSONTree&) {}},
    {"pathOfTheRoot", setting("absolutePath", "\"/\"")},
    {"pathWithTrailingSlash", setting("absolutePath", "\"/Users/a/\""), notCanonical},
    {"pathWithDot", setting("absolutePath", "\"/Users/./a\""), notCanonical},
    {"pathWithDotDot", setting("absolutePath", "\"/Users/a/../b\""), notCanonical},
    {"relativePath", setting("absolutePath", "\"Users/a\""), notCanonical},
    {"emptyPath", setting("absolutePath", "\"\""), notCanonical},
    {"pathWithNUL", setting("absolutePath", "\"/Users/a\\u0000b\""), notCanonical},
    {"nothingIsReadBehindABadPath",
     [](JSONTree& entry) {
       entry = JSONTree::Object{{"absolutePath", "\"a\""}};
     },
     notCanonical},
    {"sizesOfNothing", sizing("0", "0")},
    {"sizeNegative", sizing("-1", "0"), negativeSize},
    {"storedSizeNegative", sizing("0", "-1"), negativeStoredSize},
    {"sizeNegativeAndStoredSizeMissing",
     [](JSONTree& entry) {
       entry["size"] = "-1";
       entry.erase("storedSize");
     },
     negativeSize},
    {"checksumInMixedCase",
     setting("contentChecksumSHA256", '"' + std::string(32, 'a') + std::string(32, 'F') + '"')},
    {"checksumTooShort", setting("contentChecksumSHA256", '"' + digits64.substr(1) + '"'),
     noChecksum},
    {"checksumTooLong", setting("contentChecksumSHA256", '"' + digits64 + "0\""), noChecksum},
    {"checksumWithG", setting("contentChecksumSHA256", '"' + digits64.substr(1) + "g\""),
     noChecksum},
    {"checksumWithNewline", setting("contentChecksumSHA256", '"' + digits64 + "\\n\""), noChecksum},
    {"checksumEmpty", setting("contentChecksumSHA256", "\"\""), noChecksum},
    {"noModificationTime", setting("hasModificationTimeMetadata", "false"), incomplete},
    {"noOwnership", setting("hasOwnershipMetadata", "false"), incomplete},
    {"noPermissions", setting("hasPOSIXPermissionsMetadata", "false"), incomplete},
    {"noFlags", setting("hasBSDFlagsMetadata", "false"), incomplete},
    {"noAttributes", setting("hasExtendedAttributesMetadata", "false"), incomplete},
    {"noACL", setting("hasACLMetadata", "false"), incomplete},
    {"noACLAndNoAttributesListed",
     [](JSONTree& entry) {
       entry["hasACLMetadata"] = "false";
       entry["extendedAttributes"] = "[]";
     },
     incomplete},
    {"noAttributesListed", attributes({})},
    {"emptyACL", setting("aclText", "\"\"")},
    {"attributeTwice", attributes({{"com.example.a", ""}, {"b", ""}, {"com.example.a", "QQ=="}}),
     incomplete},
    {"attributeTwiceInOtherNormalForm", attributes({{"e\u0301", ""}, {"\u00e9", ""}}), incomplete},
    {"attributesThatDifferInCase", attributes({{"a", ""}, {"A", ""}})},
    {"manyAttributes", attributes(manyAttributes("another"))},
    {"attributeTwiceAmongMany", attributes(manyAttributes("attribute 7")), incomplete},
    {"attributeTwiceWithALongName",
     attributes({{std::string(300, 'x') + "\u00e9", ""}, {std::string(300, 'x') + "e\u0301", ""}}),
     incomplete},
    {"attributesWithLongNames",
     attributes({{std::string(300, 'x') + "a", ""}, {std::string(300, 'x') + "b", ""}})},
    {"attributeWithoutName", attributes({{"", ""}}), incomplete},
    {"attributeWithNUL", attributes({{"a\\u0000", ""}}), incomplete},
    {"valueOfOneByte", attributes({{"a", "QQ=="}})},
    {"valueWithShortPadding", attributes({{"a", "QQ="}}), incomplete},
    {"valueWithBlank", attributes({{"a", "Q Q=="}}), incomplete},
    {"valueWithLineBreak", attributes({{"a", "QUJD\\nQUJD"}}), incomplete},
    {"hardLinkRelative", setting("hardLinkPrimaryPath", "\"a\""), unsafeHardLink},
    {"hardLinkWithTrailingSlash", setting("hardLinkPrimaryPath", "\"/a/\""), unsafeHardLink},
    {"hardLinkEmpty", setting("hardLinkPrimaryPath", "\"\""), unsafeHardLink},
    {"hardLinkToItself", setting("hardLinkPrimaryPath", "\"/a\"")},
    {"partUpToTheGreatestOffset", part("k", "9223372036854775806", "1")},
    {"partBeyondTheGreatestOffset", part("k", "9223372036854775807", "1"), unsafePart},
    {"emptyPartAtTheGreatestOffset", part("k", "9223372036854775807", "0")},
    {"greatestPart", part("k", "0", "9223372036854775807")},
    {"partOffsetNegative", part("k", "-1", "1"), unsafePart},
    {"partSizeNegative", part("k", "0", "-1"), unsafePart},
    {"partOffsetLeast", part("k", "-9223372036854775808", "9223372036854775807"), unsafePart},
    {"partKeyEmpty", part("", "0", "1"), unsafePart},
    {"partKeyAbsolute", part("/k", "0", "1"), unsafePart},
    {"partKeyWithDotDot", part("a/../k", "0", "1"), unsafePart},
    {"partKeyWithNUL", part("a\\u0000", "0", "1"), unsafePart},
    {"partsOverlap", part("k", "0", "1000")},
    {"payloadKeyOfTwo", setting("payloadKey", "\"a/b\"")},
    {"payloadKeyHidden", setting("payloadKey", "\"a/.b\"")},
    {"payloadKeyDots", setting("payloadKey", "\"a/...\"")},
    {"payloadKeyBackslash", setting("payloadKey", "\"a\\\\b\"")},
    {"payloadKeyEmpty", setting("payloadKey", "\"\""), unsafeKey},
    {"payloadKeyAbsolute", setting("payloadKey", "\"/a\""), unsafeKey},
    {"payloadKeyTrailingSlash", setting("payloadKey", "\"a/\""), unsafeKey},
    {"payloadKeyDoubleSlash", setting("payloadKey", "\"a//b\""), unsafeKey},
    {"payloadKeyDotFirst", setting("payloadKey", "\"./a\""), unsafeKey},
    {"payloadKeyDot", setting("payloadKey", "\"a/./b\""), unsafeKey},
    {"payloadKeyDotDot", setting("payloadKey", "\"a/../b\""), unsafeKey},
    {"payloadKeyOnlyDotDot", setting("payloadKey", "\"..\""), unsafeKey},
    {"extentUpToBothEnds", extent("500", "400", "500")},
    {"extentBeyondTheSize", extent("501", "400", "500"), outsideExtent},
    {"extentBeyondTheStoredSize", extent("500", "401", "500"), outsideExtent},
    {"emptyExtentAtTheEnds", extent("1000", "900", "0")},
    {"extentOffsetNegative", extent("-1", "0", "1"), outsideExtent},
    {"extentStoredOffsetNegative", extent("0", "-1", "1"), outsideExtent},
    {"extentLengthNegative", extent("0", "0", "-1"), outsideExtent},
    {"extentOverflows", extent("9223372036854775807", "0", "1"), outsideExtent},
    {"extentStoredOverflows", extent("0", "9223372036854775807", "1"), outsideExtent},
    {"extentOfTheGreatestLength", extent("1", "0", "9223372036854775807"), outsideExtent},
    {"directoryWithAPayload", setting("kind", "\"directory\"")},
    {"linkWithoutATarget",
     [](JSONTree& entry) {
       entry["kind"] = "\"symlink\"";
       entry.erase("symlinkTarget");
     }},
    {"unknownKind", setting("kind", "\"socket\""),
     refusedAt("kind", "The text is none of the words that may stand here.")},
    {"unknownEncoding", setting("payloadEncoding", "\"zlib\""),
     refusedAt("payloadEncoding", "The text is none of the words that may stand here.")},
    {"unknownNamespace",
     [](JSONTree& entry) { entry["payloadParts"][0]["namespace"] = "\"archive\""; },
     {"dataCorrupted",
      {"payloadParts", std::size_t{0}, "namespace"},
      "The text is none of the words that may stand here."}},
    {"userOutOfRange", setting("ownerUserID", "-1"),
     refusedAt("ownerUserID", "The number does not fit into 32 bits without a sign.")},
    {"permissionsOutOfRange", setting("posixPermissions", "70000"),
     refusedAt("posixPermissions", "The number does not fit into 16 bits without a sign.")},
};

INSTANTIATE_TEST_SUITE_P(Cases, EntryRules, testing::ValuesIn(entryCases), RowName());

}  // namespace
}  // namespace velmora

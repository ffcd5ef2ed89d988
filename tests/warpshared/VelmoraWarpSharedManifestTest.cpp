#include "tests/warpshared/SharedWarpDocuments.h"
#include "warpshared/ManifestDecoding.h"
#include "warpshared/VelmoraWarpSharedManifest.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <functional>
#include <string>
#include <unordered_set>
#include <vector>

namespace velmora {
namespace {

VelmoraWarpSharedManifest decoded(std::string bytes) { return ManifestDecoder().decode(bytes); }

TEST(SharedManifest, encodesToTheKeysOfItsTableInTheirOrder) {
  JSONTree document = manifestDocument();
  document["uploadedAt"] = "\"2025-03-01T11:05:00Z\"";
  document["entries"][1].erase("hardLinkPrimaryPath");
  EXPECT_EQ(encodeManifest(decoded(document.text())), document.text());
}

TEST(SharedManifest, leavesOutWhatIsAbsent) {
  JSONTree document = manifestDocument();
  for (const char* key : {"uploadedAt", "replacedAt", "failureDescription"}) {
    document[key] = "null";
  }
  const std::string encoded = encodeManifest(decoded(document.text()));
  EXPECT_EQ(encoded.find("null"), std::string::npos);
  EXPECT_EQ(encoded.find("uploadedAt"), std::string::npos);
}

TEST(SharedManifest, decodesToWhatWasEncoded) {
  JSONTree document = manifestDocument();
  document["displayName"] = R"("\u0000\"\\\/\b\f\n\r\té\ud83d\ude00\u001f")";
  document["createdAt"] = "\"0000-01-01T00:00:00+23:59\"";
  const VelmoraWarpSharedManifest manifest = decoded(document.text());
  EXPECT_EQ(decoded(encodeManifest(manifest)), manifest);
}

WarpSharedEntries entriesOf(const VelmoraWarpSharedManifest& manifest,
                            const std::vector<std::size_t>& indexes) {
  WarpSharedEntries entries;
  for (const std::size_t index : indexes) {
    entries.append(manifest.entries[index]);
  }
  return entries;
}

using Change = std::function<void(VelmoraWarpSharedManifest&)>;

const std::vector<Change> changes = {
    [](auto& manifest) { manifest.version = 5; },
    [](auto& manifest) { manifest.warpID = "w-1"; },
    [](auto& manifest) { manifest.deviceID = ""; },
    [](auto& manifest) { manifest.manifestKey = ""; },
    [](auto& manifest) { manifest.originalFolderPath = ""; },
    [](auto& manifest) { manifest.displayName = ""; },
    [](auto& manifest) { manifest.createdAt.secondsSinceReferenceDate += 1; },
    [](auto& manifest) { manifest.uploadedAt.reset(); },
    [](auto& manifest) { manifest.replacedAt.reset(); },
    [](auto& manifest) { manifest.status = VelmoraWarpSharedStatus::failed; },
    [](auto& manifest) { manifest.failureDescription.reset(); },
    [](auto& manifest) { manifest.verificationSampleRelativePaths.pop_back(); },
    [](auto& manifest) { manifest.entries = entriesOf(manifest, {0}); },
    [](auto& manifest) {
      manifest.entries = entriesOf(manifest, {1, 0});
    },
    [](auto& manifest) { manifest.rootMetadata.relativePath = ""; },
    [](auto& manifest) { manifest.rootMetadata.displayName = ""; },
    [](auto& manifest) { manifest.rootMetadata.kind = VelmoraWarpSharedEntryKind::symlink; },
    [](auto& manifest) { manifest.rootMetadata.size += 1; },
    [](auto& manifest) { manifest.rootMetadata.modificationTimeNanoseconds += 1; },
    [](auto& manifest) { manifest.rootMetadata.statusChangeTimeNanoseconds.reset(); },
    [](auto& manifest) { manifest.rootMetadata.birthTimeNanoseconds.reset(); },
    [](auto& manifest) { manifest.rootMetadata.ownerUserID += 1; },
    [](auto& manifest) { manifest.rootMetadata.ownerGroupID += 1; },
    [](auto& manifest) { manifest.rootMetadata.posixPermissions = 0; },
    [](auto& manifest) { manifest.rootMetadata.bsdFlags += 1; },
    [](auto& manifest) { manifest.rootMetadata.hasModificationTimeMetadata = false; },
    [](auto& manifest) { manifest.rootMetadata.hasOwnershipMetadata = false; },
    [](auto& manifest) { manifest.rootMetadata.hasPOSIXPermissionsMetadata = false; },
    [](auto& manifest) { manifest.rootMetadata.hasBSDFlagsMetadata = false; },
    [](auto& manifest) { manifest.rootMetadata.hasExtendedAttributesMetadata = false; },
    [](auto& manifest) { manifest.rootMetadata.hasACLMetadata = false; },
    [](auto& manifest) { manifest.rootMetadata.extendedAttributes[0].name = "other"; },
    [](auto& manifest) { manifest.rootMetadata.extendedAttributes[1].base64Value = "QQ=="; },
    [](auto& manifest) { manifest.rootMetadata.aclText.reset(); },
    [](auto& manifest) { manifest.rootMetadata.symlinkTarget.reset(); },
    [](auto& manifest) { manifest.rootMetadata.payloadKey.reset(); },
    [](auto& manifest) { manifest.rootMetadata.payloadParts[0].key = "other"; },
    [](auto& manifest) { manifest.rootMetadata.payloadParts[0].offset += 1; },
    [](auto& manifest) { manifest.rootMetadata.payloadParts[0].size += 1; },
    [](auto& manifest) { manifest.rootMetadata.payloadParts[0].payloadNamespace.reset(); },
    [](auto& manifest) { manifest.rootMetadata.uploadStrategy.reset(); },
    [](auto& manifest) { manifest.rootMetadata.multipartPartCount.reset(); },
    [](auto& manifest) { manifest.rootMetadata.multipartPartSizeBytes.reset(); },
    [](auto& manifest) { manifest.rootMetadata.contentChecksumSHA256.reset(); },
    [](auto& manifest) {
      manifest.rootMetadata.payloadEncoding = VelmoraWarpSharedPayloadEncoding::lzfse;
    },
    [](auto& manifest) { manifest.rootMetadata.storedSize += 1; },
    [](auto& manifest) { manifest.rootMetadata.sparseExtents[0].logicalOffset += 1; },
    [](auto& manifest) { manifest.rootMetadata.sparseExtents[0].storedOffset += 1; },
    [](auto& manifest) { manifest.rootMetadata.sparseExtents[0].length += 1; },
    [](auto& manifest) { manifest.rootMetadata.hardLinkIdentity->deviceID += 1; },
    [](auto& manifest) { manifest.rootMetadata.hardLinkIdentity->inode += 1; },
    [](auto& manifest) { manifest.rootMetadata.hardLinkPrimaryPath.reset(); },
};

TEST(SharedManifest, isAnotherWithAnyOtherField) {
  const VelmoraWarpSharedManifest manifest = decoded(manifestDocument().text());
  for (std::size_t number = 0; number < changes.size(); ++number) {
    VelmoraWarpSharedManifest other = manifest;
    EXPECT_EQ(other, manifest);
    changes[number](other);
    EXPECT_NE(other, manifest) << number;
  }
}

TEST(SharedManifest, isEqualInOtherNormalForms) {
  JSONTree composed = manifestDocument();
  JSONTree decomposed = manifestDocument();
  composed["displayName"] = "\"\u00e9\"";
  decomposed["displayName"] = "\"e\u0301\"";
  composed["entries"][0]["aclText"] = "\"\u212a\"";
  decomposed["entries"][0]["aclText"] = "\"K\"";
  EXPECT_EQ(decoded(composed.text()), decoded(decomposed.text()));
}

TEST(SharedManifest, isEqualWhenItsDatesAreTheSameInstants) {
  JSONTree other = manifestDocument();
  other["createdAt"] = "\"2025-03-01T13:30:00+01:30\"";
  EXPECT_EQ(decoded(other.text()), decoded(manifestDocument().text()));
}

template <class Enumeration>
std::vector<std::string> rawValuesInOrder(std::vector<Enumeration> cases) {
  std::vector<std::string> words;
  int number = 0;
  for (const Enumeration value : cases) {
    EXPECT_EQ(static_cast<int>(value), number++);
    words.emplace_back(rawValue(value));
  }
  return words;
}

using Words = std::vector<std::string>;

TEST(Enumerations, haveTheirWordsInTheOrderOfTheirCases) {
  using enum VelmoraWarpSharedStatus;
  EXPECT_EQ(rawValuesInOrder<VelmoraWarpSharedStatus>(
                {uploading, verified, replaced, failed, needsAttention}),
            (Words{"uploading", "verified", "replaced", "failed", "needsAttention"}));
  using enum VelmoraWarpSharedEntryKind;
  EXPECT_EQ(rawValuesInOrder<VelmoraWarpSharedEntryKind>({file, directory, symlink}),
            (Words{"file", "directory", "symlink"}));
  using enum VelmoraWarpSharedPayloadEncoding;
  EXPECT_EQ(rawValuesInOrder<VelmoraWarpSharedPayloadEncoding>({raw, lzfse}),
            (Words{"raw", "lzfse"}));
  using enum VelmoraPayloadNamespace;
  EXPECT_EQ(rawValuesInOrder<VelmoraPayloadNamespace>({backup, warp}), (Words{"backup", "warp"}));
}

TEST(Enumerations, canBeHashed) {
  const std::unordered_set<VelmoraWarpSharedStatus> statuses = {VelmoraWarpSharedStatus::failed,
                                                                VelmoraWarpSharedStatus::failed};
  EXPECT_EQ(statuses.size(), 1);
}

}  // namespace
}  // namespace velmora

#include "tests/json/Faults.h"
#include "tests/warpshared/RecordsAtTheirEnds.h"
#include "tests/warpshared/SharedWarpDocuments.h"
#include "warpshared/records/FieldLists.h"
#include "warpshared/records/VelmoraWarpSharedManifest.h"
#include "warpshared/writing/ManifestEncoding.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <tuple>

namespace velmora::internal {
namespace {

TEST(SharedManifest, encodesItsKeysInTheOrderOfItsTable) {
  JSONTree document = manifestDocument();
  document["uploadedAt"] = "'2025-03-01T11:05:00Z'";
  document.at("/entries/1").erase("hardLinkPrimaryPath");
  EXPECT_EQ(encodeManifest(decodedManifest(document.text())), document.text());
}

TEST(SharedManifest, leavesOutWhatIsAbsent) {
  JSONTree document = manifestDocument();
  for (const char* key : {"uploadedAt", "replacedAt", "failureDescription"}) {
    document[key] = "null";
  }
  const std::string encoded = encodeManifest(decodedManifest(document.text()));
  EXPECT_EQ(encoded.find("null"), std::string::npos);
  EXPECT_EQ(encoded.find("uploadedAt"), std::string::npos);
}

TEST(SharedManifest, readsBackWhenEncoded) {
  JSONTree document = manifestDocument();
  document["displayName"] = R"("\u0000\"\\\/\b\f\n\r\té\ud83d\ude00\u001f")";
  document["createdAt"] = "'0000-01-01T00:00:00+23:59'";
  const VelmoraWarpSharedManifest manifest = decodedManifest(document.text());
  EXPECT_EQ(decodedManifest(encodeManifest(manifest)), manifest);
}

TEST(SharedManifest, isNotWrittenWithAValueThatJSONCannotHold) {
  VelmoraWarpSharedManifest manifest;
  manifest.replacedAt = Date{std::numeric_limits<double>::quiet_NaN()};
  EXPECT_EQ(encodingFaultOf([&] { return encodeManifest(manifest); }),
            "replacedAt: The date is not in the years 0000 to 9999 of any time zone.");
  manifest.replacedAt.reset();
  manifest.entries.append(VelmoraWarpSharedEntry());
  VelmoraWarpSharedEntry entry;
  entry.payloadParts.emplace_back().key = "\xFF";
  manifest.entries.append(entry);
  EXPECT_EQ(encodingFaultOf([&] { return encodeManifest(manifest); }),
            "entries.1.payloadParts.0.key: The text is not UTF-8.");
  manifest.rootMetadata.kind = static_cast<VelmoraWarpSharedEntryKind>(3);
  EXPECT_EQ(encodingFaultOf([&] { return encodeManifest(manifest); }),
            "rootMetadata.kind: The value is none of its enumeration.");
}

/// Expects a record to be unequal after a change of any one field to its maximum.
template <RecordWithFields Record>
void expectInequalityByAnyField() {
  const auto expectAnother = [](const auto& field) {
    Record other{};
    EXPECT_EQ(other, Record{});
    put(other.*field.member, End::maximum);
    EXPECT_NE(other, Record{}) << field.key;
    EXPECT_EQ(other, Record(other));
  };
  std::apply([&](const auto&... fields) { (expectAnother(fields), ...); },
             RecordFields<Record>::list);
}

TEST(SharedRecords, areUnequalWhenAnyFieldDiffers) {
  expectInequalityByAnyField<VelmoraWarpSharedManifest>();
  expectInequalityByAnyField<VelmoraWarpSharedEntry>();
  expectInequalityByAnyField<VelmoraWarpSharedExtendedAttribute>();
  expectInequalityByAnyField<VelmoraWarpSharedPayloadPart>();
  expectInequalityByAnyField<VelmoraWarpSharedSparseExtent>();
  expectInequalityByAnyField<VelmoraWarpSharedHardLinkIdentity>();
  expectInequalityByAnyField<VelmoraWarpSharedDestroyedManifestIndex>();
  expectInequalityByAnyField<VelmoraWarpSharedDestroyedManifestRecord>();
}

TEST(SharedManifest, isEqualInOtherNormalForms) {
  JSONTree composed = manifestDocument();
  JSONTree decomposed = manifestDocument();
  composed["displayName"] = "'\u00e9'";
  decomposed["displayName"] = "'e\u0301'";
  composed.at("/entries/0/aclText") = "'\u212a'";
  decomposed.at("/entries/0/aclText") = "'K'";
  EXPECT_EQ(decodedManifest(composed.text()), decodedManifest(decomposed.text()));
}

TEST(SharedManifest, isEqualWhenItsDatesAreTheSameInstants) {
  JSONTree other = manifestDocument();
  other["createdAt"] = "'2025-03-01T13:30:00+01:30'";
  EXPECT_EQ(decodedManifest(other.text()), decodedManifest(manifestDocument().text()));
}

TEST(Enumerations, haveTheirWords) {
  using enum VelmoraWarpSharedStatus;
  EXPECT_EQ(rawValue(uploading), "uploading");
  EXPECT_EQ(rawValue(verified), "verified");
  EXPECT_EQ(rawValue(replaced), "replaced");
  EXPECT_EQ(rawValue(failed), "failed");
  EXPECT_EQ(rawValue(needsAttention), "needsAttention");
  using enum VelmoraWarpSharedEntryKind;
  EXPECT_EQ(rawValue(file), "file");
  EXPECT_EQ(rawValue(directory), "directory");
  EXPECT_EQ(rawValue(symlink), "symlink");
  EXPECT_EQ(rawValue(VelmoraWarpSharedPayloadEncoding::raw), "raw");
  EXPECT_EQ(rawValue(VelmoraWarpSharedPayloadEncoding::lzfse), "lzfse");
  EXPECT_EQ(rawValue(VelmoraPayloadNamespace::backup), "backup");
  EXPECT_EQ(rawValue(VelmoraPayloadNamespace::warp), "warp");
}

}  // namespace
}  // namespace velmora::internal

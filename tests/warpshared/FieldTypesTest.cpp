// Every field of every record with every kind of value: missing, null, of another type, at and
// beyond its boundaries.

#include "tests/warpshared/SharedWarpDocuments.h"
#include "warpshared/DestroyedManifestIndex.h"
#include "warpshared/ManifestDecoding.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <map>
#include <string>
#include <vector>

namespace velmora {
namespace {

enum class FieldType {
  text,
  word,
  date,
  boolean,
  int64,
  uint64,
  uint32,
  uint16,
  list,
  record,
};

struct FieldDescription {
  const char* key;
  FieldType type;
  bool isRequired = true;
};

using enum FieldType;

const std::vector<FieldDescription> manifestFields = {
    {"version", int64},
    {"warpID", text},
    {"deviceID", text},
    {"manifestKey", text},
    {"originalFolderPath", text},
    {"displayName", text},
    {"createdAt", date},
    {"uploadedAt", date, false},
    {"replacedAt", date, false},
    {"status", word},
    {"failureDescription", text, false},
    {"verificationSampleAbsolutePaths", list},
    {"rootMetadata", record},
    {"entries", list},
};

const std::vector<FieldDescription> entryFields = {
    {"absolutePath", text},
    {"displayName", text},
    {"kind", word},
    {"size", int64},
    {"modificationTimeNanoseconds", int64},
    {"statusChangeTimeNanoseconds", int64, false},
    {"birthTimeNanoseconds", int64, false},
    {"ownerUserID", uint32},
    {"ownerGroupID", uint32},
    {"posixPermissions", uint16},
    {"bsdFlags", uint32},
    {"hasModificationTimeMetadata", boolean},
    {"hasOwnershipMetadata", boolean},
    {"hasPOSIXPermissionsMetadata", boolean},
    {"hasBSDFlagsMetadata", boolean},
    {"hasExtendedAttributesMetadata", boolean},
    {"hasACLMetadata", boolean},
    {"extendedAttributes", list},
    {"aclText", text, false},
    {"symlinkTarget", text, false},
    {"payloadKey", text, false},
    {"payloadParts", list},
    {"uploadStrategy", text, false},
    {"multipartPartCount", int64, false},
    {"multipartPartSizeBytes", int64, false},
    {"contentChecksumSHA256", text, false},
    {"payloadEncoding", word},
    {"storedSize", int64},
    {"sparseExtents", list},
    {"hardLinkIdentity", record, false},
    {"hardLinkPrimaryPath", text, false},
};

const std::vector<FieldDescription> partFields = {
    {"key", text}, {"offset", int64}, {"size", int64}, {"namespace", word, false}};
const std::vector<FieldDescription> extentFields = {
    {"logicalOffset", int64}, {"storedOffset", int64}, {"length", int64}};
const std::vector<FieldDescription> identityFields = {{"deviceID", uint64}, {"inode", uint64}};
const std::vector<FieldDescription> attributeFields = {{"name", text}, {"base64Value", text}};
const std::vector<FieldDescription> indexFields = {
    {"version", int64}, {"generatedAt", date}, {"records", list}};
const std::vector<FieldDescription> tombstoneFields = {
    {"warpID", text}, {"manifestKey", text}, {"originalFolderPath", text}, {"destroyedAt", date}};

/// A record inside a valid document.
struct RecordPlace {
  const char* name;
  const std::vector<FieldDescription>& fields;
  std::function<JSONTree()> document;
  std::vector<CodingKey> codingPath;
};

constexpr std::size_t first = 0;

const std::vector<RecordPlace> places = {
    {"manifest", manifestFields, manifestDocument, {}},
    {"rootEntry", entryFields, manifestDocument, {"rootMetadata"}},
    {"entry", entryFields, manifestDocument, {"entries", first}},
    {"part", partFields, manifestDocument, {"entries", first, "payloadParts", first}},
    {"extent", extentFields, manifestDocument, {"entries", first, "sparseExtents", first}},
    {"identity", identityFields, manifestDocument, {"entries", first, "hardLinkIdentity"}},
    {"attribute",
     attributeFields,
     manifestDocument,
     {"rootMetadata", "extendedAttributes", std::size_t{1}}},
    {"index", indexFields, indexDocument, {}},
    {"tombstone", tombstoneFields, indexDocument, {"records", std::size_t{1}}},
};

JSONTree& at(JSONTree& document, const std::vector<CodingKey>& codingPath) {
  JSONTree* tree = &document;
  for (const CodingKey& key : codingPath) {
    const auto* index = std::get_if<std::size_t>(&key);
    tree = index != nullptr ? &(*tree)[*index] : &(*tree)[std::get<std::string>(key)];
  }
  return *tree;
}

class FieldTypes : public testing::TestWithParam<RecordPlace> {
 protected:
  /// What decoding says when the record is changed so.
  template <class Change>
  static Verdict wholeVerdictAfter(Change change) {
    JSONTree document = GetParam().document();
    change(at(document, GetParam().codingPath));
    std::string bytes = document.text();
    const bool isManifest = GetParam().document().members().size() > indexFields.size();
    return verdictOf([&] {
      if (isManifest) {
        static_cast<void>(ManifestDecoder().decode(bytes));
      } else {
        static_cast<void>(decodeDestroyedManifestIndex(bytes));
      }
    });
  }

  /// The same without its message.
  template <class Change>
  static std::string verdictAfter(Change change) {
    const Verdict verdict = wholeVerdictAfter(change);
    return verdict == valid ? "valid" : verdict.kind + " at " + describe(verdict.codingPath);
  }

  static std::string errorAt(const std::string& kind, const FieldDescription& field) {
    return kind + " at " + describe(GetParam().codingPath) + '/' + field.key;
  }
};

TEST_P(FieldTypes, areAllThatTheDocumentHolds) {
  JSONTree document = GetParam().document();
  std::vector<std::string> keys;
  for (const auto& member : at(document, GetParam().codingPath).members()) {
    keys.push_back(member.first);
  }
  std::vector<std::string> described;
  std::ranges::transform(GetParam().fields, std::back_inserter(described), &FieldDescription::key);
  EXPECT_EQ(keys, described);
}

TEST_P(FieldTypes, mayBeMissingOnlyWhenOptional) {
  for (const FieldDescription& field : GetParam().fields) {
    EXPECT_EQ(verdictAfter([&](JSONTree& record) { record.erase(field.key); }),
              field.isRequired ? errorAt("keyNotFound", field) : "valid");
  }
}

TEST_P(FieldTypes, mayBeNullOnlyWhenOptional) {
  for (const FieldDescription& field : GetParam().fields) {
    EXPECT_EQ(verdictAfter([&](JSONTree& record) { record[field.key] = "null"; }),
              field.isRequired ? errorAt("valueNotFound", field) : "valid");
  }
}

bool isInteger(FieldType type) {
  return type == int64 || type == uint64 || type == uint32 || type == uint16;
}

bool isText(FieldType type) { return type == text || type == word || type == date; }

TEST_P(FieldTypes, refuseEveryOtherTypeOfJSON) {
  const std::vector<std::pair<const char*, std::function<bool(FieldType)>>> values = {
      {"true", [](FieldType type) { return type == boolean; }},
      {"false", [](FieldType type) { return type == boolean; }},
      {"0", isInteger},
      {"1.5", isInteger},
      {"\"\"", isText},
      {"\"1\"", isText},
      {"\"true\"", isText},
      {"[]", [](FieldType type) { return type == list; }},
      {"[null]", [](FieldType type) { return type == list; }},
      {"{}", [](FieldType type) { return type == record; }},
  };
  for (const FieldDescription& field : GetParam().fields) {
    for (const auto& value : values) {
      if (!value.second(field.type)) {
        EXPECT_EQ(verdictAfter([&](JSONTree& record) { record[field.key] = value.first; }),
                  errorAt("typeMismatch", field))
            << value.first;
      }
    }
  }
}

/// The least and the greatest values that a field of the type takes, and their neighbours.
struct Boundaries {
  std::vector<const char*> inside;
  std::vector<const char*> outside;
};

const std::map<FieldType, Boundaries> boundaries = {
    {int64,
     {{"-9223372036854775808", "9223372036854775807", "-0", "9223372036854775807.000",
       "922337203685477580.7e1"},
      {"-9223372036854775809", "9223372036854775808", "0.5", "1e19", "1e-1"}}},
    {uint64,
     {{"0", "18446744073709551615", "-0.0", "1.8446744073709551615e19"},
      {"-1", "18446744073709551616", "0.5", "1e20"}}},
    {uint32, {{"0", "4294967295", "-0", "42949672950e-1"}, {"-1", "4294967296", "1.5", "1e10"}}},
    {uint16, {{"0", "65535", "6.5535e4"}, {"-1", "65536", "70000", "0.1"}}},
};

/// Whether a rule beyond the type holds for the field, so that not every value of the type is
/// valid.
bool hasRule(const FieldDescription& field) {
  const std::vector<std::string> keys = {"version",       "size",         "storedSize", "offset",
                                         "logicalOffset", "storedOffset", "length"};
  return std::ranges::find(keys, field.key) != keys.end();
}

TEST_P(FieldTypes, takeIntegersThatFit) {
  for (const FieldDescription& field : GetParam().fields) {
    if (!isInteger(field.type)) {
      continue;
    }
    for (const char* value : boundaries.at(field.type).inside) {
      const Verdict verdict =
          wholeVerdictAfter([&](JSONTree& record) { record[field.key] = value; });
      // A rule may still refuse the value, but not because of its type.
      EXPECT_FALSE(verdict.message.starts_with("The number ")) << field.key << ' ' << value;
      if (!hasRule(field)) {
        EXPECT_EQ(verdict, valid) << field.key << ' ' << value;
      }
    }
  }
}

TEST_P(FieldTypes, refuseIntegersThatDoNotFit) {
  for (const FieldDescription& field : GetParam().fields) {
    if (!isInteger(field.type)) {
      continue;
    }
    for (const char* value : boundaries.at(field.type).outside) {
      EXPECT_EQ(verdictAfter([&](JSONTree& record) { record[field.key] = value; }),
                errorAt("dataCorrupted", field))
          << value;
    }
  }
}

TEST_P(FieldTypes, refuseWordsAndDatesThatAreNone) {
  for (const FieldDescription& field : GetParam().fields) {
    if (field.type == word || field.type == date) {
      for (const char* value : {"\"\"", "\"other\"", "\"2025-03-01\"", "\"Raw\""}) {
        EXPECT_EQ(verdictAfter([&](JSONTree& record) { record[field.key] = value; }),
                  errorAt("dataCorrupted", field))
            << value;
      }
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Records, FieldTypes, testing::ValuesIn(places),
                         [](const auto& row) { return std::string(row.param.name); });

}  // namespace
}  // namespace velmora

// Every field of every record of the shared formats: every kind of value, and every pair of faults.

#include "platform/PlatformError.h"
#include "tests/warpshared/ManifestCases.h"
#include "warpshared/reading/DestroyedManifestIndexDecoding.h"
#include "warpshared/reading/ManifestDecoding.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <map>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace velmora::internal {
namespace {

struct FieldType {
  /// The name of the expected JSON type in messages.
  std::string expected;
  /// The first bytes of values of that JSON type.
  std::string firstBytes;
  /// Values in and out of range; for words, values that are none of the words.
  std::vector<std::string> inside = {};
  std::vector<std::string> outside = {};
};

const std::vector<std::string> noWords = {"''", "'other'", "'2025-03-01'", "'Raw'"};

const std::map<std::string, FieldType> types = {
    {"boolean", {"a boolean", "tf"}},
    {"text", {"a string", "'"}},
    {"word", {"a string", "'", {}, noWords}},
    {"date", {"a string", "'", {}, noWords}},
    {"list", {"an array", "["}},
    {"record", {"an object", "{"}},
    {"int64",
     {"a number",
      "01",
      {"-9223372036854775808", "9223372036854775807", "-0", "9223372036854775807.000",
       "922337203685477580.7e1"},
      {"-9223372036854775809", "9223372036854775808", "0.5", "1e19", "1e-1"}}},
    {"uint64",
     {"a number",
      "01",
      {"0", "18446744073709551615", "-0.0", "1.8446744073709551615e19"},
      {"-1", "18446744073709551616", "0.5", "1e20"}}},
    {"uint32",
     {"a number",
      "01",
      {"0", "4294967295", "-0", "42949672950e-1"},
      {"-1", "4294967296", "1.5", "1e10"}}},
    {"uint16", {"a number", "01", {"0", "65535", "6.5535e4"}, {"-1", "65536", "70000", "0.1"}}},
};

struct Field {
  std::string key;
  FieldType type;
  bool isRequired = true;
};

using Fields = std::vector<Field>;

/// The fields in `text`, each as "key type". A "?" after the type marks an optional field.
Fields fieldsOf(const std::string& text) {
  Fields fields;
  std::istringstream words(text);
  for (std::string key, type; words >> key >> type;) {
    const bool isRequired = type.back() != '?';
    fields.push_back(
        {key, types.at(isRequired ? type : type.substr(0, type.size() - 1)), isRequired});
  }
  return fields;
}

const Fields manifestFields = fieldsOf(
    "version int64  warpID text  deviceID text  manifestKey text  originalFolderPath text  "
    "displayName text  createdAt date  uploadedAt date?  replacedAt date?  status word  "
    "failureDescription text?  verificationSampleAbsolutePaths list  rootMetadata record  "
    "entries list");
const Fields entryFields = fieldsOf(
    "absolutePath text  displayName text  kind word  size int64  "
    "modificationTimeNanoseconds int64  statusChangeTimeNanoseconds int64?  "
    "birthTimeNanoseconds int64?  ownerUserID uint32  ownerGroupID uint32  "
    "posixPermissions uint16  bsdFlags uint32  hasModificationTimeMetadata boolean  "
    "hasOwnershipMetadata boolean  hasPOSIXPermissionsMetadata boolean  "
    "hasBSDFlagsMetadata boolean  hasExtendedAttributesMetadata boolean  hasACLMetadata boolean  "
    "extendedAttributes list  aclText text?  symlinkTarget text?  payloadKey text?  "
    "payloadParts list  uploadStrategy text?  multipartPartCount int64?  "
    "multipartPartSizeBytes int64?  contentChecksumSHA256 text?  payloadEncoding word  "
    "storedSize int64  sparseExtents list  hardLinkIdentity record?  hardLinkPrimaryPath text?");
const Fields partFields = fieldsOf("key text  offset int64  size int64  namespace word?");
const Fields extentFields = fieldsOf("logicalOffset int64  storedOffset int64  length int64");
const Fields identityFields = fieldsOf("deviceID uint64  inode uint64");
const Fields attributeFields = fieldsOf("name text  base64Value text");
const Fields indexFields = fieldsOf("version int64  generatedAt date  records list");
const Fields tombstoneFields =
    fieldsOf("warpID text  manifestKey text  originalFolderPath text  destroyedAt date");

/// A valid document, and the verdict on a document of this format.
struct Format {
  JSONTree (*document)();
  std::string (*verdictOn)(std::string bytes);
};

std::string verdictOnManifest(std::string bytes) {
  return verdictOf([&] { static_cast<void>(ManifestDecoder().decodeSummary(bytes)); });
}

std::string verdictOnIndex(std::string bytes) {
  try {
    return verdictOf([&] { validateDestroyedManifestIndex(decodeDestroyedManifestIndex(bytes)); });
  } catch (const PlatformError& error) {
    EXPECT_EQ(error.code(), fileReadCorruptFileErrorCode);
    return "corruptFile";
  }
}

const Format manifests = {manifestDocument, verdictOnManifest};
const Format indexes = {indexDocument, verdictOnIndex};

struct RecordPlace {
  const Format& format;
  std::string path;
  const Fields& fields;
};

const std::vector<RecordPlace> places = {
    {manifests, "", manifestFields},
    {manifests, "/rootMetadata", entryFields},
    {manifests, "/entries/0", entryFields},
    {manifests, "/entries/0/payloadParts/0", partFields},
    {manifests, "/entries/0/sparseExtents/0", extentFields},
    {manifests, "/entries/0/hardLinkIdentity", identityFields},
    {manifests, "/rootMetadata/extendedAttributes/1", attributeFields},
    {indexes, "", indexFields},
    {indexes, "/records/1", tombstoneFields},
};

TEST(RecordFields, areAllFieldsOfTheDocuments) {
  for (const RecordPlace& place : places) {
    SCOPED_TRACE(place.path);
    JSONTree document = place.format.document();
    const JSONTree::Object& members = document.at(place.path).members();
    EXPECT_TRUE(
        std::ranges::equal(members, place.fields, {}, &JSONTree::Member::first, &Field::key));
  }
}

/// Whether the field has a rule beyond its type, so that some values of the type are invalid.
bool hasRule(const Field& field) {
  const std::vector<std::string_view> keys = {
      "version", "size", "storedSize", "offset", "logicalOffset", "storedOffset", "length"};
  return std::ranges::find(keys, field.key) != keys.end();
}

std::string verdictWith(const RecordPlace& place, const Field& field, std::string_view value) {
  JSONTree document = place.format.document();
  document.change(place.path + '/' + field.key, value);
  return place.format.verdictOn(document.text());
}

void expectValuesOfTheirTypesOnly(const RecordPlace& place, const Field& field) {
  const std::string path = place.path + '/' + field.key;
  SCOPED_TRACE(path);
  const auto expectFault = [&](std::string_view kind, std::string_view value) {
    const std::string fault = std::string(kind) + " at " + path + ": ";
    const std::string verdict = verdictWith(place, field, value);
    EXPECT_TRUE(verdict.starts_with(fault)) << fault << value << ": " << verdict;
  };
  for (const auto& [kind, value] :
       {std::pair("keyNotFound", ""), std::pair("valueNotFound", "null")}) {
    if (field.isRequired) {
      expectFault(kind, value);
    } else {
      EXPECT_EQ(verdictWith(place, field, value), valid) << value;
    }
  }
  for (const std::string_view value :
       {"true", "false", "0", "1.5", "''", "'1'", "'true'", "[]", "[null]", "{}"}) {
    if (field.type.firstBytes.find(value.front()) == std::string::npos) {
      expectFault("typeMismatch", value);
    }
  }
  for (const std::string& value : field.type.outside) {
    expectFault("dataCorrupted", value);
  }
  for (const std::string& value : field.type.inside) {
    const std::string verdict = verdictWith(place, field, value);
    // A rule may still refuse the value, but not for its type.
    EXPECT_EQ(verdict.find(": The number "), std::string::npos) << value << ": " << verdict;
    EXPECT_TRUE(hasRule(field) || verdict == valid) << value << ": " << verdict;
  }
}

TEST(RecordFields, acceptValuesOfTheirTypesOnly) {
  for (const RecordPlace& place : places) {
    for (const Field& field : place.fields) {
      expectValuesOfTheirTypesOnly(place, field);
    }
  }
}

/// A fault in a document, and its verdict. Faults of overlapping paths are not combined.
struct Fault {
  std::string path;
  std::string json;
  std::string verdict;
};

/// Faults in the order of reading.
using Faults = std::vector<Fault>;

/// A value that is refused after the field `after` has been read.
struct Refusal {
  std::string_view after;
  Edit edit;
  std::string_view verdict;
};

/// The faults of the record at `path`: missing required fields, other types, and refused values.
/// `inside` returns the faults inside a field's value.
template <class FaultsInside>
Faults faultsOf(const std::string& path, const Fields& fields, const std::vector<Refusal>& refusals,
                FaultsInside inside) {
  Faults faults;
  for (const Field& field : fields) {
    const std::string at = path + '/' + field.key;
    if (field.isRequired) {
      faults.push_back(
          {at, "", "keyNotFound at " + at + ": The key \"" + field.key + "\" is missing."});
    } else {
      faults.push_back(
          {at, "[false]",
           "typeMismatch at " + at + ": Expected " + field.type.expected + " but found an array."});
    }
    std::ranges::copy(inside(field.key), std::back_inserter(faults));
    for (const Refusal& refusal : refusals) {
      if (refusal.after == field.key) {
        faults.push_back({path + std::string(refusal.edit.path), std::string(refusal.edit.json),
                          verdictAt(path, refusal.verdict)});
      }
    }
  }
  return faults;
}

const auto noneInside = [](std::string_view) { return Faults(); };

Faults entryFaults(const std::string& path) {
  constexpr std::string_view last = "hardLinkPrimaryPath";
  return faultsOf(path, entryFields,
                  {{"absolutePath", {"/absolutePath", "'a'"}, notCanonical},
                   {"size", {"/size", "-1"}, negativeSize},
                   {last, {"/storedSize", "-1"}, negativeStoredSize},
                   {last, {"/contentChecksumSHA256", "'0'"}, noChecksum},
                   {last, {"/hasACLMetadata", "false"}, incomplete},
                   {last, {"/extendedAttributes", "[{'name':'','base64Value':''}]"}, incomplete},
                   {last, {"/hardLinkPrimaryPath", "'a'"}, unsafeHardLink},
                   {last, {"/payloadParts", "[{'key':'','offset':0,'size':0}]"}, unsafePart},
                   {last, {"/payloadKey", "'/'"}, unsafeKey},
                   {last,
                    {"/sparseExtents", "[{'logicalOffset':-1,'storedOffset':0,'length':0}]"},
                    outsideExtent}},
                  noneInside);
}

Faults manifestFaults() {
  return faultsOf(
      "", manifestFields,
      {{"version", {"/version", "3"}, unsupportedVersion},
       {"originalFolderPath", {"/warpID", "''"}, unsafeIdentity},
       {"originalFolderPath", {"/deviceID", "''"}, unsafeIdentity},
       {"originalFolderPath", {"/manifestKey", "''"}, unsafeIdentity},
       {"originalFolderPath", {"/originalFolderPath", "'a'"}, unsafeIdentity},
       {"entries", {"/verificationSampleAbsolutePaths", "['/elsewhere']"}, inconsistent},
       {"entries", {"/originalFolderPath", "'/Users/b'"}, inconsistent},
       {"entries", {"/entries/0/hardLinkPrimaryPath", "'/Users/a/Docs/none'"}, strayHardLink}},
      [](std::string_view key) {
        return key == "rootMetadata" ? entryFaults("/rootMetadata")
               : key == "entries"    ? entryFaults("/entries/0")
                                     : Faults();
      });
}

Faults indexFaults() {
  return faultsOf(
      "", indexFields,
      {{"version",
        {"/version", "2"},
        "dataCorrupted at /version: Unsupported restored-Warp tombstone index version."},
       {"records", {"/records/1/warpID", "''"}, "corruptFile"},
       {"records", {"/records/1/manifestKey", "'/a'"}, "corruptFile"},
       {"records", {"/records/1/originalFolderPath", "'a'"}, "corruptFile"},
       {"records", {"/records/1/warpID", "'W-b'"}, "corruptFile"},
       {"records", {"/records/1/manifestKey", "'manifests/b'"}, "corruptFile"}},
      [](std::string_view key) {
        Faults faults;
        if (key == "records") {
          faults = faultsOf("/records/0", tombstoneFields, {}, noneInside);
          std::ranges::copy(faultsOf("/records/1", tombstoneFields, {}, noneInside),
                            std::back_inserter(faults));
        }
        return faults;
      });
}

bool overlap(const Fault& a, const Fault& b) {
  return (a.path + '/').starts_with(b.path + '/') || (b.path + '/').starts_with(a.path + '/');
}

/// Expects the first of two faults in reading order, for any order of the keys in the file.
void expectTheFirstOfEachPair(const Format& format, const Faults& faults) {
  const JSONTree soundDocument = format.document();
  ASSERT_EQ(format.verdictOn(soundDocument.text()), valid);
  std::size_t pairCount = 0;
  for (auto first = faults.begin(); first != faults.end(); ++first) {
    JSONTree faultyDocument = soundDocument;
    faultyDocument.change(first->path, first->json);
    for (const JSONStyle& style : jsonStyles) {
      ASSERT_EQ(format.verdictOn(faultyDocument.text(style)), first->verdict) << first->path;
    }
    for (auto second = first + 1; second != faults.end(); ++second) {
      if (overlap(*first, *second)) {
        continue;
      }
      JSONTree document = faultyDocument;
      document.change(second->path, second->json);
      // One style per pair, because there are many pairs.
      const JSONStyle& style = jsonStyles[pairCount % jsonStyles.size()];
      ASSERT_EQ(format.verdictOn(document.text(style)), first->verdict)
          << first->path << " and " << second->path << ", " << style.name;
      ++pairCount;
    }
  }
}

TEST(FaultOrder, isThatOfTheFieldsInAManifest) {
  expectTheFirstOfEachPair(manifests, manifestFaults());
}

TEST(FaultOrder, isThatOfTheFieldsInAnIndex) { expectTheFirstOfEachPair(indexes, indexFaults()); }

TEST(FaultOrder, followsTheFaultsOfTheWholeDocument) {
  for (const Fault& fault : manifestFaults()) {
    JSONTree document = manifestDocument();
    document.change(fault.path, fault.json);
    document.change("/+ignored", "[01]");
    EXPECT_EQ(manifests.verdictOn(document.text()), "dataCorrupted at : Expected a value.")
        << fault.path;
  }
}

}  // namespace
}  // namespace velmora::internal

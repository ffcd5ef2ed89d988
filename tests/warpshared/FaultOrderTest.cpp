// Of several faults, the first in reading order is told, wherever the keys stand in the file: every
// pair of faults that a manifest or an index can have.

#include "platform/PlatformError.h"
#include "tests/warpshared/SharedWarpDocuments.h"
#include "warpshared/DestroyedManifestIndex.h"
#include "warpshared/ManifestDecoding.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace velmora {
namespace {

/// Something wrong with a document, and how it is told.
struct Fault {
  /// What the fault is about: two faults about the same are no pair.
  std::string subject;
  std::function<void(JSONTree&)> apply;
  Verdict verdict;
};

/// Faults in the order in which a reader meets them.
using Faults = std::vector<Fault>;

using ChangeOfRecord = std::function<void(JSONTree& record)>;
using RecordOfDocument = std::function<JSONTree&(JSONTree& document)>;

/// Gathers the faults of one record of a document.
class FaultsOfRecord {
 public:
  FaultsOfRecord(Faults& faults, RecordOfDocument record, std::vector<CodingKey> codingPath)
      : faults_(faults), record_(std::move(record)), codingPath_(std::move(codingPath)) {}

  /// A required field that is missing.
  void missing(const char* key) {
    add(
        key, [=](JSONTree& record) { record.erase(key); }, "keyNotFound", key,
        std::string("The key \"") + key + "\" is missing.");
  }

  /// An optional field of another type.
  void mistyped(const char* key, const char* expected) {
    add(
        key, [=](JSONTree& record) { record[key] = "[false]"; }, "typeMismatch", key,
        std::string("Expected ") + expected + " but found an array.");
  }

  /// A value of the field `subject` that is refused at `key`.
  void refused(const char* subject, const char* value, const char* key, const char* message) {
    add(
        subject, [=](JSONTree& record) { record[subject] = value; }, "dataCorrupted", key, message);
  }

 private:
  void add(const char* subject, ChangeOfRecord change, const char* kind, const char* key,
           std::string message) {
    std::vector<CodingKey> codingPath = codingPath_;
    codingPath.emplace_back(key);
    faults_.push_back({describe(codingPath_) + '/' + subject,
                       [record = record_, change = std::move(change)](JSONTree& document) {
                         change(record(document));
                       },
                       {kind, codingPath, std::move(message)}});
  }

  Faults& faults_;
  RecordOfDocument record_;
  std::vector<CodingKey> codingPath_;
};

void addFaultsOfEntry(FaultsOfRecord entry) {
  entry.missing("absolutePath");
  entry.refused("absolutePath", "\"a\"", "absolutePath",
                "Shared Warp entries require canonical absolute paths.");
  entry.missing("displayName");
  entry.missing("kind");
  entry.missing("size");
  entry.refused("size", "-1", "size", "Shared Warp entry sizes cannot be negative.");
  entry.missing("modificationTimeNanoseconds");
  entry.mistyped("statusChangeTimeNanoseconds", "a number");
  entry.mistyped("birthTimeNanoseconds", "a number");
  entry.missing("ownerUserID");
  entry.missing("ownerGroupID");
  entry.missing("posixPermissions");
  entry.missing("bsdFlags");
  entry.missing("hasModificationTimeMetadata");
  entry.missing("hasOwnershipMetadata");
  entry.missing("hasPOSIXPermissionsMetadata");
  entry.missing("hasBSDFlagsMetadata");
  entry.missing("hasExtendedAttributesMetadata");
  entry.missing("hasACLMetadata");
  entry.missing("extendedAttributes");
  entry.mistyped("aclText", "a string");
  entry.mistyped("symlinkTarget", "a string");
  entry.mistyped("payloadKey", "a string");
  entry.missing("payloadParts");
  entry.mistyped("uploadStrategy", "a string");
  entry.mistyped("multipartPartCount", "a number");
  entry.mistyped("multipartPartSizeBytes", "a number");
  entry.mistyped("contentChecksumSHA256", "a string");
  entry.missing("payloadEncoding");
  entry.missing("storedSize");
  entry.missing("sparseExtents");
  entry.mistyped("hardLinkIdentity", "an object");
  entry.mistyped("hardLinkPrimaryPath", "a string");
  entry.refused("storedSize", "-1", "storedSize", "Shared Warp stored sizes cannot be negative.");
  entry.refused("contentChecksumSHA256", "\"0\"", "contentChecksumSHA256",
                "Shared Warp checksums must be SHA-256 hex values.");
  entry.refused("hasACLMetadata", "false", "extendedAttributes",
                "Shared Warp entries require complete current metadata.");
  entry.refused("extendedAttributes", R"([{"name":"","base64Value":""}])", "extendedAttributes",
                "Shared Warp entries require complete current metadata.");
  entry.refused("hardLinkPrimaryPath", "\"a\"", "hardLinkPrimaryPath",
                "Shared Warp hard-link paths must be canonical absolute paths.");
  entry.refused("payloadParts", R"([{"key":"","offset":0,"size":0}])", "payloadParts",
                "Shared Warp payload parts contain an unsafe range or object key.");
  entry.refused("payloadKey", "\"/\"", "payloadKey",
                "Shared Warp payload keys must be safe relative object keys.");
  entry.refused("sparseExtents", R"([{"logicalOffset":-1,"storedOffset":0,"length":0}])",
                "sparseExtents", "Shared Warp sparse extents fall outside the stored file range.");
}

Faults manifestFaults() {
  constexpr const char* unsafeIdentity =
      "Shared Warp identity, object key, or original path is unsafe.";
  constexpr const char* inconsistent =
      "Shared Warp manifest dates or original-path ownership are inconsistent.";
  Faults faults;
  FaultsOfRecord manifest(faults, [](JSONTree& document) -> JSONTree& { return document; }, {});
  manifest.missing("version");
  manifest.refused("version", "3", "version", "Unsupported shared Warp manifest version.");
  manifest.missing("warpID");
  manifest.missing("deviceID");
  manifest.missing("manifestKey");
  manifest.missing("originalFolderPath");
  manifest.refused("warpID", "\"\"", "originalFolderPath", unsafeIdentity);
  manifest.refused("deviceID", "\"\"", "originalFolderPath", unsafeIdentity);
  manifest.refused("manifestKey", "\"\"", "originalFolderPath", unsafeIdentity);
  manifest.refused("originalFolderPath", "\"a\"", "originalFolderPath", unsafeIdentity);
  manifest.missing("displayName");
  manifest.missing("createdAt");
  manifest.mistyped("uploadedAt", "a string");
  manifest.mistyped("replacedAt", "a string");
  manifest.missing("status");
  manifest.mistyped("failureDescription", "a string");
  manifest.missing("verificationSampleAbsolutePaths");
  manifest.missing("rootMetadata");
  addFaultsOfEntry({faults,
                    [](JSONTree& document) -> JSONTree& { return document["rootMetadata"]; },
                    {"rootMetadata"}});
  manifest.missing("entries");
  addFaultsOfEntry({faults,
                    [](JSONTree& document) -> JSONTree& { return document["entries"][0]; },
                    {"entries", std::size_t{0}}});
  manifest.refused("verificationSampleAbsolutePaths", "[\"/elsewhere\"]", "entries", inconsistent);
  manifest.refused("originalFolderPath", "\"/Users/b\"", "entries", inconsistent);
  faults.push_back({"/entries/0/hardLinkPrimaryPath",
                    [](JSONTree& document) {
                      document["entries"][0]["hardLinkPrimaryPath"] = "\"/Users/a/Docs/none\"";
                    },
                    {"dataCorrupted",
                     {"entries"},
                     "Shared Warp hard-link references must remain inside the manifest."}});
  return faults;
}

Faults indexFaults() {
  Faults faults;
  FaultsOfRecord index(faults, [](JSONTree& document) -> JSONTree& { return document; }, {});
  index.missing("version");
  index.refused("version", "2", "version", "Unsupported restored-Warp tombstone index version.");
  index.missing("generatedAt");
  index.missing("records");
  for (const std::size_t number : {0U, 1U}) {
    FaultsOfRecord record(
        faults, [=](JSONTree& document) -> JSONTree& { return document["records"][number]; },
        {"records", number});
    for (const char* key : {"warpID", "manifestKey", "originalFolderPath", "destroyedAt"}) {
      record.missing(key);
    }
  }
  const Verdict corrupt = {"corruptFile", {}, ""};
  const std::vector<std::pair<const char*, const char*>> unsoundValues = {
      {"warpID", "\"\""},
      {"manifestKey", "\"/a\""},
      {"originalFolderPath", "\"a\""},
      {"warpID", "\"W-b\""},
      {"manifestKey", "\"manifests/b\""}};
  for (const auto& unsound : unsoundValues) {
    faults.push_back(
        {std::string("/records/1/") + unsound.first,
         [=](JSONTree& document) { document["records"][1][unsound.first] = unsound.second; },
         corrupt});
  }
  return faults;
}

bool isInside(const std::string& inner, const std::string& outer) {
  return inner.starts_with(outer + '/');
}

bool areAboutTheSame(const Fault& a, const Fault& b) {
  return a.subject == b.subject || isInside(a.subject, b.subject) || isInside(b.subject, a.subject);
}

template <class VerdictOn>
void expectTheFirstOfEachPair(JSONTree (*makeDocument)(), const Faults& faults,
                              VerdictOn verdictOn) {
  const JSONTree soundDocument = makeDocument();
  ASSERT_EQ(verdictOn(soundDocument.text()), valid);
  std::size_t pairCount = 0;
  for (auto first = faults.begin(); first != faults.end(); ++first) {
    JSONTree faultyDocument = soundDocument;
    first->apply(faultyDocument);
    for (const JSONStyle& style : jsonStyles) {
      ASSERT_EQ(verdictOn(faultyDocument.text(style)), first->verdict) << first->subject;
    }
    for (auto second = first + 1; second != faults.end(); ++second) {
      if (areAboutTheSame(*first, *second)) {
        continue;
      }
      JSONTree document = faultyDocument;
      second->apply(document);
      // Each pair in one style: there are many pairs.
      const JSONStyle& style = jsonStyles[pairCount % jsonStyles.size()];
      ASSERT_EQ(verdictOn(document.text(style)), first->verdict)
          << first->subject << " and " << second->subject << ", " << style.name;
      ++pairCount;
    }
  }
}

TEST(FaultOrder, isThatOfTheFieldsInAManifest) {
  ManifestDecoder decoder;
  expectTheFirstOfEachPair(manifestDocument, manifestFaults(), [&](std::string bytes) {
    return verdictOf([&] { static_cast<void>(decoder.decodeSummary(bytes)); });
  });
}

TEST(FaultOrder, isThatOfTheFieldsInAnIndex) {
  expectTheFirstOfEachPair(indexDocument, indexFaults(), [](std::string bytes) -> Verdict {
    try {
      return verdictOf(
          [&] { validateDestroyedManifestIndex(decodeDestroyedManifestIndex(bytes)); });
    } catch (const PlatformError& error) {
      EXPECT_EQ(error.code(), fileReadCorruptFileErrorCode);
      return {"corruptFile", {}, ""};
    }
  });
}

TEST(FaultOrder, isBehindThatOfTheWholeDocument) {
  ManifestDecoder decoder;
  for (const Fault& fault : manifestFaults()) {
    JSONTree document = manifestDocument();
    fault.apply(document);
    document.members().emplace_back("ignored", "[01]");
    std::string bytes = document.text();
    EXPECT_EQ(verdictOf([&] { static_cast<void>(decoder.decodeSummary(bytes)); }),
              (Verdict{"dataCorrupted", {}, "Expected a value."}))
        << fault.subject;
  }
}

}  // namespace
}  // namespace velmora

// A shared Warp manifest: the verdict does not depend on how the document is written nor on whether
// the entries are kept, what is accepted reads back as itself, and the quick reader accepts nothing
// that the exact one refuses.
#include "fuzz/Verdict.h"
#include "tests/warpshared/ManifestReadings.h"
#include "warpshared/reading/ManifestDecoding.h"
#include "warpshared/writing/ManifestEncoding.h"

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace velmora::internal {
namespace {

ManifestSummary summaryOf(const VelmoraWarpSharedManifest& manifest) {
  return {.warpID = manifest.warpID,
          .manifestKey = manifest.manifestKey,
          .originalFolderPath = manifest.originalFolderPath,
          .createdAt = manifest.createdAt,
          .status = manifest.status,
          .entryCount = manifest.entries.size(),
          .sampleCount = manifest.verificationSampleRelativePaths.size()};
}

void requireSameVerdict(const Verdict<VelmoraWarpSharedManifest>& verdict,
                        const Verdict<ManifestSummary>& summary) {
  require(verdict.byteOffset == summary.byteOffset);
  if (verdict.value() == nullptr) {
    require(summary.fault() != nullptr && *summary.fault() == *verdict.fault());
  } else {
    require(summary.value() != nullptr && *summary.value() == summaryOf(*verdict.value()));
  }
}

void requireOneVerdict(std::string_view document) {
  // One decoder for all: what it keeps from one document must make no difference to the next.
  ManifestDecoder decoder;
  const auto decode = [&decoder](std::string& bytes) { return decoder.decode(bytes); };
  const Verdict<VelmoraWarpSharedManifest> verdict = verdictOn(document, decode);
  requireSameVerdict(verdict, verdictOn(document, [&decoder](std::string& bytes) {
                       return decoder.decodeSummary(bytes);
                     }));
  requireSameInOtherWords(document, verdict, decode);
  requireToReadBack(verdict, encodeManifest, decode);
}

/// Requires that the quick reader gives up or reads what the exact one does, however the document
/// is cut into chunks, and leaves the document as it is.
void requireQuickToBeExact(std::string_view document) {
  const std::size_t seed = std::hash<std::string_view>()(document);
  ManifestReaders readers;
  std::string bytes(document);
  const ManifestReading quick = readers.quickly(bytes);
  require(bytes == document);
  const std::size_t shortLength = 1 + seed % 300;
  for (const std::size_t chunkLength : {shortLength, 1 + seed / 300 % (document.size() + 1)}) {
    require(readers.quickly(bytes, chunkLength) == quick);
    require(bytes == document);
    require(readers.quicklyFromStream(document, 1 + seed / 7 % 100, chunkLength) == quick);
  }
  if (quick.has_value()) {
    require(readers.exactly(bytes) == quick);
  }
}

VelmoraWarpSharedEntry usualEntry(const Text& path) {
  VelmoraWarpSharedEntry entry;
  entry.relativePath = path;
  for (bool VelmoraWarpSharedEntry::*const member :
       {&VelmoraWarpSharedEntry::hasModificationTimeMetadata,
        &VelmoraWarpSharedEntry::hasOwnershipMetadata,
        &VelmoraWarpSharedEntry::hasPOSIXPermissionsMetadata,
        &VelmoraWarpSharedEntry::hasBSDFlagsMetadata,
        &VelmoraWarpSharedEntry::hasExtendedAttributesMetadata,
        &VelmoraWarpSharedEntry::hasACLMetadata}) {
    entry.*member = true;
  }
  return entry;
}

std::string usualManifest() {
  VelmoraWarpSharedEntry file = usualEntry("/a/file");
  file.size = 12345678;
  file.storedSize = 1000;
  file.birthTimeNanoseconds = -5;
  file.extendedAttributes = {{.name = "name", .base64Value = "QQ=="}};
  file.payloadKey = "p/1";
  file.payloadParts = {{.key = "p/2", .offset = 100, .size = 900, .payloadNamespace = {}}};
  file.sparseExtents = {{.logicalOffset = 100, .storedOffset = 0, .length = 900}};
  file.hardLinkIdentity = {.deviceID = 1, .inode = 12345678901234567890U};
  file.hardLinkPrimaryPath = "/a/e\u0301";
  VelmoraWarpSharedEntry primary = usualEntry("/a/\u00e9");
  primary.hardLinkIdentity = file.hardLinkIdentity;
  VelmoraWarpSharedManifest manifest;
  manifest.version = sharedWarpManifestVersion;
  manifest.warpID = "W";
  manifest.deviceID = "D";
  manifest.manifestKey = "m/W";
  manifest.originalFolderPath = "/a";
  manifest.uploadedAt = Date();
  manifest.verificationSampleRelativePaths = {"/a/file", "/a/x"};
  manifest.rootMetadata = usualEntry("/a");
  manifest.entries.append(file);
  manifest.entries.append(primary);
  return encodeManifest(manifest);
}

/// A manifest that the quick reader accepts, compactly or with blanks and escapes, with some bytes
/// changed: three bytes of `edits` each are for a place and what is to be there.
std::string editedManifest(std::string_view edits) {
  static const std::vector<std::string> manifests = *inOtherWords(usualManifest()).value();
  std::string manifest = manifests[edits.size() % manifests.size()];
  for (; edits.size() >= 3; edits.remove_prefix(3)) {
    const auto high = static_cast<unsigned char>(edits[0]);
    const auto low = static_cast<unsigned char>(edits[1]);
    manifest[(std::size_t{high} << 8U | low) % manifest.size()] = edits[2];
  }
  return manifest;
}

}  // namespace
}  // namespace velmora::internal

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view input = velmora::textOf(data, size);
  velmora::internal::requireOneVerdict(input);
  velmora::internal::requireQuickToBeExact(input);
  // So little is no manifest, but says how one is to be changed.
  constexpr std::size_t mostEdits = 48;
  if (size <= mostEdits) {
    velmora::internal::requireQuickToBeExact(velmora::internal::editedManifest(input));
  }
  return 0;
}

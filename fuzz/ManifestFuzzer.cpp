// A shared Warp manifest: the verdict depends neither on its layout nor on whether the entries are
// kept. An accepted manifest reads back as itself. The streaming and the diagnosing reader accept
// the same manifests.
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
  // One decoder for all documents, because its memory of one must not change the next.
  ManifestDecoder decoder;
  const auto decode = [&decoder](std::string& bytes) { return decoder.decode(bytes); };
  const Verdict<VelmoraWarpSharedManifest> verdict = verdictOn(document, decode);
  requireSameVerdict(verdict, verdictOn(document, [&decoder](std::string& bytes) {
                       return decoder.decodeSummary(bytes);
                     }));
  requireSameInOtherLayouts(document, verdict, decode);
  requireToReadBack(verdict, encodeManifest, decode);
}

/// Requires that the streaming reader reads the same as the diagnosing reader, for any chunk
/// length. The document must be unchanged.
void requireStreamedToEqualDiagnosed(std::string_view document) {
  const std::size_t seed = std::hash<std::string_view>()(document);
  ManifestReaders readers;
  std::string bytes(document);
  const ManifestReading reading = readers.streamed(bytes);
  require(bytes == document);
  const std::size_t shortLength = 1 + seed % 300;
  for (const std::size_t chunkLength : {shortLength, 1 + seed / 300 % (document.size() + 1)}) {
    require(readers.streamed(bytes, chunkLength) == reading);
    require(bytes == document);
    require(readers.streamedInPortions(document, 1 + seed / 7 % 100, chunkLength) == reading);
  }
  require(readers.diagnosed(bytes) == reading);
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

/// A manifest that the streaming reader accepts, in one of several layouts, with some bytes
/// changed. Three bytes of `edits` make one change: its position, and the new byte.
std::string editedManifest(std::string_view edits) {
  static const std::vector<std::string> manifests = *inOtherLayouts(usualManifest()).value();
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
  velmora::internal::requireStreamedToEqualDiagnosed(input);
  // A short input is no manifest, so it also serves as a list of changes to one.
  constexpr std::size_t mostEdits = 48;
  if (size <= mostEdits) {
    velmora::internal::requireStreamedToEqualDiagnosed(velmora::internal::editedManifest(input));
  }
  return 0;
}

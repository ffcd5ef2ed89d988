// An entry of a shared Warp manifest: one item of a warped folder (docs/formats.md).
//
// One definition serves two forms. With `Text`, an entry is a plain value that owns its texts. With
// `TextView`, its texts refer to a document, or to the entries that a manifest keeps
// (WarpSharedEntries.h). Entries are equal if all their fields are, texts by canonical equivalence.
#pragma once

#include "text/Text.h"
#include "warpshared/records/Enumerations.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace velmora {

/// A stored object that contains a range of the payload of an entry.
template <class String>
struct WarpSharedPayloadPart {
  String key;
  /// The offset of the range in the payload, in bytes.
  std::int64_t offset = 0;
  /// In bytes.
  std::int64_t size = 0;
  std::optional<VelmoraPayloadNamespace> payloadNamespace;

  bool operator==(const WarpSharedPayloadPart&) const = default;
};

/// A range of data in a sparse file, in bytes.
struct VelmoraWarpSharedSparseExtent {
  std::int64_t logicalOffset = 0;
  /// The offset of the range in the stored payload.
  std::int64_t storedOffset = 0;
  std::int64_t length = 0;

  bool operator==(const VelmoraWarpSharedSparseExtent&) const = default;
};

struct VelmoraWarpSharedHardLinkIdentity {
  std::uint64_t deviceID = 0;
  std::uint64_t inode = 0;

  bool operator==(const VelmoraWarpSharedHardLinkIdentity&) const = default;
};

template <class String>
struct WarpSharedExtendedAttribute {
  String name;
  String base64Value;

  bool operator==(const WarpSharedExtendedAttribute&) const = default;
};

/// One item of a warped folder. Times are nanoseconds since 1970-01-01T00:00:00Z.
template <class String>
struct WarpSharedEntry {
  /// An absolute path, in spite of the name. The identity of the entry.
  String relativePath;
  String displayName;
  VelmoraWarpSharedEntryKind kind = VelmoraWarpSharedEntryKind::file;
  /// The logical size of the file, in bytes.
  std::int64_t size = 0;
  std::int64_t modificationTimeNanoseconds = 0;
  std::optional<std::int64_t> statusChangeTimeNanoseconds;
  std::optional<std::int64_t> birthTimeNanoseconds;
  std::uint32_t ownerUserID = 0;
  std::uint32_t ownerGroupID = 0;
  std::uint16_t posixPermissions = 0;
  std::uint32_t bsdFlags = 0;
  bool hasModificationTimeMetadata = false;
  bool hasOwnershipMetadata = false;
  bool hasPOSIXPermissionsMetadata = false;
  bool hasBSDFlagsMetadata = false;
  bool hasExtendedAttributesMetadata = false;
  bool hasACLMetadata = false;
  std::vector<WarpSharedExtendedAttribute<String>> extendedAttributes;
  std::optional<String> aclText;
  std::optional<String> symlinkTarget;
  std::optional<String> payloadKey;
  std::vector<WarpSharedPayloadPart<String>> payloadParts;
  std::optional<String> uploadStrategy;
  std::optional<std::int64_t> multipartPartCount;
  std::optional<std::int64_t> multipartPartSizeBytes;
  std::optional<String> contentChecksumSHA256;
  VelmoraWarpSharedPayloadEncoding payloadEncoding = VelmoraWarpSharedPayloadEncoding::raw;
  /// The size of the stored payload, in bytes.
  std::int64_t storedSize = 0;
  std::vector<VelmoraWarpSharedSparseExtent> sparseExtents;
  std::optional<VelmoraWarpSharedHardLinkIdentity> hardLinkIdentity;
  std::optional<String> hardLinkPrimaryPath;

  [[nodiscard]] const String& id() const { return relativePath; }

  bool operator==(const WarpSharedEntry&) const = default;
};

using VelmoraWarpSharedPayloadPart = WarpSharedPayloadPart<Text>;
using VelmoraWarpSharedExtendedAttribute = WarpSharedExtendedAttribute<Text>;

/// An entry that owns its texts. A struct and no alias, so that it can be declared before use.
struct VelmoraWarpSharedEntry : WarpSharedEntry<Text> {};

/// A copy that owns its texts. Throws std::bad_alloc.
[[nodiscard]] VelmoraWarpSharedEntry ownedEntry(const WarpSharedEntry<TextView>& entry);

}  // namespace velmora

// The record of one item of a warped folder, as a shared Warp manifest lists it (docs/formats.md).
//
// It comes in two forms that share one definition: with `Text`, a plain value, which owns its
// texts; and with `TextView`, whose texts lie in a document that is being read or in the entries
// that a manifest keeps (WarpSharedEntries.h). Values are equal when all their fields are, texts by
// canonical equivalence.
#pragma once

#include "json/JSONValue.h"
#include "json/RecordFields.h"
#include "text/Text.h"
#include "warpshared/Enumerations.h"

#include <cstdint>
#include <optional>
#include <tuple>
#include <vector>

namespace velmora {

/// A stored object that holds a range of an entry's payload.
template <class String>
struct WarpSharedPayloadPart {
  String key;
  /// Where the range begins in the payload, in bytes.
  std::int64_t offset = 0;
  /// In bytes.
  std::int64_t size = 0;
  std::optional<VelmoraPayloadNamespace> payloadNamespace;

  bool operator==(const WarpSharedPayloadPart&) const = default;
};

/// A range of real data in a sparse file, in bytes.
struct VelmoraWarpSharedSparseExtent {
  std::int64_t logicalOffset = 0;
  /// Where the range lies in the stored payload.
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
  /// Absolute, whatever the name says; the identity of the entry.
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
using VelmoraWarpSharedEntry = WarpSharedEntry<Text>;

/// Reads `value` into `entry`, whose texts then refer to the document, and reuses the memory of
/// `entry`. Reads the fields in their order. Refuses a path or a size that is not allowed at once,
/// and everything else after the last field. Each fault is a DecodingError: dataCorrupted at the
/// key concerned, or what reading the field raised. After a fault, `entry` is invalid.
void decode(JSONValue value, WarpSharedEntry<TextView>& entry);

/// As above, into an entry of its own.
void decode(JSONValue value, VelmoraWarpSharedEntry& entry);

/// Whether an entry, however it was read, passes every check of `decode`.
[[nodiscard]] bool isAcceptable(const WarpSharedEntry<TextView>& entry);

/// A copy that owns its texts.
[[nodiscard]] VelmoraWarpSharedEntry ownedEntry(const WarpSharedEntry<TextView>& entry);

template <class String>
struct RecordFields<WarpSharedPayloadPart<String>> {
  using Part = WarpSharedPayloadPart<String>;
  static constexpr std::tuple list{
      RecordField{"key", &Part::key},
      RecordField{"offset", &Part::offset},
      RecordField{"size", &Part::size},
      RecordField{"namespace", &Part::payloadNamespace},
  };
};

template <>
struct RecordFields<VelmoraWarpSharedSparseExtent> {
  using Extent = VelmoraWarpSharedSparseExtent;
  static constexpr std::tuple list{
      RecordField{"logicalOffset", &Extent::logicalOffset},
      RecordField{"storedOffset", &Extent::storedOffset},
      RecordField{"length", &Extent::length},
  };
};

template <>
struct RecordFields<VelmoraWarpSharedHardLinkIdentity> {
  using Identity = VelmoraWarpSharedHardLinkIdentity;
  static constexpr std::tuple list{
      RecordField{"deviceID", &Identity::deviceID},
      RecordField{"inode", &Identity::inode},
  };
};

template <class String>
struct RecordFields<WarpSharedExtendedAttribute<String>> {
  using Attribute = WarpSharedExtendedAttribute<String>;
  static constexpr std::tuple list{
      RecordField{"name", &Attribute::name},
      RecordField{"base64Value", &Attribute::base64Value},
  };
};

template <class String>
struct RecordFields<WarpSharedEntry<String>> {
  using Entry = WarpSharedEntry<String>;
  static constexpr std::tuple list{
      RecordField{"absolutePath", &Entry::relativePath},
      RecordField{"displayName", &Entry::displayName},
      RecordField{"kind", &Entry::kind},
      RecordField{"size", &Entry::size},
      RecordField{"modificationTimeNanoseconds", &Entry::modificationTimeNanoseconds},
      RecordField{"statusChangeTimeNanoseconds", &Entry::statusChangeTimeNanoseconds},
      RecordField{"birthTimeNanoseconds", &Entry::birthTimeNanoseconds},
      RecordField{"ownerUserID", &Entry::ownerUserID},
      RecordField{"ownerGroupID", &Entry::ownerGroupID},
      RecordField{"posixPermissions", &Entry::posixPermissions},
      RecordField{"bsdFlags", &Entry::bsdFlags},
      RecordField{"hasModificationTimeMetadata", &Entry::hasModificationTimeMetadata},
      RecordField{"hasOwnershipMetadata", &Entry::hasOwnershipMetadata},
      RecordField{"hasPOSIXPermissionsMetadata", &Entry::hasPOSIXPermissionsMetadata},
      RecordField{"hasBSDFlagsMetadata", &Entry::hasBSDFlagsMetadata},
      RecordField{"hasExtendedAttributesMetadata", &Entry::hasExtendedAttributesMetadata},
      RecordField{"hasACLMetadata", &Entry::hasACLMetadata},
      RecordField{"extendedAttributes", &Entry::extendedAttributes},
      RecordField{"aclText", &Entry::aclText},
      RecordField{"symlinkTarget", &Entry::symlinkTarget},
      RecordField{"payloadKey", &Entry::payloadKey},
      RecordField{"payloadParts", &Entry::payloadParts},
      RecordField{"uploadStrategy", &Entry::uploadStrategy},
      RecordField{"multipartPartCount", &Entry::multipartPartCount},
      RecordField{"multipartPartSizeBytes", &Entry::multipartPartSizeBytes},
      RecordField{"contentChecksumSHA256", &Entry::contentChecksumSHA256},
      RecordField{"payloadEncoding", &Entry::payloadEncoding},
      RecordField{"storedSize", &Entry::storedSize},
      RecordField{"sparseExtents", &Entry::sparseExtents},
      RecordField{"hardLinkIdentity", &Entry::hardLinkIdentity},
      RecordField{"hardLinkPrimaryPath", &Entry::hardLinkPrimaryPath},
  };
};

}  // namespace velmora

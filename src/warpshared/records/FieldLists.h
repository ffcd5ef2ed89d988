// The fields of all records of the shared formats, with their keys, in the order of reading.
#pragma once

#include "json/RecordFields.h"
#include "warpshared/records/DestroyedManifestIndex.h"
#include "warpshared/records/VelmoraWarpSharedEntry.h"
#include "warpshared/records/VelmoraWarpSharedManifest.h"

#include <tuple>

namespace velmora::internal {

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

template <>
struct RecordFields<VelmoraWarpSharedEntry> : RecordFields<WarpSharedEntry<Text>> {};

template <>
struct RecordFields<VelmoraWarpSharedManifest> {
  using Manifest = VelmoraWarpSharedManifest;
  static constexpr std::tuple list{
      RecordField{"version", &Manifest::version},
      RecordField{"warpID", &Manifest::warpID},
      RecordField{"deviceID", &Manifest::deviceID},
      RecordField{"manifestKey", &Manifest::manifestKey},
      RecordField{"originalFolderPath", &Manifest::originalFolderPath},
      RecordField{"displayName", &Manifest::displayName},
      RecordField{"createdAt", &Manifest::createdAt},
      RecordField{"uploadedAt", &Manifest::uploadedAt},
      RecordField{"replacedAt", &Manifest::replacedAt},
      RecordField{"status", &Manifest::status},
      RecordField{"failureDescription", &Manifest::failureDescription},
      RecordField{"verificationSampleAbsolutePaths", &Manifest::verificationSampleRelativePaths},
      RecordField{"rootMetadata", &Manifest::rootMetadata},
      RecordField{"entries", &Manifest::entries},
  };
};

template <>
struct RecordFields<VelmoraWarpSharedDestroyedManifestRecord> {
  using Record = VelmoraWarpSharedDestroyedManifestRecord;
  static constexpr std::tuple list{
      internal::RecordField{"warpID", &Record::warpID},
      internal::RecordField{"manifestKey", &Record::manifestKey},
      internal::RecordField{"originalFolderPath", &Record::originalFolderPath},
      internal::RecordField{"destroyedAt", &Record::destroyedAt},
  };
};

template <>
struct RecordFields<VelmoraWarpSharedDestroyedManifestIndex> {
  using Index = VelmoraWarpSharedDestroyedManifestIndex;
  static constexpr std::tuple list{
      internal::RecordField{"version", &Index::version},
      internal::RecordField{"generatedAt", &Index::generatedAt},
      internal::RecordField{"records", &Index::records},
  };
};

}  // namespace velmora::internal

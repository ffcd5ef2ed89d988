#include "bench/PlainRecords.h"

#include <nlohmann/json.hpp>

namespace velmora {
namespace {

using nlohmann::json;

// The templates below select the overload for the type of a field.

template <typename Value>
void extract(const json& value, Value& result) {
  value.get_to(result);
}

void extract(const json& object, PlainExtendedAttribute& attribute);
void extract(const json& object, PlainPayloadPart& part);
void extract(const json& object, PlainSparseExtent& extent);
void extract(const json& object, PlainHardLinkIdentity& identity);
void extract(const json& object, PlainEntry& entry);

template <typename Record>
void extract(const json& array, std::vector<Record>& records) {
  records.reserve(array.size());
  for (const json& element : array) {
    extract(element, records.emplace_back());
  }
}

template <typename Value>
void extractMember(const json& object, const char* key, Value& result) {
  extract(object.at(key), result);
}

template <typename Value>
void extractMember(const json& object, const char* key, std::optional<Value>& result) {
  const auto member = object.find(key);
  if (member != object.end() && !member->is_null()) {
    extract(*member, result.emplace());
  }
}

void extract(const json& object, PlainExtendedAttribute& attribute) {
  extractMember(object, "name", attribute.name);
  extractMember(object, "base64Value", attribute.base64Value);
}

void extract(const json& object, PlainPayloadPart& part) {
  extractMember(object, "key", part.key);
  extractMember(object, "offset", part.offset);
  extractMember(object, "size", part.size);
  extractMember(object, "namespace", part.payloadNamespace);
}

void extract(const json& object, PlainSparseExtent& extent) {
  extractMember(object, "logicalOffset", extent.logicalOffset);
  extractMember(object, "storedOffset", extent.storedOffset);
  extractMember(object, "length", extent.length);
}

void extract(const json& object, PlainHardLinkIdentity& identity) {
  extractMember(object, "deviceID", identity.deviceID);
  extractMember(object, "inode", identity.inode);
}

void extract(const json& object, PlainEntry& entry) {
  extractMember(object, "absolutePath", entry.absolutePath);
  extractMember(object, "displayName", entry.displayName);
  extractMember(object, "kind", entry.kind);
  extractMember(object, "size", entry.size);
  extractMember(object, "modificationTimeNanoseconds", entry.modificationTimeNanoseconds);
  extractMember(object, "statusChangeTimeNanoseconds", entry.statusChangeTimeNanoseconds);
  extractMember(object, "birthTimeNanoseconds", entry.birthTimeNanoseconds);
  extractMember(object, "ownerUserID", entry.ownerUserID);
  extractMember(object, "ownerGroupID", entry.ownerGroupID);
  extractMember(object, "posixPermissions", entry.posixPermissions);
  extractMember(object, "bsdFlags", entry.bsdFlags);
  extractMember(object, "hasModificationTimeMetadata", entry.hasModificationTimeMetadata);
  extractMember(object, "hasOwnershipMetadata", entry.hasOwnershipMetadata);
  extractMember(object, "hasPOSIXPermissionsMetadata", entry.hasPOSIXPermissionsMetadata);
  extractMember(object, "hasBSDFlagsMetadata", entry.hasBSDFlagsMetadata);
  extractMember(object, "hasExtendedAttributesMetadata", entry.hasExtendedAttributesMetadata);
  extractMember(object, "hasACLMetadata", entry.hasACLMetadata);
  extractMember(object, "extendedAttributes", entry.extendedAttributes);
  extractMember(object, "aclText", entry.aclText);
  extractMember(object, "symlinkTarget", entry.symlinkTarget);
  extractMember(object, "payloadKey", entry.payloadKey);
  extractMember(object, "payloadParts", entry.payloadParts);
  extractMember(object, "uploadStrategy", entry.uploadStrategy);
  extractMember(object, "multipartPartCount", entry.multipartPartCount);
  extractMember(object, "multipartPartSizeBytes", entry.multipartPartSizeBytes);
  extractMember(object, "contentChecksumSHA256", entry.contentChecksumSHA256);
  extractMember(object, "payloadEncoding", entry.payloadEncoding);
  extractMember(object, "storedSize", entry.storedSize);
  extractMember(object, "sparseExtents", entry.sparseExtents);
  extractMember(object, "hardLinkIdentity", entry.hardLinkIdentity);
  extractMember(object, "hardLinkPrimaryPath", entry.hardLinkPrimaryPath);
}

}  // namespace

PlainManifest plainManifest(const json& manifest) {
  PlainManifest result;
  extractMember(manifest, "version", result.version);
  extractMember(manifest, "warpID", result.warpID);
  extractMember(manifest, "deviceID", result.deviceID);
  extractMember(manifest, "manifestKey", result.manifestKey);
  extractMember(manifest, "originalFolderPath", result.originalFolderPath);
  extractMember(manifest, "displayName", result.displayName);
  extractMember(manifest, "createdAt", result.createdAt);
  extractMember(manifest, "uploadedAt", result.uploadedAt);
  extractMember(manifest, "replacedAt", result.replacedAt);
  extractMember(manifest, "status", result.status);
  extractMember(manifest, "failureDescription", result.failureDescription);
  extractMember(manifest, "verificationSampleAbsolutePaths",
                result.verificationSampleAbsolutePaths);
  extractMember(manifest, "rootMetadata", result.rootMetadata);
  extractMember(manifest, "entries", result.entries);
  return result;
}

}  // namespace velmora

// Simple records of a manifest over a general JSON library: every text a std::string, every array a
// std::vector, every field copied, and none checked.
#pragma once

#include <nlohmann/json_fwd.hpp>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace velmora {

struct PlainExtendedAttribute {
  std::string name;
  std::string base64Value;
};

struct PlainPayloadPart {
  std::string key;
  std::int64_t offset = 0;
  std::int64_t size = 0;
  std::optional<std::string> payloadNamespace;
};

struct PlainSparseExtent {
  std::int64_t logicalOffset = 0;
  std::int64_t storedOffset = 0;
  std::int64_t length = 0;
};

struct PlainHardLinkIdentity {
  std::uint64_t deviceID = 0;
  std::uint64_t inode = 0;
};

struct PlainEntry {
  std::string absolutePath;
  std::string displayName;
  std::string kind;
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
  std::vector<PlainExtendedAttribute> extendedAttributes;
  std::optional<std::string> aclText;
  std::optional<std::string> symlinkTarget;
  std::optional<std::string> payloadKey;
  std::vector<PlainPayloadPart> payloadParts;
  std::optional<std::string> uploadStrategy;
  std::optional<std::int64_t> multipartPartCount;
  std::optional<std::int64_t> multipartPartSizeBytes;
  std::optional<std::string> contentChecksumSHA256;
  std::string payloadEncoding;
  std::int64_t storedSize = 0;
  std::vector<PlainSparseExtent> sparseExtents;
  std::optional<PlainHardLinkIdentity> hardLinkIdentity;
  std::optional<std::string> hardLinkPrimaryPath;
};

struct PlainManifest {
  std::int64_t version = 0;
  std::string warpID;
  std::string deviceID;
  std::string manifestKey;
  std::string originalFolderPath;
  std::string displayName;
  std::string createdAt;
  std::optional<std::string> uploadedAt;
  std::optional<std::string> replacedAt;
  std::string status;
  std::optional<std::string> failureDescription;
  std::vector<std::string> verificationSampleAbsolutePaths;
  PlainEntry rootMetadata;
  std::vector<PlainEntry> entries;
};

/// Throws nlohmann::json::exception for a missing required key and for another type.
[[nodiscard]] PlainManifest plainManifest(const nlohmann::json& manifest);

}  // namespace velmora

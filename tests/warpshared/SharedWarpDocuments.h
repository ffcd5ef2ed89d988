// Valid documents of the shared formats with every field, for tests to change.
#pragma once

#include "json/DecodingError.h"
#include "tests/warpshared/JSONTree.h"
#include "warpshared/reading/ManifestDecoding.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <variant>

namespace velmora::internal {

/// A file entry with every field.
inline JSONTree entryDocument(const std::string& path) {
  return JSONTree::Object{
      {"absolutePath", '\'' + path + '\''},
      {"displayName", "'name'"},
      {"kind", "'file'"},
      {"size", "1000"},
      {"modificationTimeNanoseconds", "1740830400123456789"},
      {"statusChangeTimeNanoseconds", "1740830400123456790"},
      {"birthTimeNanoseconds", "-5"},
      {"ownerUserID", "501"},
      {"ownerGroupID", "20"},
      {"posixPermissions", "420"},
      {"bsdFlags", "32768"},
      {"hasModificationTimeMetadata", "true"},
      {"hasOwnershipMetadata", "true"},
      {"hasPOSIXPermissionsMetadata", "true"},
      {"hasBSDFlagsMetadata", "true"},
      {"hasExtendedAttributesMetadata", "true"},
      {"hasACLMetadata", "true"},
      {"extendedAttributes",
       JSONTree::Array{JSONTree::Object{{"name", "'com.example.a'"}, {"base64Value", "'QQ=='"}},
                       JSONTree::Object{{"name", "'com.example.b'"}, {"base64Value", "''"}}}},
      {"aclText", "'!#acl 1'"},
      {"symlinkTarget", "'../target'"},
      {"payloadKey", "'objects/a'"},
      {"payloadParts",
       JSONTree::Array{
           JSONTree::Object{
               {"key", "'objects/a/1'"}, {"offset", "0"}, {"size", "600"}, {"namespace", "'warp'"}},
           JSONTree::Object{{"key", "'objects/a/2'"}, {"offset", "600"}, {"size", "400"}}}},
      {"uploadStrategy", "'multipart'"},
      {"multipartPartCount", "2"},
      {"multipartPartSizeBytes", "600"},
      {"contentChecksumSHA256", '\'' + std::string(63, 'a') + "F'"},
      {"payloadEncoding", "'raw'"},
      {"storedSize", "900"},
      {"sparseExtents", JSONTree::Array{JSONTree::Object{
                            {"logicalOffset", "100"}, {"storedOffset", "0"}, {"length", "900"}}}},
      {"hardLinkIdentity",
       JSONTree::Object{{"deviceID", "16777231"}, {"inode", "18446744073709551615"}}},
      {"hardLinkPrimaryPath", "'/Users/a/Docs/primary'"},
  };
}

/// The manifest of /Users/a/Docs with the entries "file" and "primary".
inline JSONTree manifestDocument() {
  JSONTree primary = entryDocument("/Users/a/Docs/primary");
  primary["hardLinkPrimaryPath"] = "null";
  return JSONTree::Object{
      {"version", "4"},
      {"warpID", "'W-1'"},
      {"deviceID", "'D-1'"},
      {"manifestKey", "'manifests/W-1.json'"},
      {"originalFolderPath", "'/Users/a/Docs'"},
      {"displayName", "'Docs'"},
      {"createdAt", "'2025-03-01T12:00:00Z'"},
      {"uploadedAt", "'2025-03-01T12:05:00+01:00'"},
      {"replacedAt", "'2025-03-02T00:00:00Z'"},
      {"status", "'needsAttention'"},
      {"failureDescription", "'no network'"},
      {"verificationSampleAbsolutePaths",
       JSONTree::Array{"'/Users/a/Docs/file'", "'/Users/a/Docs'"}},
      {"rootMetadata", entryDocument("/Users/a/Docs")},
      {"entries", JSONTree::Array{entryDocument("/Users/a/Docs/file"), std::move(primary)}},
  };
}

inline JSONTree indexDocument() {
  const auto record = [](const std::string& name) {
    return JSONTree::Object{{"warpID", "'W-" + name + '\''},
                            {"manifestKey", "'manifests/" + name + '\''},
                            {"originalFolderPath", "'/Users/a/" + name + '\''},
                            {"destroyedAt", "'2025-03-01T12:00:00Z'"}};
  };
  return JSONTree::Object{{"version", "1"},
                          {"generatedAt", "'2025-03-05T00:00:00Z'"},
                          {"records", JSONTree::Array{record("b"), record("a")}}};
}

inline VelmoraWarpSharedManifest decodedManifest(std::string bytes) {
  return ManifestDecoder().decode(bytes);
}

/// The verdict without a fault.
inline constexpr std::string_view valid = "valid";

/// The verdict of a decoding: "valid", or a fault with its path.
template <class Decoding>
std::string verdictOf(Decoding decoding) {
  try {
    decoding();
    return std::string(valid);
  } catch (const DecodingError& error) {
    std::string path;
    for (const CodingKey& key : error.codingPath()) {
      const auto* index = std::get_if<std::size_t>(&key);
      path += '/' + (index != nullptr ? std::to_string(*index) : std::get<std::string>(key));
    }
    return std::string(name(error.kind())) + " at " + path + ": " + error.what();
  }
}

}  // namespace velmora::internal

// Minimal manifests, for tests that need many or short ones.
#pragma once

#include "tests/warpshared/SharedWarpDocuments.h"

#include <cstddef>
#include <functional>
#include <string>
#include <utility>

namespace velmora::internal {

/// An entry without optional fields.
inline JSONTree plainEntryDocument(const std::string& path) {
  JSONTree entry = entryDocument(path);
  for (const char* key :
       {"statusChangeTimeNanoseconds", "birthTimeNanoseconds", "aclText", "symlinkTarget",
        "payloadKey", "uploadStrategy", "multipartPartCount", "multipartPartSizeBytes",
        "contentChecksumSHA256", "hardLinkIdentity", "hardLinkPrimaryPath"}) {
    entry.erase(key);
  }
  for (const char* key : {"extendedAttributes", "payloadParts", "sparseExtents"}) {
    entry[key] = JSONTree::Array{};
  }
  return entry;
}

/// The manifest of /a with these entries and no sample.
inline JSONTree plainManifestDocument(JSONTree::Array entries = {}) {
  JSONTree manifest = manifestDocument();
  for (const char* key : {"uploadedAt", "replacedAt", "failureDescription"}) {
    manifest.erase(key);
  }
  manifest["originalFolderPath"] = "'/a'";
  manifest["verificationSampleAbsolutePaths"] = JSONTree::Array{};
  manifest["rootMetadata"] = plainEntryDocument("/a");
  manifest["entries"] = JSONTree(std::move(entries));
  return manifest;
}

/// The same as text, with `count` entries. `path` returns the path of the entry with a number.
inline std::string plainManifestText(std::size_t count,
                                     const std::function<std::string(std::size_t)>& path,
                                     const JSONStyle& style = jsonStyles.front()) {
  std::string text = plainManifestDocument({"ENTRIES"}).text(style);
  const std::string entry = plainEntryDocument("PATH").text(style);
  const std::size_t placeOfPath = entry.find("PATH");
  std::string entries;
  for (std::size_t number = 0; number < count; ++number) {
    entries += number == 0 ? "" : ",";
    entries.append(entry, 0, placeOfPath);
    entries += path(number);
    entries.append(entry, placeOfPath + 4);
  }
  return text.replace(text.find("ENTRIES"), 7, entries);
}

}  // namespace velmora::internal

// Changed manifests, and the verdicts of both readers. The diagnosing reader raises each fault. The
// streaming reader accepts or refuses.
#pragma once

#include "tests/warpshared/ManifestReadings.h"
#include "tests/warpshared/SharedWarpDocuments.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>

namespace velmora::internal {

// The verdicts on manifests.
inline constexpr std::string_view unsupportedVersion =
    "dataCorrupted at /version: Unsupported shared Warp manifest version.";
inline constexpr std::string_view unsafeIdentity =
    "dataCorrupted at /originalFolderPath: Shared Warp identity, object key, or original path is "
    "unsafe.";
inline constexpr std::string_view inconsistent =
    "dataCorrupted at /entries: Shared Warp manifest dates or original-path ownership are "
    "inconsistent.";
inline constexpr std::string_view strayHardLink =
    "dataCorrupted at /entries: Shared Warp hard-link references must remain inside the manifest.";

// The verdicts on entries. Their paths begin at the entry.
inline constexpr std::string_view notCanonical =
    "dataCorrupted at /absolutePath: Shared Warp entries require canonical absolute paths.";
inline constexpr std::string_view negativeSize =
    "dataCorrupted at /size: Shared Warp entry sizes cannot be negative.";
inline constexpr std::string_view negativeStoredSize =
    "dataCorrupted at /storedSize: Shared Warp stored sizes cannot be negative.";
inline constexpr std::string_view noChecksum =
    "dataCorrupted at /contentChecksumSHA256: Shared Warp checksums must be SHA-256 hex values.";
inline constexpr std::string_view incomplete =
    "dataCorrupted at /extendedAttributes: Shared Warp entries require complete current metadata.";
inline constexpr std::string_view unsafeHardLink =
    "dataCorrupted at /hardLinkPrimaryPath: Shared Warp hard-link paths must be canonical absolute "
    "paths.";
inline constexpr std::string_view unsafePart =
    "dataCorrupted at /payloadParts: Shared Warp payload parts contain an unsafe range or object "
    "key.";
inline constexpr std::string_view unsafeKey =
    "dataCorrupted at /payloadKey: Shared Warp payload keys must be safe relative object keys.";
inline constexpr std::string_view outsideExtent =
    "dataCorrupted at /sparseExtents: Shared Warp sparse extents fall outside the stored file "
    "range.";

/// The verdict on a value that is at `place` in a larger document.
inline std::string verdictAt(std::string_view place, std::string_view verdict) {
  std::string text(verdict);
  const std::size_t path = text.find(" at /");
  return path == std::string::npos ? text : text.insert(path + 4, place);
}

/// The arguments of JSONTree::change.
struct Edit {
  std::string_view path;
  std::string_view json;
};

class Edits {
 public:
  constexpr Edits(std::initializer_list<Edit> edits) : count_(edits.size()) {
    std::ranges::copy(edits, edits_.begin());
  }

  [[nodiscard]] const Edit* begin() const { return edits_.data(); }
  [[nodiscard]] const Edit* end() const { return begin() + count_; }

 private:
  std::array<Edit, 8> edits_{};
  std::size_t count_;
};

struct ManifestCase {
  const char* name;
  /// The changes to a manifest with every field.
  Edits edits;
  std::string_view verdict = valid;
};

/// Expects this result of the streaming reader, from a document in memory and from a stream. The
/// document in memory must be unchanged.
inline void expectStreamed(const ManifestReading& expected, ManifestReaders& readers,
                           const std::string& document, std::size_t chunkLength) {
  std::string bytes = document;
  EXPECT_EQ(readers.streamed(bytes, chunkLength), expected) << chunkLength;
  EXPECT_TRUE(bytes == document) << chunkLength;
  for (const std::size_t portion : {1U, 2U, 7U, 100'000U}) {
    EXPECT_EQ(readers.streamedInPortions(document, portion, chunkLength), expected)
        << chunkLength << ' ' << portion;
  }
}

/// Expects the row's verdict in every style, from both readers and from the decoder that uses both.
/// The edits are made at `place`.
inline void expectVerdict(const ManifestCase& row, std::string_view place = "") {
  SCOPED_TRACE(row.name);
  JSONTree document = manifestDocument();
  for (const Edit& edit : row.edits) {
    document.change(std::string(place) + std::string(edit.path), edit.json);
  }
  const std::string verdict = verdictAt(place, row.verdict);
  ManifestReaders readers;
  ManifestDecoder decoder;
  const ManifestReading reading = readers.diagnosed(document.text());
  EXPECT_EQ(reading.has_value(), row.verdict == valid);
  for (const JSONStyle& style : jsonStyles) {
    SCOPED_TRACE(style.name);
    const std::string text = document.text(style);
    EXPECT_EQ(readers.diagnosed(text), reading);
    for (const std::size_t chunkLength : {documentChunkLength, std::size_t{100}}) {
      expectStreamed(reading, readers, text, chunkLength);
    }
    std::string bytes = text;
    EXPECT_EQ(verdictOf([&] { static_cast<void>(decoder.decode(bytes)); }), verdict);
    bytes = text;
    EXPECT_EQ(verdictOf([&] { static_cast<void>(decoder.decodeSummary(bytes)); }), verdict);
  }
  // The decoder reads the next document independently of this one.
  const std::string usual = manifestDocument().text();
  std::string bytes = usual;
  EXPECT_EQ(decoder.decode(bytes), decodedManifest(usual));
}

}  // namespace velmora::internal

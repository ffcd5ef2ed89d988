// Passes over the files of the mirror that cannot be the manifest of a given Warp, without decoding
// them.
//
// A manifest of a Warp has the Warp's identifier as a JSON string. RFC 8259 allows a character to
// stand for itself or to be escaped, and of the characters 0-9, A-Z, a-z and "-" the only escape
// is "\u" with its number. So a file without "\u" and without the bytes of the identifier is no
// manifest of that Warp. Texts compare by canonical equivalence, and of these characters only "K"
// has another spelling (U+212A): an identifier with a "K", or with any other character, is not
// searched for, and then every file may be the one.
#pragma once

#include "text/Text.h"

#include <cstddef>
#include <string>
#include <vector>

namespace velmora {

class FileReader;

/// Each identifier costs a pass over the mirror; decoding costs about as much as this many passes.
inline constexpr std::size_t maxSearchedWarpIDs = 4;

/// One thread at a time.
class WarpIDSearch {
 public:
  explicit WarpIDSearch(const std::vector<Text>& warpIDs);

  /// Whether the file at `path` may be a manifest of one of the Warps. Reads it once, a chunk at a
  /// time. Throws PlatformError.
  [[nodiscard]] bool mayBeManifest(const Text& path, const FileReader& files);

 private:
  [[nodiscard]] bool isFoundIn(std::string_view bytes) const;

  std::vector<std::string> needles_;
  bool findsEverything_ = false;
  std::size_t maxNeedleLength_ = 0;
  std::vector<char> chunk_;
};

}  // namespace velmora

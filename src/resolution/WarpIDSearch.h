// Passes over the files of the mirror that cannot be the manifest of a given Warp, without decoding
// them.
//
// A manifest of a Warp has the Warp's identifier as a JSON string. RFC 8259 allows a character to
// stand for itself or to be escaped, and of the characters 0-9, A-Z, a-z and "-" the only escape
// is "\u" with its number. So a file without "\u" and without the bytes of the identifier is no
// manifest of that Warp. Texts compare by canonical equivalence, and of these characters only "K"
// has another spelling. An identifier with a "K", or with any other character, is not searched for;
// then every file may be the one.
#pragma once

#include "text/Text.h"

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace velmora {

class FileReader;

/// More identifiers are not searched for, because each one costs a pass over the mirror.
inline constexpr std::size_t maxSearchedWarpIDs = 4;

/// One thread at a time.
class WarpIDSearch {
 public:
  explicit WarpIDSearch(const std::vector<Text>& warpIDs);
  // The searchers refer to the identifiers.
  WarpIDSearch(const WarpIDSearch&) = delete;
  WarpIDSearch& operator=(const WarpIDSearch&) = delete;
  ~WarpIDSearch() = default;

  /// Whether the file at `path` may be a manifest of one of the Warps. Reads it once, a chunk at a
  /// time. Throws PlatformError.
  [[nodiscard]] bool mayBeManifest(const Text& path, const FileReader& files);

 private:
  [[nodiscard]] bool isFoundIn(std::string_view bytes) const;

  /// It does not look at each byte: it skips up to the length of the identifier.
  using Searcher = std::boyer_moore_horspool_searcher<std::string::const_iterator>;

  std::vector<std::string> warpIDs_;
  std::vector<Searcher> searchers_;
  bool findsEverything_ = false;
  std::size_t maxNeedleLength_ = 0;
  /// Files are read to the beginning of a page, because the kernel copies faster to it.
  struct alignas(4096) Page {
    char bytes[4096];
  };
  std::vector<Page> pages_;
};

}  // namespace velmora

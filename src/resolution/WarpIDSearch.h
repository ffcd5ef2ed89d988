// Finds the files of the mirror that may be the manifest of a given Warp, without decoding them.
//
// A manifest of a Warp contains the identifier of the Warp as a JSON string. In such a string a
// character is written as itself or as an escape (RFC 8259, section 7), and the only escape of
// 0-9, A-Z, a-z and "-" is "\u" with the number of the character. So a file that has neither "\u"
// nor the bytes of the identifier is not a manifest of that Warp. Texts are compared by canonical
// equivalence, and of these characters only "K" has another spelling. If an identifier has a "K" or
// any other character, it is not searched for, and every file may be its manifest.
#pragma once

#include "text/Text.h"

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace velmora {

class FileReader;

/// The most identifiers that are searched for, because each one costs another search of every file.
inline constexpr std::size_t maxSearchedWarpIDs = 4;

/// One thread at a time.
class WarpIDSearch {
 public:
  explicit WarpIDSearch(const std::vector<Text>& warpIDs);
  // The searchers refer to the identifiers.
  WarpIDSearch(const WarpIDSearch&) = delete;
  WarpIDSearch& operator=(const WarpIDSearch&) = delete;
  ~WarpIDSearch() = default;

  /// Whether the file at `path` may be a manifest of one of the Warps. Reads it once, in chunks; a
  /// file that is no JSON object is read no further than its beginning. Throws PlatformError.
  [[nodiscard]] bool mayBeManifest(const Text& path, const FileReader& files);

 private:
  [[nodiscard]] bool isFoundIn(std::string_view bytes) const;

  /// Skips up to the length of the identifier at each step.
  using Searcher = std::boyer_moore_horspool_searcher<std::string::const_iterator>;

  std::vector<std::string> warpIDs_;
  std::vector<Searcher> searchers_;
  bool findsEverything_ = false;
  std::size_t maxNeedleLength_ = 0;
  std::vector<char> memory_;
};

}  // namespace velmora

#include "resolution/WarpsAround.h"

#include "json/DecodingError.h"
#include "json/strict/JSONReader.h"
#include "platform/FileReader.h"
#include "platform/PathStandardizer.h"
#include "platform/PlatformError.h"
#include "resolution/WarpMarker.h"
#include "text/Characters.h"
#include "text/UniquePaths.h"

#include <algorithm>
#include <map>
#include <string>
#include <string_view>
#include <unordered_set>
#include <utility>

namespace velmora {

namespace {

using Names = std::unordered_multiset<Text>;

class MarkerSearch {
 public:
  MarkerSearch(const FileReader& files, const PathStandardizer& standardizer)
      : files_(files), standardizer_(standardizer) {}

  void searchAround(const StandardizedPath& path) {
    if (!hasCharacterPrefix(path.text, "/")) {
      return;
    }
    for (const Text& place : standardizer_.pathsStandardizedTo(path.text)) {
      searchInAndAbove(place.view());
    }
  }

  [[nodiscard]] std::optional<std::vector<Text>> warpIDs() && {
    return mayBeAny_ ? std::nullopt : std::optional(internal::uniquePaths(warpIDs_));
  }

 private:
  /// Cuts the path at each "/" byte, as the file system does, also inside of a longer character.
  /// Such a path is not an ancestor, but one marker too many does no harm.
  void searchInAndAbove(std::string_view path) {
    while (!mayBeAny_ && searched_.emplace(path).second) {
      readMarker(path);
      const std::size_t slash = path.rfind('/');
      if (slash == std::string_view::npos || path == "/") {
        return;
      }
      const std::string_view parent = path.substr(0, std::max<std::size_t>(slash, 1));
      const std::string_view name = path.substr(slash + 1);
      mayBeAny_ = !hasOneSpelling(name) && mayHaveTwin(parent, name);
      path = parent;
    }
  }

  void readMarker(std::string_view folder) {
    try {
      if (std::optional<WarpMarker> marker = readWarpMarker(folder, files_, reader_)) {
        warpIDs_.push_back(std::move(marker->warpID));
      }
    } catch (const PlatformError&) {
      // An unreadable marker confirms no manifest.
    } catch (const DecodingError&) {
      // Nor does an invalid one.
    }
  }

  /// Whether `parent` may contain another spelling of `name`.
  bool mayHaveTwin(std::string_view parent, std::string_view name) {
    const Names* const names = namesIn(parent);
    if (names == nullptr) {
      return true;
    }
    const auto [first, last] = names->equal_range(Text(name));
    return std::any_of(first, last, [&](const Text& other) { return other.view() != name; });
  }

  /// The names in `folder`; null if they cannot be listed.
  const Names* namesIn(std::string_view folder) {
    const auto [entry, isNew] = listings_.try_emplace(std::string(folder));
    std::optional<Names>& names = entry->second;
    if (isNew) {
      try {
        const std::vector<std::string> entries = files_.entryNames(folder, maxSearchedNameCount);
        names.emplace(entries.begin(), entries.end());
      } catch (const PlatformError&) {
        return nullptr;
      }
    }
    return names.has_value() ? &*names : nullptr;
  }

  const FileReader& files_;
  const PathStandardizer& standardizer_;
  internal::JSONReader reader_{maxWarpMarkerMemory};
  std::unordered_set<std::string> searched_;
  std::map<std::string, std::optional<Names>> listings_;
  std::vector<Text> warpIDs_;
  bool mayBeAny_ = false;
};

}  // namespace

std::optional<std::vector<Text>> warpsAround(const std::vector<StandardizedPath>& paths,
                                             const FileReader& files,
                                             const PathStandardizer& standardizer) {
  MarkerSearch search(files, standardizer);
  for (const StandardizedPath& path : paths) {
    search.searchAround(path);
  }
  return std::move(search).warpIDs();
}

}  // namespace velmora

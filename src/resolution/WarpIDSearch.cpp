#include "resolution/WarpIDSearch.h"

#include "json/TokenFinder.h"
#include "platform/FileReader.h"
#include "warpshared/reading/ManifestDecoding.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <string_view>
#include <utility>

namespace velmora {

namespace {

constexpr std::string_view unicodeEscape = "\\u";
constexpr std::size_t chunkLength = std::size_t{256} << 10;

constexpr std::size_t pageSize = 4096;

/// The first beginning of a page at or after `place`, which has room for a page. The kernel copies
/// faster to one.
char* pageIn(char* place) {
  void* page = place;
  std::size_t room = 2 * pageSize;
  return static_cast<char*>(std::align(pageSize, pageSize, page, room));
}

/// Whether the only escape of `character` in JSON is "\u".
bool isPlain(char character) {
  return ('0' <= character && character <= '9') || ('A' <= character && character <= 'Z') ||
         ('a' <= character && character <= 'z') || character == '-';
}

bool isSearchable(const Text& warpID) {
  return std::ranges::all_of(warpID.view(), isPlain) && hasOneSpelling(warpID);
}

}  // namespace

WarpIDSearch::WarpIDSearch(const std::vector<Text>& warpIDs)
    : findsEverything_(warpIDs.size() > maxSearchedWarpIDs ||
                       !std::ranges::all_of(warpIDs, isSearchable)) {
  if (findsEverything_) {
    return;
  }
  maxNeedleLength_ = unicodeEscape.size();
  for (const Text& warpID : warpIDs) {
    warpIDs_.push_back(warpID.utf8());
    maxNeedleLength_ = std::max(maxNeedleLength_, warpID.utf8().size());
  }
  for (const std::string& warpID : warpIDs_) {
    searchers_.emplace_back(warpID.begin(), warpID.end());
  }
}

bool WarpIDSearch::mayBeManifest(const Text& path, const FileReader& files) {
  if (findsEverything_) {
    return true;
  }
  // A needle may begin in one chunk and end in the next. So the end of a chunk is kept before the
  // next one, and searched again.
  const std::size_t overlap = maxNeedleLength_ - 1;
  memory_.resize(overlap + pageSize + chunkLength);
  char* const chunk = pageIn(memory_.data() + overlap);
  const std::unique_ptr<FileContent> file = files.open(path, maxSharedWarpManifestLength);
  std::size_t kept = 0;
  bool isFirst = true;
  while (const std::size_t count = file->read(chunk, chunkLength)) {
    const std::string_view searched(chunk - kept, kept + count);
    if (std::exchange(isFirst, false) && !internal::mayBeginWith('{', searched)) {
      return false;
    }
    if (isFoundIn(searched)) {
      return true;
    }
    kept = std::min(searched.size(), overlap);
    std::memmove(chunk - kept, searched.data() + searched.size() - kept, kept);
  }
  return false;
}

bool WarpIDSearch::isFoundIn(std::string_view bytes) const {
  return bytes.find(unicodeEscape) != std::string_view::npos ||
         std::ranges::any_of(searchers_, [&](const Searcher& searcher) {
           return std::search(bytes.begin(), bytes.end(), searcher) != bytes.end();
         });
}

}  // namespace velmora

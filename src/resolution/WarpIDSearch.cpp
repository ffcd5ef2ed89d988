#include "resolution/WarpIDSearch.h"

#include "platform/FileReader.h"
#include "warpshared/ManifestDecoding.h"

#include <algorithm>
#include <memory>
#include <string_view>

namespace velmora {

namespace {

constexpr std::string_view unicodeEscape = "\\u";
constexpr std::size_t chunkLength = std::size_t{256} << 10;

bool hasOneSpelling(char character) {
  return ('0' <= character && character <= '9') ||
         ('A' <= character && character <= 'Z' && character != 'K') ||
         ('a' <= character && character <= 'z') || character == '-';
}

bool isSearchable(const Text& warpID) { return std::ranges::all_of(warpID.view(), hasOneSpelling); }

}  // namespace

WarpIDSearch::WarpIDSearch(const std::vector<Text>& warpIDs)
    : findsEverything_(warpIDs.size() > maxSearchedWarpIDs ||
                       !std::ranges::all_of(warpIDs, isSearchable)) {
  if (findsEverything_) {
    return;
  }
  needles_ = {std::string(unicodeEscape)};
  for (const Text& warpID : warpIDs) {
    needles_.push_back(warpID.utf8());
  }
  maxNeedleLength_ = std::ranges::max(needles_, {}, &std::string::size).size();
}

bool WarpIDSearch::mayBeManifest(const Text& path, const FileReader& files) {
  if (findsEverything_) {
    return true;
  }
  // What a needle can have before the end of a chunk is searched again with the next chunk.
  const std::size_t overlap = maxNeedleLength_ - 1;
  chunk_.resize(overlap + chunkLength);
  const std::unique_ptr<FileContent> file = files.open(path, maxSharedWarpManifestLength);
  std::size_t kept = 0;
  while (const std::size_t count = file->read(chunk_.data() + kept, chunkLength)) {
    const std::size_t end = kept + count;
    if (isFoundIn({chunk_.data(), end})) {
      return true;
    }
    kept = std::min(end, overlap);
    std::copy_n(chunk_.data() + end - kept, kept, chunk_.data());
  }
  return false;
}

bool WarpIDSearch::isFoundIn(std::string_view bytes) const {
  return std::ranges::any_of(needles_, [&](const std::string& needle) {
    return bytes.find(needle) != std::string_view::npos;
  });
}

}  // namespace velmora

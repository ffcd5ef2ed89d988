#include "resolution/ManifestMirror.h"

#include "platform/FileReader.h"
#include "platform/PathStandardizer.h"
#include "platform/PlatformError.h"
#include "resolution/WarpIDSearch.h"
#include "text/LexicalPath.h"

#include <algorithm>
#include <string>
#include <utility>

namespace velmora {

namespace {

constexpr std::string_view manifestFileExtension = ".json";

std::vector<std::string> manifestFileNames(const Text& mirrorPath, const FileReader& files) {
  std::vector<std::string> names = files.entryNames(mirrorPath, unlimitedNameCount);
  std::erase_if(names, [](const std::string& name) { return !isManifestFileName(name); });
  return names;
}

/// Adds the file at `path` to a mirror. `read` returns its manifest, or none to leave it out.
template <class Mirror, class Read>
void load(Text path, Mirror& mirror, Read& read) {
  decltype(read(path)) manifest;
  try {
    manifest = read(path);
  } catch (const std::exception&) {
    // Also without the memory for this one, the others may still be read.
    mirror.refused.push_back({.filePath = std::move(path), .fault = std::current_exception()});
    return;
  }
  if (manifest.has_value()) {
    mirror.manifests.push_back({.filePath = std::move(path), .manifest = *std::move(manifest)});
  }
}

/// Reads one file of the mirror at `path` after the other.
template <class Mirror, class Read>
Mirror loadMirror(const Text& path, const FileReader& files, const MirrorProgress& progress,
                  Read read) {
  Mirror mirror;
  std::vector<std::string> names;
  try {
    names = manifestFileNames(path, files);
  } catch (const PlatformError&) {
    mirror.fault = std::current_exception();
  }
  for (std::size_t readCount = 0; readCount < names.size(); ++readCount) {
    if (progress) {
      progress(readCount, names.size());
    }
    load(appendingPathComponent(path, names[readCount]), mirror, read);
  }
  if (progress) {
    progress(names.size(), names.size());
  }
  std::ranges::stable_sort(mirror.manifests, std::ranges::greater(),
                           [](const auto& mirrored) { return mirrored.manifest.createdAt; });
  return mirror;
}

}  // namespace

bool isManifestFileName(std::string_view name) {
  return name.ends_with(manifestFileExtension) && name.size() > manifestFileExtension.size();
}

Text manifestMirrorPath(const Text& sharedWarpRoot, const PathStandardizer& paths) {
  return paths.standardizedFileURLPath(
      appendingPathComponent(sharedWarpRoot, manifestMirrorDirectoryName));
}

ManifestMirror mirroredManifests(const Text& sharedWarpRoot, const FileReader& files,
                                 const PathStandardizer& paths,
                                 const std::optional<std::vector<Text>>& warpIDs,
                                 const MirrorProgress& progress) {
  std::optional<WarpIDSearch> search;
  if (warpIDs.has_value()) {
    search.emplace(*warpIDs);
  }
  ManifestDecoder decoder;
  return loadMirror<ManifestMirror>(
      manifestMirrorPath(sharedWarpRoot, paths), files, progress,
      [&](const Text& path) -> std::optional<ManifestSummary> {
        if (search.has_value() && !search->mayBeManifest(path, files)) {
          return std::nullopt;
        }
        return decoder.readSummary(path, files);
      });
}

WholeManifestMirror wholeMirroredManifests(const Text& sharedWarpRoot, const FileReader& files,
                                           const PathStandardizer& paths,
                                           const MirrorProgress& progress) {
  ManifestDecoder decoder;
  return loadMirror<WholeManifestMirror>(
      manifestMirrorPath(sharedWarpRoot, paths), files, progress,
      [&](const Text& path) { return std::optional(decoder.read(path, files)); });
}

}  // namespace velmora

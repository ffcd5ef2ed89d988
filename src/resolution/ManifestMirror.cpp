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

/// Adds the file at `path` to a mirror. `read` returns its manifest; none if it is not valid.
template <class Mirror, class Read>
void load(Text path, Mirror& mirror, WarpIDSearch* search, const FileReader& files, Read& read) {
  decltype(read(path)) manifest;
  std::exception_ptr fault;
  try {
    if (search != nullptr && !search->mayBeManifest(path, files)) {
      return;
    }
    manifest = read(path);
  } catch (const std::exception&) {
    // Also without the memory for this one, the others may still be read.
    fault = std::current_exception();
  }
  if (manifest.has_value()) {
    mirror.manifests.push_back({.filePath = std::move(path), .manifest = *std::move(manifest)});
  } else {
    mirror.refused.push_back({.filePath = std::move(path), .fault = std::move(fault)});
  }
}

/// Reads one file of the mirror at `path` after the other, but those that `search` excludes, if
/// there is a search.
template <class Mirror, class Read>
Mirror loadMirror(const Text& path, const FileReader& files, WarpIDSearch* search,
                  const MirrorProgress& progress, Read read) {
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
    load(appendingPathComponent(path, names[readCount]), mirror, search, files, read);
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

std::exception_ptr manifestFault(const Text& path, const FileReader& files) {
  try {
    static_cast<void>(ManifestDecoder().readSummary(path, files, maxDiagnosedManifestLength));
    return nullptr;
  } catch (const std::exception&) {
    return std::current_exception();
  }
}

Text manifestMirrorPath(const Text& sharedWarpRoot, const PathStandardizer& paths) {
  return paths.standardizedFileURLPath(
      appendingPathComponent(sharedWarpRoot, manifestMirrorDirectoryName));
}

ManifestMirror mirroredManifests(const Text& sharedWarpRoot, const FileReader& files,
                                 const PathStandardizer& paths, RefusedFiles refusedFiles,
                                 const std::optional<std::vector<Text>>& warpIDs,
                                 const MirrorProgress& progress) {
  std::optional<WarpIDSearch> search;
  if (warpIDs.has_value()) {
    search.emplace(*warpIDs);
  }
  ManifestDecoder decoder;
  return loadMirror<ManifestMirror>(
      manifestMirrorPath(sharedWarpRoot, paths), files, search.has_value() ? &*search : nullptr,
      progress, [&](const Text& path) {
        return refusedFiles == RefusedFiles::diagnosed
                   ? std::optional(decoder.readSummary(path, files, maxDiagnosedManifestLength))
                   : decoder.readSummaryIfValid(path, files);
      });
}

WholeManifestMirror wholeMirroredManifests(const Text& sharedWarpRoot, const FileReader& files,
                                           const PathStandardizer& paths,
                                           const MirrorProgress& progress) {
  ManifestDecoder decoder;
  return loadMirror<WholeManifestMirror>(
      manifestMirrorPath(sharedWarpRoot, paths), files, /*search=*/nullptr, progress,
      [&](const Text& path) { return std::optional(decoder.read(path, files)); });
}

}  // namespace velmora

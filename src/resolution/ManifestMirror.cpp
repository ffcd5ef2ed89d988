#include "resolution/ManifestMirror.h"

#include "platform/FileReader.h"
#include "platform/PathStandardizer.h"
#include "platform/PlatformError.h"
#include "resolution/ResolutionObserver.h"
#include "text/LexicalPath.h"

#include <algorithm>
#include <exception>
#include <functional>
#include <optional>
#include <string>
#include <utility>

namespace velmora {

namespace {

constexpr std::string_view manifestFileExtension = ".json";

std::vector<std::string> manifestFileNames(const Text& mirror, const FileReader& files,
                                           ResolutionObserver& observer) {
  std::vector<std::string> names;
  try {
    names = files.entryNames(mirror);
  } catch (const PlatformError& error) {
    observer.didFailToListMirror(error);
    return {};
  }
  std::erase_if(names, [](const std::string& name) { return !isManifestFileName(name); });
  return names;
}

std::optional<ManifestSummary> readManifest(const Text& path, const FileReader& files,
                                            ManifestDecoder& decoder,
                                            ResolutionObserver& observer) {
  try {
    return decoder.readSummary(path, files);
  } catch (const std::exception& error) {
    observer.didRefuseManifest(path, error);
    return std::nullopt;
  }
}

Date creationOf(const MirroredManifest& mirrored) { return mirrored.manifest.createdAt; }

}  // namespace

bool isManifestFileName(std::string_view name) {
  return name.ends_with(manifestFileExtension) && name.size() > manifestFileExtension.size();
}

Text manifestMirrorPath(const Text& sharedWarpRoot, const PathStandardizer& paths) {
  return paths.standardizedFileURLPath(
      appendingPathComponent(sharedWarpRoot, manifestMirrorDirectoryName));
}

std::vector<MirroredManifest> mirroredManifests(const Text& sharedWarpRoot, const FileReader& files,
                                                const PathStandardizer& paths,
                                                ResolutionObserver& observer) {
  const Text mirror = manifestMirrorPath(sharedWarpRoot, paths);
  const std::vector<std::string> names = manifestFileNames(mirror, files, observer);
  observer.willReadManifests(names.size());
  ManifestDecoder decoder;
  std::vector<MirroredManifest> manifests;
  for (const std::string& name : names) {
    Text path = appendingPathComponent(mirror, name);
    std::optional<ManifestSummary> manifest = readManifest(path, files, decoder, observer);
    if (manifest.has_value()) {
      manifests.push_back({.filePath = std::move(path), .manifest = std::move(*manifest)});
      observer.didReadManifest(manifests.back());
    }
  }
  std::ranges::stable_sort(manifests, std::ranges::greater(), creationOf);
  return manifests;
}

}  // namespace velmora

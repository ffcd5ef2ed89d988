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

/// Reads one file after the other into a mirror.
class MirrorLoader {
 public:
  MirrorLoader(const FileReader& files, RefusedFiles refusedFiles,
               const std::optional<std::vector<Text>>& warpIDs)
      : files_(files), refusedFiles_(refusedFiles) {
    if (warpIDs.has_value()) {
      search_.emplace(*warpIDs);
    }
  }

  void load(Text path, ManifestMirror& mirror) {
    std::optional<ManifestSummary> manifest;
    std::exception_ptr fault;
    try {
      if (search_.has_value() && !search_->mayBeManifest(path, files_)) {
        return;
      }
      manifest = refusedFiles_ == RefusedFiles::diagnosed
                     ? std::optional(decoder_.readSummary(path, files_, maxDiagnosedManifestLength))
                     : decoder_.readSummaryIfValid(path, files_);
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

 private:
  const FileReader& files_;
  const RefusedFiles refusedFiles_;
  std::optional<WarpIDSearch> search_;
  ManifestDecoder decoder_;
};

Date creationOf(const MirroredManifest& mirrored) { return mirrored.manifest.createdAt; }

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
  const Text path = manifestMirrorPath(sharedWarpRoot, paths);
  ManifestMirror mirror;
  std::vector<std::string> names;
  try {
    names = manifestFileNames(path, files);
  } catch (const PlatformError&) {
    mirror.fault = std::current_exception();
  }
  MirrorLoader loader(files, refusedFiles, warpIDs);
  for (std::size_t readCount = 0; readCount < names.size(); ++readCount) {
    if (progress) {
      progress(readCount, names.size());
    }
    loader.load(appendingPathComponent(path, names[readCount]), mirror);
  }
  if (progress) {
    progress(names.size(), names.size());
  }
  std::ranges::stable_sort(mirror.manifests, std::ranges::greater(), creationOf);
  return mirror;
}

}  // namespace velmora

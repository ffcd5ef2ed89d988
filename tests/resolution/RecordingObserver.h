// Keeps what resolution tells.
#pragma once

#include "resolution/ManifestMirror.h"
#include "resolution/ResolutionObserver.h"

#include <map>
#include <string>
#include <vector>

namespace velmora {

class RecordingObserver final : public ResolutionObserver {
 public:
  std::vector<std::string> listingErrors;
  std::vector<std::size_t> announcedCounts;
  std::vector<std::string> readFiles;
  /// By file.
  std::map<std::string, std::string> refusals;
  std::vector<std::size_t> tombstoneCounts;
  std::vector<std::string> tombstoneErrors;
  /// By file.
  std::map<std::string, ManifestVerdict> verdicts;
  /// What reading a marker raised, by the manifest's file.
  std::map<std::string, std::string> markerErrors;

  void didFailToListMirror(const std::exception& error) override {
    listingErrors.emplace_back(error.what());
  }
  void willReadManifests(std::size_t count) override { announcedCounts.push_back(count); }
  void didReadManifest(const MirroredManifest& manifest) override {
    readFiles.push_back(manifest.filePath.utf8());
  }
  void didRefuseManifest(const Text& filePath, const std::exception& error) override {
    refusals[filePath.utf8()] = error.what();
  }
  void didLoadTombstones(std::size_t count) override { tombstoneCounts.push_back(count); }
  void didFailToLoadTombstones(const std::exception& error) override {
    tombstoneErrors.emplace_back(error.what());
  }
  void didJudgeManifest(const MirroredManifest& manifest, ManifestVerdict verdict,
                        const std::exception* error) override {
    verdicts[manifest.filePath.utf8()] = verdict;
    if (error != nullptr) {
      markerErrors[manifest.filePath.utf8()] = error->what();
    }
  }
};

}  // namespace velmora

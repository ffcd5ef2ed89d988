// Keeps what resolution tells as lines of text, in its order.
#pragma once

#include "resolution/ManifestMirror.h"
#include "resolution/ResolutionObserver.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <exception>
#include <set>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace velmora {

using Lines = std::vector<std::string>;

/// Keeps a line for each call, and expects each call on the thread that made the observer.
class LineObserver final : public ResolutionObserver {
 public:
  Lines told;
  std::set<ManifestVerdict> verdicts;
  /// It throws std::runtime_error once it has so many lines.
  std::size_t lineLimit = 1'000'000;

  void willReadManifests(std::size_t count) override { tell("will read " + std::to_string(count)); }
  void didReadManifest(const MirroredManifest& mirrored) override {
    tell("read " + mirrored.filePath.utf8() + ": " + mirrored.manifest.warpID.utf8() + ", " +
         std::to_string(mirrored.manifest.entryCount));
  }
  void didRefuseManifest(const Text& filePath, const std::exception& error) override {
    tell("refused " + filePath.utf8() + ": " + error.what());
  }
  void didLoadTombstones(std::size_t count) override {
    tell("tombstones " + std::to_string(count));
  }
  void didJudgeManifest(const MirroredManifest& mirrored, ManifestVerdict verdict,
                        const std::exception* error) override {
    verdicts.insert(verdict);
    tell(mirrored.filePath.utf8() + " of " + mirrored.manifest.originalFolderPath.utf8() + ": " +
         std::to_string(static_cast<int>(verdict)) + (error != nullptr ? error->what() : ""));
  }

 private:
  void tell(std::string line) {
    EXPECT_EQ(std::this_thread::get_id(), thread_);
    told.push_back(std::move(line));
    if (told.size() >= lineLimit) {
      throw std::runtime_error("enough");
    }
  }

  const std::thread::id thread_ = std::this_thread::get_id();
};

}  // namespace velmora

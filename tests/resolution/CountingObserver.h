// Counts what resolution tells.
#pragma once

#include "resolution/ResolutionObserver.h"

#include <cstddef>
#include <exception>
#include <new>

namespace velmora {

/// Allocates nothing, so that only the failures of what is tested count.
class CountingObserver final : public ResolutionObserver {
 public:
  std::size_t readCount = 0;
  std::size_t refusalsForWantOfMemory = 0;
  std::size_t otherRefusals = 0;
  std::size_t confirmedCount = 0;
  std::size_t otherVerdicts = 0;

  void didReadManifest(const MirroredManifest&) override { ++readCount; }
  void didRefuseManifest(const Text&, const std::exception& error) override {
    ++(dynamic_cast<const std::bad_alloc*>(&error) != nullptr ? refusalsForWantOfMemory
                                                              : otherRefusals);
  }
  void didJudgeManifest(const MirroredManifest&, ManifestVerdict verdict,
                        const std::exception*) override {
    ++(verdict == ManifestVerdict::confirmed ? confirmedCount : otherVerdicts);
  }
};

}  // namespace velmora

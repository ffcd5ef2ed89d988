// Keeps what is otherwise swallowed while the warped folders are looked up.
#pragma once

#include "Fault.h"
#include "SharedPlaces.h"
#include "extension/SelectionScreening.h"
#include "resolution/ManifestMirror.h"
#include "resolution/ResolutionObserver.h"

#include <cstddef>
#include <exception>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace velmora {

class FileReader;
struct Platform;

namespace inspect {

/// A valid manifest, and whether its folder is warped.
struct JudgedManifest {
  std::string file;
  ManifestSummary manifest;
  ManifestVerdict verdict = ManifestVerdict::confirmed;
  /// What reading the marker raised, if that is why.
  std::optional<Fault> fault;
};

/// A file of the mirror that is no valid manifest.
struct RefusedManifest {
  std::string file;
  Fault fault;
};

/// One look-up of the warped folders.
struct Resolution {
  /// None where rootFault is there.
  std::optional<SharedPlaces> places;
  /// There is no shared Warp root; nothing else was looked at.
  std::optional<Fault> rootFault;
  /// The mirror is there but cannot be listed.
  std::optional<Fault> mirrorFault;
  bool isMirrorMissing = false;
  /// The record of destroyed manifests cannot be used.
  std::optional<Fault> indexFault;
  std::size_t tombstoneCount = 0;
  /// Newest first.
  std::vector<JudgedManifest> judged;
  std::vector<RefusedManifest> refused;

  /// Whether every file of the mirror was looked at; none is there when the mirror is missing.
  [[nodiscard]] bool isComplete() const {
    return !rootFault.has_value() && !mirrorFault.has_value();
  }
  [[nodiscard]] std::size_t confirmedCount() const;
  [[nodiscard]] std::optional<Text> pathOf(Text SharedPlaces::*place) const;
};

/// What is told of the files while they are read; each may be missing.
struct ReadingListener {
  std::function<void(std::size_t count)> willRead;
  std::function<void()> didReadOne;
};

/// Records one look-up, and the items that are screened after it.
class ResolutionRecorder final : public ScreeningObserver {
 public:
  /// What `platform` refers to is kept by reference.
  explicit ResolutionRecorder(const Platform& platform, ReadingListener listener = {});

  const Resolution& resolution() const { return resolution_; }
  const std::vector<ScreenedItem>& items() const { return items_; }

  void didFailToLocateRoot(const std::exception& error) override;
  void didFailToListMirror(const std::exception& error) override;
  void willReadManifests(std::size_t count) override;
  void didReadManifest(const MirroredManifest& manifest) override;
  void didRefuseManifest(const Text& filePath, const std::exception& error) override;
  void didLoadTombstones(std::size_t count) override;
  void didFailToLoadTombstones(const std::exception& error) override;
  void didJudgeManifest(const MirroredManifest& mirrored, ManifestVerdict verdict,
                        const std::exception* error) override;
  void didScreenItem(const ScreenedItem& item) override;

 private:
  const FileReader& files_;
  ReadingListener listener_;
  Resolution resolution_;
  std::vector<ScreenedItem> items_;
};

}  // namespace inspect

}  // namespace velmora

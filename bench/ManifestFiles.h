// Manifests in memory, so that no file is read while time is measured.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace velmora {

/// The bytes of the file at `path`, with the room behind them that decoders ask for. Throws what
/// std::filesystem and std::ifstream throw.
[[nodiscard]] std::string readManifestBytes(const std::filesystem::path& path);

/// The files of a directory of manifests, sorted.
[[nodiscard]] std::vector<std::filesystem::path> manifestPaths(
    const std::filesystem::path& directory);

/// The manifests of one directory.
class ManifestSet {
 public:
  explicit ManifestSet(const std::filesystem::path& directory);

  /// A copy of each file, made by this call in memory that was in use before, for decoders to
  /// overwrite. Valid until the next call.
  [[nodiscard]] std::vector<std::string>& freshCopies();

 private:
  std::vector<std::string> files_;
  std::vector<std::string> copies_;
};

}  // namespace velmora

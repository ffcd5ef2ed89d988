// Manifests in memory, so that the measured time includes no reading of files.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace velmora {

/// The bytes of the file at `path`, with room after them, which decoders require. Throws the errors
/// of std::filesystem and std::ifstream.
[[nodiscard]] std::string readManifestBytes(const std::filesystem::path& path);

/// The files of a directory of manifests, sorted.
[[nodiscard]] std::vector<std::filesystem::path> manifestPaths(
    const std::filesystem::path& directory);

/// The manifests of one directory.
class ManifestSet {
 public:
  explicit ManifestSet(const std::filesystem::path& directory);

  /// A copy of each file, in memory that was already in use, for decoders to overwrite. Valid until
  /// the next call.
  [[nodiscard]] std::vector<std::string>& freshCopies();

 private:
  std::vector<std::string> files_;
  std::vector<std::string> copies_;
};

}  // namespace velmora

#include "bench/ManifestFiles.h"

#include <simdjson.h>

#include <algorithm>
#include <cstddef>
#include <fstream>

namespace velmora {
namespace {

// Decoders that read whole vectors read beyond the end.
constexpr std::size_t roomAfterBytes = simdjson::SIMDJSON_PADDING;

}  // namespace

std::string readManifestBytes(const std::filesystem::path& path) {
  std::string bytes;
  const std::size_t size = std::filesystem::file_size(path);
  bytes.reserve(size + roomAfterBytes);
  bytes.resize(size);
  std::ifstream file;
  file.exceptions(std::ios::failbit | std::ios::badbit);
  file.open(path, std::ios::binary);
  file.read(bytes.data(), static_cast<std::streamsize>(size));
  return bytes;
}

std::vector<std::filesystem::path> manifestPaths(const std::filesystem::path& directory) {
  std::vector<std::filesystem::path> paths(std::filesystem::directory_iterator(directory), {});
  std::ranges::sort(paths);
  return paths;
}

ManifestSet::ManifestSet(const std::filesystem::path& directory) {
  for (const std::filesystem::path& path : manifestPaths(directory)) {
    files_.push_back(readManifestBytes(path));
  }
  copies_.resize(files_.size());
}

std::vector<std::string>& ManifestSet::freshCopies() {
  for (std::size_t index = 0; index < files_.size(); ++index) {
    copies_[index].reserve(files_[index].size() + roomAfterBytes);
    copies_[index].assign(files_[index]);
  }
  return copies_;
}

}  // namespace velmora

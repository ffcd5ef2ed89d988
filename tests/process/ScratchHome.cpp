#include "tests/process/ScratchHome.h"

#include <cerrno>
#include <fstream>
#include <iterator>
#include <system_error>

namespace velmora::process {

// The path has no symbolic links, because programs report resolved paths.
ScratchHome::ScratchHome() : path_(std::filesystem::canonical(directory_.path())) {
  std::filesystem::create_directory(runtimeDirectory());
  std::filesystem::permissions(runtimeDirectory(), std::filesystem::perms::owner_all);
}

Environment ScratchHome::environment() const {
  Environment result = inheritedEnvironment();
  result["HOME"] = path_;
  result["XDG_DATA_HOME"] = dataHome();
  result["XDG_DATA_DIRS"] = path_ / "share";
  result["XDG_CONFIG_HOME"] = configHome();
  result["XDG_CONFIG_DIRS"] = path_ / "etc";
  result["XDG_RUNTIME_DIR"] = runtimeDirectory();
  result["VELMORA_GROUP_CONTAINER"] = container();
  result["VELMORA_RESOURCE_DIR"] = VELMORA_TEST_RESOURCES;
  return result;
}

std::string ScratchHome::makeFolder(std::string_view name) const {
  const std::filesystem::path folder = folders() / name;
  std::filesystem::create_directories(folder);
  return folder;
}

std::string ScratchHome::makeFile(std::string_view name) const {
  const std::filesystem::path file = folders() / name;
  writeFile(file, "content");
  return file;
}

std::set<std::string> ScratchHome::listing() const {
  std::set<std::string> result;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(path_)) {
    const std::string name = entry.path().lexically_relative(path_);
    result.insert(entry.is_directory() && !entry.is_symlink() ? name + "/" : name);
  }
  return result;
}

void writeFile(const std::filesystem::path& path, std::string_view text) {
  std::filesystem::create_directories(path.parent_path());
  std::ofstream file(path, std::ios::binary);
  file.exceptions(std::ios::badbit | std::ios::failbit);
  file << text << std::flush;
}

std::string readFile(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) {
    throw std::system_error(errno, std::generic_category(), path);
  }
  return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace velmora::process

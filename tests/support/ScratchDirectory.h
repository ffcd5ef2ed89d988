// A test's own directory, removed with its content.
#pragma once

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace velmora {

class ScratchDirectory {
 public:
  ScratchDirectory() {
    std::string name = (std::filesystem::temp_directory_path() / "velmora.XXXXXX").string();
    if (::mkdtemp(name.data()) == nullptr) {
      throw std::runtime_error("no scratch directory");
    }
    path_ = name;
  }
  ScratchDirectory(const ScratchDirectory&) = delete;
  ScratchDirectory& operator=(const ScratchDirectory&) = delete;
  ~ScratchDirectory() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }

  /// The path of `name` in the directory, or of the directory itself.
  std::string path(std::string_view name = {}) const {
    return name.empty() ? path_ : path_ + "/" + std::string(name);
  }

  /// Creates the file `name` and the directories above it, or replaces the file. Returns its path.
  std::string write(std::string_view name, std::string_view bytes) const {
    std::string file = path(name);
    std::filesystem::create_directories(std::filesystem::path(file).parent_path());
    std::filesystem::remove_all(file);
    std::ofstream(file, std::ios::binary) << bytes;
    return file;
  }

  /// The names in the subdirectory `directory`, sorted.
  std::vector<std::string> names(std::string_view directory = {}) const {
    std::vector<std::string> result;
    for (const auto& entry : std::filesystem::directory_iterator(path(directory))) {
      result.push_back(entry.path().filename().string());
    }
    std::ranges::sort(result);
    return result;
  }

 private:
  std::string path_;
};

}  // namespace velmora

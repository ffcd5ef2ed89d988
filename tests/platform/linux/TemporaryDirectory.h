// A directory for the files of one test, removed with its owner.
#pragma once

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <system_error>

namespace velmora {

class TemporaryDirectory {
 public:
  TemporaryDirectory()
      : path_((std::filesystem::temp_directory_path() / "velmora-test-XXXXXX").string()) {
    if (mkdtemp(path_.data()) == nullptr) {
      throw std::system_error(errno, std::generic_category(), path_);
    }
  }
  TemporaryDirectory(const TemporaryDirectory&) = delete;
  TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;
  ~TemporaryDirectory() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }

  const std::string& path() const { return path_; }

  /// The absolute path of `relative` in this directory, which need not exist.
  std::string path(std::string_view relative) const { return path_ + "/" + std::string(relative); }

  /// Makes the file `relative`, with the directories above it, in the place of what was there.
  /// Returns its absolute path.
  std::string write(std::string_view relative, std::string_view bytes) const {
    std::string file = path(relative);
    std::filesystem::create_directories(std::filesystem::path(file).parent_path());
    std::filesystem::remove_all(file);
    std::ofstream(file, std::ios::binary) << bytes;
    return file;
  }

 private:
  std::string path_;
};

}  // namespace velmora

// A home directory for one test: folders to select, the XDG directories, and the application's
// container.
#pragma once

#include "tests/support/Process.h"
#include "tests/support/ScratchDirectory.h"

#include <filesystem>
#include <set>
#include <string>
#include <string_view>

namespace velmora::process {

class ScratchHome {
 public:
  ScratchHome();

  const std::filesystem::path& path() const { return path_; }
  std::filesystem::path dataHome() const { return path_ / "data"; }
  std::filesystem::path configHome() const { return path_ / "config"; }
  std::filesystem::path runtimeDirectory() const { return path_ / "run"; }
  std::filesystem::path folders() const { return path_ / "folders"; }
  std::filesystem::path container() const { return path_ / "container"; }
  std::filesystem::path requestDirectory() const { return container() / "Warp" / "FinderHandoff"; }

  /// The environment of a program in this home, without a bus and without a preferred language.
  Environment environment() const;

  /// Create a folder or a file to select; return its absolute path.
  std::string makeFolder(std::string_view name) const;
  std::string makeFile(std::string_view name) const;

  /// All paths below the home, relative to it. Directories end in "/".
  std::set<std::string> listing() const;

 private:
  ScratchDirectory directory_;
  std::filesystem::path path_;
};

/// Writes a file and creates the directories above it.
void writeFile(const std::filesystem::path& path, std::string_view text);
std::string readFile(const std::filesystem::path& path);

}  // namespace velmora::process

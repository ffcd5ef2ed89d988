// The files that the actions make.
#pragma once

#include <string_view>

namespace velmora {

/// Calls may come from any thread and any number of processes. Paths are absolute.
class FileWriter {
 public:
  virtual ~FileWriter() = default;

  /// Makes `path` and every missing directory above it, with default permissions. A directory that
  /// exists is no error. Throws PlatformError.
  virtual void createDirectories(std::string_view path) = 0;

  /// Makes the file `path` with `bytes`, whole from the moment at which it appears, and on stable
  /// storage then (as far as the system's fsync sees to that). Throws PlatformError, and leaves
  /// nothing behind then. No other name that it uses meanwhile ends in ".json".
  virtual void writeAtomically(std::string_view path, std::string_view bytes) = 0;
};

}  // namespace velmora

// Creates files and directories.
#pragma once

#include "platform/PlatformError.h"

#include <string_view>

namespace velmora {

/// Calls may come from any thread and any number of processes. Paths are absolute.
class FileWriter {
 public:
  virtual ~FileWriter() = default;

  /// Creates `path` and every missing directory above it, with default permissions. An existing
  /// directory is no error. Tries to put the new ones on stable storage. Throws PlatformError.
  virtual void createDirectories(std::string_view path) = 0;

  /// Creates the file `path` with `bytes`. When the file appears, it is complete and on stable
  /// storage (as far as the system's fsync ensures that). Throws PlatformError, and then leaves no
  /// file behind. No temporary name ends in ".json".
  ///
  /// After a success, may remove a few temporary files that killed processes left in the same
  /// directory.
  virtual void writeAtomically(std::string_view path, std::string_view bytes) = 0;
};

}  // namespace velmora

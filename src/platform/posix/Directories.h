// Creates directories, and makes their entries last.
#pragma once

#include "platform/posix/FileDescriptor.h"

#include <dirent.h>

#include <memory>
#include <string>

namespace velmora {

/// Opens the directory at `path` for reading, or the one that a symbolic link leads to. Not open
/// when there is none. Never waits, whatever is at the path.
[[nodiscard]] FileDescriptor openDirectory(const std::string& path) noexcept;

struct DirectoryCloser {
  void operator()(DIR* directory) const { ::closedir(directory); }
};

using DirectoryStream = std::unique_ptr<DIR, DirectoryCloser>;

/// The stream of an open directory, which takes the descriptor over. Null, with errno set, when the
/// system refuses.
[[nodiscard]] DirectoryStream streamOf(FileDescriptor directory) noexcept;

/// Puts the entries of the directory at `path` on stable storage, as far as the system's fsync
/// ensures that. A failure is not reported. Never waits for a peer.
void synchronizeDirectory(const std::string& path) noexcept;

/// Creates the directory `path` and every missing one above it, and puts their entries on stable
/// storage. Throws PlatformError.
void createDirectories(const std::string& path);

}  // namespace velmora

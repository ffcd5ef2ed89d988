// createDirectories tries the directories above the path, from the nearest upwards, until one
// exists or can be created. It then creates the missing ones below it, downwards.
#include "platform/posix/Directories.h"

#include "platform/posix/SystemCalls.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <filesystem>

namespace velmora {

namespace {

/// The permissions of a new directory, before the user's umask reduces them.
constexpr mode_t newDirectoryMode = 0777;

bool isDirectory(const std::string& path) {
  struct stat status {};
  return ::stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

/// Returns 0 or the errno value. An existing directory is a success, also when another process
/// creates it at the same time.
int createDirectory(const std::string& path) {
  if (::mkdir(path.c_str(), newDirectoryMode) == 0) {
    synchronizeDirectory(std::filesystem::path(path).parent_path().string());
    return 0;
  }
  const int error = errno;
  return isDirectory(path) ? 0 : error;
}

void requireSuccess(int error) {
  if (error != 0) {
    throw posixError(error);
  }
}

/// Creates the missing directories above `path`. Does not examine any directory above the nearest
/// existing one, because a sandbox may hide those.
void createDirectoriesAbove(const std::string& path) {
  int error = ENOENT;
  std::size_t slash = path.size();
  while (error == ENOENT && slash > 1 && slash != std::string::npos) {
    slash = path.rfind('/', slash - 1);
    const bool hasDirectory = slash != 0 && slash != std::string::npos;
    error = hasDirectory ? createDirectory(path.substr(0, slash)) : 0;
  }
  requireSuccess(error);
  for (slash = path.find('/', slash + 1); slash != std::string::npos;
       slash = path.find('/', slash + 1)) {
    requireSuccess(createDirectory(path.substr(0, slash)));
  }
}

}  // namespace

FileDescriptor openDirectory(const std::string& path) noexcept {
  return FileDescriptor::adopt(retryingInterrupted([&] {
    return ::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
  }));
}

DirectoryStream streamOf(FileDescriptor directory) noexcept {
  DirectoryStream stream(::fdopendir(directory.get()));
  if (stream) {
    // closedir() closes the descriptor from now on.
    static_cast<void>(directory.release());
  }
  return stream;
}

void synchronizeDirectory(const std::string& path) noexcept {
  if (const FileDescriptor directory = openDirectory(path); directory.isOpen()) {
    ::fsync(directory.get());
  }
}

void createDirectories(const std::string& path) {
  int error = createDirectory(path);
  if (error == ENOENT) {
    createDirectoriesAbove(path);
    error = createDirectory(path);
  }
  requireSuccess(error);
}

}  // namespace velmora

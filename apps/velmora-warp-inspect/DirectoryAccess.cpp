#include "DirectoryAccess.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <string>

namespace velmora::inspect {

namespace {

bool isMissing(const std::string& path) {
  // Of a link that leads nowhere, too, something is there: no directory can be made in its place.
  struct stat status {};
  return ::lstat(path.c_str(), &status) != 0 && errno == ENOENT;
}

bool isWritableDirectory(const std::string& path) {
  struct stat status {};
  return ::stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode) &&
         ::faccessat(AT_FDCWD, path.c_str(), W_OK | X_OK, AT_EACCESS) == 0;
}

}  // namespace

bool canHoldNewFiles(std::string_view path) {
  std::string directory(path);
  while (directory.size() > 1 && isMissing(directory)) {
    directory.resize(std::max<std::size_t>(directory.rfind('/'), 1));
  }
  return isWritableDirectory(directory);
}

}  // namespace velmora::inspect

// Things other than a regular file that may lie at a file's path.
#pragma once

#include "platform/posix/FileDescriptor.h"

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <stdexcept>
#include <string>

namespace velmora {

inline void require(bool isDone, const std::string& what) {
  if (!isDone) {
    throw std::runtime_error(what + ": " + std::strerror(errno));
  }
}

inline void link(const std::string& target, const std::string& path) {
  require(::symlink(target.c_str(), path.c_str()) == 0, path);
}

inline void makeSocket(const std::string& path) {
  const FileDescriptor socket = FileDescriptor::adopt(::socket(AF_UNIX, SOCK_STREAM, 0));
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  std::strncpy(address.sun_path, path.c_str(), sizeof address.sun_path - 1);
  require(::bind(socket.get(), reinterpret_cast<sockaddr*>(&address), sizeof address) == 0, path);
}

/// Creates a file of this length at `path`, without allocating its blocks.
inline void makeSparseFile(const std::string& path, off_t length) {
  const FileDescriptor file =
      FileDescriptor::adopt(::open(path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600));
  require(::ftruncate(file.get(), length) == 0, path);
}

}  // namespace velmora

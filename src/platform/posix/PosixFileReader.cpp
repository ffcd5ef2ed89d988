#include "platform/posix/PosixFileReader.h"

#include "platform/posix/FileDescriptor.h"
#include "platform/posix/SystemCalls.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <optional>
#include <string>

namespace velmora {

namespace {

std::optional<struct stat> statusOf(std::string_view path) {
  struct stat status {};
  if (path.find('\0') != std::string_view::npos ||
      retryingInterrupted([&] { return ::stat(std::string(path).c_str(), &status); }) != 0) {
    return std::nullopt;
  }
  return status;
}

FileDescriptor openRegularFile(const std::string& path) {
  FileDescriptor file = FileDescriptor::adopt(retryingInterrupted(
      [&] { return ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY); }));
  struct stat status {};
  if (!file.isOpen() || ::fstat(file.get(), &status) != 0) {
    throw posixError(errno);
  }
  if (!S_ISREG(status.st_mode)) {
    throw posixError(S_ISDIR(status.st_mode) ? EISDIR : EINVAL);
  }
  return file;
}

}  // namespace

bool PosixFileReader::exists(std::string_view path) const { return statusOf(path).has_value(); }

bool PosixFileReader::isDirectory(std::string_view path) const {
  const std::optional<struct stat> status = statusOf(path);
  return status.has_value() && S_ISDIR(status->st_mode);
}

std::string PosixFileReader::read(std::string_view path) const {
  const FileDescriptor file = openRegularFile(systemPath(path));
  // Grown by what arrives, never by the size that the file claims: it may be sparse or change.
  std::string content;
  char piece[16 * 1024];
  while (true) {
    const ssize_t count =
        retryingInterrupted([&] { return ::read(file.get(), piece, sizeof piece); });
    if (count < 0) {
      throw posixError(errno);
    }
    if (count == 0) {
      return content;
    }
    content.append(piece, static_cast<std::size_t>(count));
  }
}

}  // namespace velmora

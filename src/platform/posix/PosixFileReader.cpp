// A path is opened first, and the open file is then checked through its descriptor, so that nobody
// can exchange the file in between. O_NONBLOCK lets the open of a FIFO or device return at once;
// fstat then refuses everything but a regular file, and O_DIRECTORY everything but a directory. The
// length that fstat reports is only a claim: the bytes that arrive are counted against the limit.
#include "platform/posix/PosixFileReader.h"

#include "platform/posix/Directories.h"
#include "platform/posix/FileDescriptor.h"
#include "platform/posix/ReadAll.h"
#include "platform/posix/SystemCalls.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <utility>

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

FileDescriptor openToRead(const std::string& path, int flags) {
  FileDescriptor file = FileDescriptor::adopt(retryingInterrupted(
      [&] { return ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY | flags); }));
  if (!file.isOpen()) {
    throw posixError(errno);
  }
  return file;
}

/// The length that a regular file claims to have. Throws EISDIR or EINVAL for another kind of file.
std::uintmax_t claimedLength(const FileDescriptor& file) {
  struct stat status {};
  if (retryingInterrupted([&] { return ::fstat(file.get(), &status); }) != 0) {
    throw posixError(errno);
  }
  if (!S_ISREG(status.st_mode)) {
    throw posixError(S_ISDIR(status.st_mode) ? EISDIR : EINVAL);
  }
  return static_cast<std::uintmax_t>(std::max<off_t>(status.st_size, 0));
}

class PosixFileContent final : public FileContent {
 public:
  PosixFileContent(FileDescriptor file, std::size_t maxLength)
      : file_(std::move(file)), allowedLength_(maxLength) {}

  std::size_t read(char* room, std::size_t size) override {
    const auto count = retryingInterrupted([&] { return ::read(file_.get(), room, size); });
    if (count < 0) {
      throw posixError(errno);
    }
    const auto length = static_cast<std::size_t>(count);
    if (length > allowedLength_) {
      throw posixError(EFBIG);
    }
    allowedLength_ -= length;
    return length;
  }

 private:
  FileDescriptor file_;
  std::size_t allowedLength_;
};

/// The name of the next entry, also "." and ".."; none at the end.
std::optional<std::string> nextName(DIR& directory) {
  // readdir() returns null at the end and on failure; only a failure sets errno.
  errno = 0;
  const dirent* const entry = ::readdir(&directory);
  if (entry != nullptr) {
    return std::string(static_cast<const char*>(entry->d_name));
  }
  if (errno != 0) {
    throw posixError(errno);
  }
  return std::nullopt;
}

}  // namespace

bool PosixFileReader::exists(std::string_view path) const { return statusOf(path).has_value(); }

bool PosixFileReader::isDirectory(std::string_view path) const {
  const std::optional<struct stat> status = statusOf(path);
  return status.has_value() && S_ISDIR(status->st_mode);
}

std::string PosixFileReader::read(std::string_view path, std::size_t maxLength) const {
  const FileDescriptor file = openToRead(systemPath(path), 0);
  const std::uintmax_t length = claimedLength(file);
  return readAll(length, maxLength, [&](char* room, std::size_t size) {
    return retryingInterrupted([&] { return ::read(file.get(), room, size); });
  });
}

std::unique_ptr<FileContent> PosixFileReader::open(std::string_view path,
                                                   std::size_t maxLength) const {
  FileDescriptor file = openToRead(systemPath(path), 0);
  if (claimedLength(file) > maxLength) {
    throw posixError(EFBIG);
  }
  return std::make_unique<PosixFileContent>(std::move(file), maxLength);
}

std::vector<std::string> PosixFileReader::entryNames(std::string_view path,
                                                     std::size_t maxCount) const {
  const DirectoryStream directory = streamOf(openToRead(systemPath(path), O_DIRECTORY));
  if (!directory) {
    throw posixError(errno);
  }
  // A set, because a directory that changes during the reading may report a name twice.
  std::set<std::string> names;
  while (std::optional<std::string> name = nextName(*directory)) {
    if (*name != "." && *name != "..") {
      names.insert(*std::move(name));
    }
    if (names.size() > maxCount) {
      throw posixError(EFBIG);
    }
  }
  return {names.begin(), names.end()};
}

}  // namespace velmora

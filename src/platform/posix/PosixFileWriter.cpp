// A file is complete and on stable storage before it gets its final name. The first attempt writes
// an unnamed file (O_TMPFILE) and links it to its path. This fails, for example, on a file system
// without unnamed files, or when the path exists. The second attempt then writes a hidden partial
// file and renames it. The directory is synchronised at the end.
#include "platform/posix/PosixFileWriter.h"

#include "platform/posix/Directories.h"
#include "platform/posix/FileDescriptor.h"
#include "platform/posix/PartialFiles.h"
#include "platform/posix/SystemCalls.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <string>
#include <utility>

namespace velmora {

namespace {

/// The permissions of a new file, before the user's umask reduces them.
constexpr mode_t newFileMode = 0666;

FileDescriptor openToWrite(const std::string& path, int flags) {
  return FileDescriptor::adopt(retryingInterrupted(
      [&] { return ::open(path.c_str(), O_WRONLY | O_CLOEXEC | flags, newFileMode); }));
}

void writeAll(const FileDescriptor& file, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t count =
        retryingInterrupted([&] { return ::write(file.get(), bytes.data(), bytes.size()); });
    if (count < 0) {
      throw posixError(errno);
    }
    bytes.remove_prefix(static_cast<std::size_t>(count));
  }
}

void writeDurably(const FileDescriptor& file, std::string_view bytes) {
  writeAll(file, bytes);
  if (retryingInterrupted([&] { return ::fsync(file.get()); }) != 0) {
    throw posixError(errno);
  }
}

std::string parentDirectory(const std::string& path) {
  return std::filesystem::path(path).parent_path().string();
}

#ifdef O_TMPFILE
/// Whether the file is in place. False when an unnamed file cannot be opened or linked; nothing is
/// left behind then, and the caller tries a partial file, which reports the real error. Throws when
/// the writing fails.
bool writeThroughUnnamedFile(const std::string& path, std::string_view bytes) {
  const FileDescriptor file = openToWrite(parentDirectory(path), O_TMPFILE);
  if (!file.isOpen()) {
    return false;
  }
  writeDurably(file, bytes);
  const std::string link = "/proc/self/fd/" + std::to_string(file.get());
  return ::linkat(AT_FDCWD, link.c_str(), AT_FDCWD, path.c_str(), AT_SYMLINK_FOLLOW) == 0;
}
#else
bool writeThroughUnnamedFile(const std::string&, std::string_view) { return false; }
#endif

/// Removes the file at its path on destruction, unless the file was moved to its destination.
class PartialFile {
 public:
  explicit PartialFile(std::string path) : path_(std::move(path)) {}
  PartialFile(const PartialFile&) = delete;
  PartialFile& operator=(const PartialFile&) = delete;
  ~PartialFile() {
    if (!path_.empty()) {
      ::unlink(path_.c_str());
    }
  }

  void moveTo(const std::string& destination) {
    if (::rename(path_.c_str(), destination.c_str()) != 0) {
      throw posixError(errno);
    }
    path_.clear();
  }

 private:
  std::string path_;
};

void writeThroughPartialFile(const std::string& path, std::string_view bytes) {
  const std::filesystem::path target(path);
  const std::string partialPath =
      (target.parent_path() / partialFileName(target.filename().string())).string();
  const FileDescriptor file = openToWrite(partialPath, O_CREAT | O_EXCL);
  if (!file.isOpen()) {
    throw posixError(errno);
  }
  PartialFile partialFile(partialPath);
  writeDurably(file, bytes);
  partialFile.moveTo(path);
}

}  // namespace

void PosixFileWriter::createDirectories(std::string_view path) {
  velmora::createDirectories(systemPath(path));
}

void PosixFileWriter::writeAtomically(std::string_view path, std::string_view bytes) {
  const std::string target = systemPath(path);
  // Computed before the file exists: a later exception would report a failure although the request
  // is in place.
  const std::string directory = parentDirectory(target);
  if (!writeThroughUnnamedFile(target, bytes)) {
    writeThroughPartialFile(target, bytes);
  }
  // Best effort: the file is in place, and an error could not undo that.
  synchronizeDirectory(directory);
  removeAbandonedPartialFiles(directory);
}

}  // namespace velmora

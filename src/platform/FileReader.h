// The files that the actions look at. Every path is absolute, and what lies there is hostile: it
// may be of any kind and size, and may change between and during two calls. Nothing is cached.
#pragma once

#include <cstddef>
#include <limits>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace velmora {

/// For entryNames, which then reads every name.
inline constexpr std::size_t unlimitedNameCount = std::numeric_limits<std::size_t>::max();

/// A regular file that is open, read once from its beginning to its end. Closed with the object.
/// One thread at a time.
class FileContent {
 public:
  virtual ~FileContent() = default;

  /// Reads on, at most `size` bytes (not 0) into `room`. Returns how many; 0 at the end of the
  /// file, wherever that is by now. Throws PlatformError.
  virtual std::size_t read(char* room, std::size_t size) = 0;
};

/// Calls may come from any thread.
class FileReader {
 public:
  virtual ~FileReader() = default;

  /// Whether anything of any kind is at `path`, symbolic links followed. False when that cannot be
  /// told.
  virtual bool exists(std::string_view path) const = 0;

  /// Whether `path` is a directory or a symbolic link to one.
  virtual bool isDirectory(std::string_view path) const = 0;

  /// The whole content of a regular file of at most `maxLength` bytes; never waits for a peer.
  /// Of a file that shrinks meanwhile, what was read. Throws PlatformError: EFBIG for a longer
  /// file, also one that grows beyond the limit meanwhile, and EISDIR or EINVAL for anything but a
  /// regular file. What memory it touches is in proportion to what arrives, whatever size the file
  /// claims.
  virtual std::string read(std::string_view path, std::size_t maxLength) const = 0;

  /// As `read`, but piece by piece. EFBIG for a file that grows too long is thrown by the reading
  /// that finds it so.
  virtual std::unique_ptr<FileContent> open(std::string_view path, std::size_t maxLength) const = 0;

  /// The names of all entries of a directory, or of the directory that a symbolic link leads to:
  /// each once, hidden ones too, without "." and "..", sorted by their bytes. A name is returned as
  /// it is, also one that is not UTF-8. Nothing is told of what the entries are; they may be gone
  /// when the caller looks. Throws PlatformError: ENOTDIR for what is no directory, and EFBIG for a
  /// directory of more than `maxCount` entries, once it has read so many.
  virtual std::vector<std::string> entryNames(std::string_view path,
                                              std::size_t maxCount) const = 0;
};

}  // namespace velmora

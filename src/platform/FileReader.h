// The files that the actions look at. Every path is absolute, and what lies there is hostile: it
// may be of any kind and size, and may change between and during two calls. Nothing is cached.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace velmora {

/// Calls may come from any thread.
class FileReader {
 public:
  virtual ~FileReader() = default;

  /// Whether anything of any kind is at `path`, symbolic links followed. False when that cannot be
  /// told.
  virtual bool exists(std::string_view path) const = 0;

  /// Whether `path` is a directory or a symbolic link to one.
  virtual bool isDirectory(std::string_view path) const = 0;

  /// The whole content of a regular file of at most `maximumLength` bytes; never waits for a peer.
  /// Of a file that shrinks meanwhile, what was read. Throws PlatformError: EFBIG for a longer
  /// file, also one that grows beyond the limit meanwhile, and EISDIR or EINVAL for anything but a
  /// regular file. What memory it touches is in proportion to what arrives, whatever size the file
  /// claims.
  virtual std::string read(std::string_view path, std::size_t maximumLength) const = 0;

  /// The names of all entries of a directory, or of the directory that a symbolic link leads to:
  /// each once, hidden ones too, without "." and "..", sorted by their bytes. A name is returned as
  /// it is, also one that is not UTF-8. Nothing is told of what the entries are; they may be gone
  /// when the caller looks. Throws PlatformError, with ENOTDIR for what is no directory.
  virtual std::vector<std::string> entryNames(std::string_view path) const = 0;
};

}  // namespace velmora

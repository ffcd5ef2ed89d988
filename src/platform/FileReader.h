// The files that the actions look at. Every path is absolute, and what lies there is hostile: it
// may be of any kind and size, and may change between and during two calls. Nothing is cached.
#pragma once

#include <string>
#include <string_view>

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

  /// The whole content of a regular file; never waits for a peer. Throws PlatformError, for
  /// anything but a regular file with EISDIR or EINVAL.
  virtual std::string read(std::string_view path) const = 0;
};

}  // namespace velmora

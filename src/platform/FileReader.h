// Read access to files and directories. Every path is absolute. The file there is untrusted: it may
// be of any kind and size, and may change during a call and between calls. Nothing is cached.
#pragma once

#include "platform/PlatformError.h"

#include <cstddef>
#include <limits>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace velmora {

/// The `maxCount` with which entryNames reads every name.
inline constexpr std::size_t unlimitedNameCount = std::numeric_limits<std::size_t>::max();

/// An open regular file, read once from its beginning to its end. The destructor closes it. For one
/// thread at a time.
class FileContent {
 public:
  virtual ~FileContent() = default;

  /// Reads the next bytes, at most `size` (not 0), into `room`. Returns their number; 0 at the
  /// current end of the file. Throws PlatformError.
  virtual std::size_t read(char* room, std::size_t size) = 0;
};

/// Calls may come from any thread.
class FileReader {
 public:
  virtual ~FileReader() = default;

  /// Whether a file of any kind is at `path`. Symbolic links are followed. False when that cannot
  /// be determined.
  virtual bool exists(std::string_view path) const = 0;

  /// Whether `path` is a directory or a symbolic link to one.
  virtual bool isDirectory(std::string_view path) const = 0;

  /// The whole content of a regular file of at most `maxLength` bytes. Never waits for a peer, such
  /// as the writer of a FIFO. When the file shrinks meanwhile, returns the bytes that were read.
  ///
  /// Throws PlatformError: EFBIG for a longer file, also when it grows beyond the limit meanwhile;
  /// EISDIR or EINVAL for a file of another kind. Touches memory in proportion to the bytes that
  /// arrive, not to the size that the file claims.
  virtual std::string read(std::string_view path, std::size_t maxLength) const = 0;

  /// As `read`, but piece by piece. When the file grows too long, the FileContent::read that goes
  /// beyond the limit throws EFBIG.
  virtual std::unique_ptr<FileContent> open(std::string_view path, std::size_t maxLength) const = 0;

  /// The names of all entries of a directory, or of the directory that a symbolic link leads to.
  /// Each name comes once, sorted by its bytes; hidden names are included, "." and ".." are not. A
  /// name is returned unchanged, even if it is not UTF-8. The kinds of the entries are not
  /// reported; entries may be gone when the caller uses them.
  ///
  /// Throws PlatformError: ENOTDIR if `path` is no directory; EFBIG when it has more than
  /// `maxCount` entries, after reading that many.
  virtual std::vector<std::string> entryNames(std::string_view path,
                                              std::size_t maxCount) const = 0;
};

}  // namespace velmora

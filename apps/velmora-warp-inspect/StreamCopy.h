// Standard input and named pipes as files. A stream can be read only once and has no length, but a
// file is opened by its path, and read a second time for the place of a fault.
#pragma once

#include "platform/posix/FileDescriptor.h"

#include <cstddef>
#include <optional>
#include <string>

namespace velmora::inspect {

/// A regular file in memory with all that a stream has delivered.
class StreamCopy {
 public:
  /// Waits for the end of the stream. Throws PlatformError, EFBIG for more than `maxLength` bytes;
  /// and OutputError without the memory for the copy.
  StreamCopy(int stream, std::size_t maxLength);

  /// Valid until the destruction, in this process only.
  [[nodiscard]] std::string path() const;

 private:
  FileDescriptor file_;
};

/// The copy if `operand` is a stream: "-" or "/dev/stdin", which are standard input, or the path of
/// a pipe, also of "/dev/fd/63". Waits for the pipe's writer. Throws as StreamCopy.
[[nodiscard]] std::optional<StreamCopy> copyOfStream(const std::string& operand,
                                                     std::size_t maxLength);

}  // namespace velmora::inspect

// Local sockets on which tests wait for other programs.
#pragma once

#include "platform/posix/FileDescriptor.h"

#include <string>

namespace velmora {

/// Connects to the local socket `path`. Throws std::exception.
FileDescriptor connectTo(const std::string& path);

/// A local socket on which nobody answers unless asked to.
class Listener {
 public:
  explicit Listener(std::string path);

  const std::string& path() const { return path_; }
  /// Waits for a connection; none once closed.
  FileDescriptor accept() const;
  /// Turns away whoever connects. May be called on another thread.
  void close() const;
  /// Whether someone has connected whom nobody accepted.
  bool hasCaller() const;

 private:
  std::string path_;
  FileDescriptor socket_;
};

}  // namespace velmora

// Local sockets on which tests wait for other programs.
#pragma once

#include "platform/posix/FileDescriptor.h"

#include <string>

namespace velmora {

/// Connects to the local socket `path`. Throws std::exception.
FileDescriptor connectTo(const std::string& path);

/// A local socket that accepts no connection until asked to.
class Listener {
 public:
  explicit Listener(std::string path);

  const std::string& path() const { return path_; }
  /// Waits for a connection. Returns a closed descriptor after close().
  FileDescriptor accept() const;
  /// Refuses all further connections. May be called on another thread.
  void close() const;
  /// Whether a client waits to be accepted.
  bool hasCaller() const;

 private:
  std::string path_;
  FileDescriptor socket_;
};

}  // namespace velmora

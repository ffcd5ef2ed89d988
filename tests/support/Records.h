// What the tests' helper processes report: records of named values, over a local socket.
//
// On the wire a record is a row of "name=value" fields, each ended by NUL, and an empty field.
// Shared by the helper program and by the tests.
#pragma once

#include "platform/posix/FileDescriptor.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace velmora::process {

/// Names may repeat; values hold no NUL.
struct Record {
  std::vector<std::pair<std::string, std::string>> fields;

  void add(std::string_view name, std::string_view value);
  /// The first value of that name; empty when there is none.
  std::string value(std::string_view name) const;
  std::vector<std::string> values(std::string_view name) const;
};

/// One end of the conversation with a helper process.
class Channel {
 public:
  explicit Channel(FileDescriptor socket) : socket_(std::move(socket)) {}

  void write(const Record& record);
  /// Waits for a record. Throws std::runtime_error when the other end closes instead.
  Record read();
  /// Waits for the other end to close.
  void awaitEnd();

 private:
  std::string readField();

  FileDescriptor socket_;
  std::string received_;
};

/// Connects to the local socket `path`. Throws std::system_error.
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

}  // namespace velmora::process

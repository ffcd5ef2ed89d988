// A connection to a bus, as a stream of bytes. It never waits beyond a deadline.
#pragma once

#include "platform/posix/FileDescriptor.h"

#include <chrono>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace velmora {

/// For one thread at a time. The destructor closes the connection.
class BusSocket {
 public:
  using Deadline = std::chrono::steady_clock::time_point;

  /// Connects to the local socket `name` (see sessionBusSockets). None when nobody listens there,
  /// or a queue of other clients is full. Every later operation fails after `deadline`.
  [[nodiscard]] static std::optional<BusSocket> connect(const std::string& name, Deadline deadline);

  /// Sends all of `bytes`, or returns false when that fails.
  [[nodiscard]] bool send(std::string_view bytes);

  /// Waits for bytes and stores at most `size` (not 0) of them in `room`. Returns their number; 0
  /// when the connection has ended, or the deadline has passed.
  [[nodiscard]] std::size_t receive(char* room, std::size_t size);

 private:
  BusSocket(FileDescriptor socket, Deadline deadline);

  FileDescriptor socket_;
  Deadline deadline_;
};

}  // namespace velmora

// Messages to and from a bus.
#pragma once

#include "platform/linux/BusSocket.h"
#include "platform/linux/GLibPointers.h"

#include <cstdint>
#include <optional>

namespace velmora {

/// A call that was sent.
struct PendingCall {
  /// Its number on the connection.
  std::uint32_t serial;
};

/// For one thread at a time. Closed by the first failure; later uses then fail at once. Waits end
/// at the deadline of the socket.
class BusConnection {
 public:
  /// The connection at `socket` must be authenticated.
  explicit BusConnection(BusSocket socket);

  /// Sends a message, which must be new. None when that fails.
  std::optional<PendingCall> send(GDBusMessage& message);

  /// Waits for the answer to a call; null for an error or no answer. Other messages that arrive
  /// meanwhile are lost.
  GLibPointer<GVariant> awaitAnswer(PendingCall call);

 private:
  /// The next answer to any call; empty when the connection has ended.
  GObjectRef<GDBusMessage> receiveAnswer();

  std::optional<BusSocket> socket_;
  std::uint32_t lastSerial_ = 0;
};

}  // namespace velmora

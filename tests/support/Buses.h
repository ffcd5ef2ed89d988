// Session buses for tests: a real one, a filtering proxy, and broken ones.
#pragma once

#include "tests/support/Listener.h"
#include "tests/support/Process.h"
#include "tests/support/ScratchDirectory.h"

#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace velmora {

/// A message bus with only the services that the test adds. Ends with its owner.
class PrivateBus {
 public:
  /// Listens in `runtimeDirectory`, where programs find the session bus without an address. An
  /// empty path means a directory of its own.
  explicit PrivateBus(const std::string& runtimeDirectory = {});

  const std::string& address() const { return address_; }

  /// Lets the bus start `command` for this name. Must be called before the first call to the name.
  void addService(const std::string& name, const std::string& command) const;

  /// Stops the process of the bus: connections stay open, and answers do not arrive.
  void freeze() const;
  void thaw() const;

  /// Ends the bus at once.
  void die() { daemon_.reset(); }

 private:
  ScratchDirectory directory_;
  std::string address_;
  std::optional<process::HelperProcess> daemon_;
};

/// The proxy between a sandboxed application and the bus.
class FilteringProxy {
 public:
  /// `policy` has options of xdg-dbus-proxy, which name the messages that may pass.
  FilteringProxy(const std::string& busAddress, const std::vector<std::string>& policy);

  std::string address() const { return "unix:path=" + directory_.path("proxy"); }

 private:
  ScratchDirectory directory_;
  FileDescriptor lifeline_;
  std::optional<process::HelperProcess> proxy_;
};

enum class BusFault {
  /// The bus has ended and left its socket's file.
  crashed,
  /// Clients can connect and get no answer, not even to the authentication.
  letsNobodyIn,
  /// Clients can authenticate and then get no answer, not even to their greeting.
  answersNothing,
  /// Clients can authenticate. The bus closes the connection after the first message.
  hangsUp,
};

/// Behaves like a bus up to its fault.
class BrokenBus {
 public:
  explicit BrokenBus(BusFault fault);
  BrokenBus(const BrokenBus&) = delete;
  BrokenBus& operator=(const BrokenBus&) = delete;
  ~BrokenBus();

  /// The directory of the socket, which has the name of the session bus's socket.
  std::string directory() const { return directory_.path(); }
  std::string address() const { return "unix:path=" + directory_.path("bus"); }

  /// Whether a client has tried to connect and was not accepted.
  bool hasCaller() const { return listener_->hasCaller(); }

  /// Waits until its clients have left, and accepts no other client. Returns everything that
  /// clients sent after the authentication.
  const std::string& receivedBytes();

 private:
  void serve(bool hangsUp);

  ScratchDirectory directory_;
  std::optional<Listener> listener_;
  std::string receivedBytes_;
  std::thread server_;
};

}  // namespace velmora

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

/// How far a client of a broken bus comes.
enum class BusStage {
  /// Nobody listens: the bus has ended and left its socket's file.
  ended,
  /// The client has connected.
  connected,
  /// The client has asked for its authentication.
  authenticating,
  /// The client is authenticated and has greeted the bus.
  greeting,
  /// The client has got the answer to its greeting, and made a call.
  calling,
};

/// What a broken bus does to a client at its stage.
enum class BusManner {
  hangs,
  closes,
  /// Sends the same letter without end.
  babbles,
  /// Sends signals without end.
  sendsSignals,
  /// Sends an answer of 112 megabytes.
  sendsHugeAnswer,
};

/// Behaves like a bus up to the stage, and then in the given manner.
class BrokenBus {
 public:
  explicit BrokenBus(BusStage stage, BusManner manner = BusManner::hangs);
  BrokenBus(const BrokenBus&) = delete;
  BrokenBus& operator=(const BrokenBus&) = delete;
  ~BrokenBus();

  /// The directory of the socket, which has the name of the session bus's socket.
  std::string directory() const { return directory_.path(); }
  std::string address() const { return "unix:path=" + directory_.path("bus"); }

  /// Whether a client has connected to a bus that hangs at once.
  bool hasCaller() const { return listener_->hasCaller(); }

  /// Waits until its clients have left, and accepts no other client. Returns everything that
  /// clients sent after the authentication.
  const std::string& receivedBytes();

 private:
  void serve(BusStage stage, BusManner manner);
  void serveClient(const FileDescriptor& client, BusStage stage, BusManner manner);
  /// Waits for the next bytes. Returns false at the end.
  bool receive(const FileDescriptor& client);

  ScratchDirectory directory_;
  std::optional<Listener> listener_;
  std::string receivedBytes_;
  std::thread server_;
};

}  // namespace velmora

// Session buses for tests: a real one, a proxy that filters its messages, and broken ones.
#pragma once

#include "tests/support/Listener.h"
#include "tests/support/Process.h"
#include "tests/support/ScratchDirectory.h"

#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace velmora {

/// A message bus with no other services than those given. Ends with its owner.
class PrivateBus {
 public:
  /// At the place in `runtimeDirectory` where a session's bus is found without an address; without
  /// one, in a directory of its own.
  explicit PrivateBus(const std::string& runtimeDirectory = {});

  const std::string& address() const { return address_; }

  /// Lets the bus start `command` for the name. Before the first call to that name.
  void addService(const std::string& name, const std::string& command) const;

  /// Stops the bus in the middle of whatever it does: connections stay, answers do not come.
  void freeze() const;
  void thaw() const;

  /// Ends the bus at once.
  void die() { daemon_.reset(); }

 private:
  ScratchDirectory directory_;
  std::string address_;
  std::optional<process::HelperProcess> daemon_;
};

/// The proxy through which a sandboxed application uses the bus.
class FilteringProxy {
 public:
  /// Lets through what `policy` allows, options of xdg-dbus-proxy.
  FilteringProxy(const std::string& busAddress, const std::vector<std::string>& policy);

  std::string address() const { return "unix:path=" + directory_.path("proxy"); }

 private:
  ScratchDirectory directory_;
  FileDescriptor lifeline_;
  std::optional<process::HelperProcess> proxy_;
};

enum class BusFault {
  /// Has left its socket's file behind.
  crashed,
  /// Connections are made, and nobody says anything, not even that the user may come in.
  letsNobodyIn,
  /// Lets users in and answers nothing from then on, not even their greeting.
  answersNothing,
  /// Lets users in and hangs up at the first message.
  hangsUp,
};

/// What passes for a bus until it is asked something.
class BrokenBus {
 public:
  explicit BrokenBus(BusFault fault);
  BrokenBus(const BrokenBus&) = delete;
  BrokenBus& operator=(const BrokenBus&) = delete;
  ~BrokenBus();

  /// The directory of the socket, which has the name of a session's bus.
  std::string directory() const { return directory_.path(); }
  std::string address() const { return "unix:path=" + directory_.path("bus"); }

  /// Whether someone has called who was not even accepted.
  bool hasCaller() const { return listener_->hasCaller(); }

  /// Waits until its clients have gone, and takes no other. Everything that they said after they
  /// were let in.
  const std::string& lastWords();

 private:
  void serve(bool hangsUp);

  ScratchDirectory directory_;
  std::optional<Listener> listener_;
  std::string lastWords_;
  std::thread server_;
};

}  // namespace velmora

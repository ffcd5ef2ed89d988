// The session bus of a test, in good health and otherwise.
#pragma once

#include "tests/support/Records.h"
#include "tests/process/ScratchHome.h"

#include <sys/types.h>

#include <map>
#include <string>
#include <thread>

namespace velmora::process {

/// The names that a bus can bring to life, and the commands that do.
using Services = std::map<std::string, std::string>;

/// A bus that knows no services but those given, at the place where a session's bus is found
/// without an address. Ends with its owner.
class PrivateBus {
 public:
  explicit PrivateBus(const ScratchHome& home, const Services& services = {});
  PrivateBus(const PrivateBus&) = delete;
  PrivateBus& operator=(const PrivateBus&) = delete;
  ~PrivateBus();

  const std::string& address() const { return address_; }

 private:
  std::string address_;
  pid_t daemon_ = 0;
};

/// What passes for a bus until it is asked something.
enum class Silence {
  /// Accepts a connection and says nothing, not even that the user may come in.
  fromTheStart,
  /// Lets the user in and then answers nothing.
  afterAuthentication,
  /// Lets the user in and hangs up at the first message.
  hangsUp,
};

class SilentBus {
 public:
  SilentBus(const ScratchHome& home, Silence silence);
  SilentBus(const SilentBus&) = delete;
  SilentBus& operator=(const SilentBus&) = delete;
  ~SilentBus();

  std::string address() const { return "unix:path=" + listener_.path(); }
  /// Whether someone has called who was not even accepted.
  bool hasCaller() const { return listener_.hasCaller(); }

 private:
  Listener listener_;
  std::thread server_;
};

}  // namespace velmora::process

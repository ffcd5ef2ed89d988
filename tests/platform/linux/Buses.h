// Session buses of a test: a real one, a filter in front of it, and two that hang.
#pragma once

#include "platform/posix/FileDescriptor.h"
#include "tests/support/ScratchDirectory.h"

#include <sys/types.h>

#include <string>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

namespace velmora {

/// A program that runs beside the test, at the longest as long as its owner.
class ChildProcess {
 public:
  /// Starts a program of the path, which inherits `descriptor`.
  ChildProcess(std::vector<std::string> arguments, const FileDescriptor& descriptor);
  ChildProcess(ChildProcess&& other) noexcept : process_(std::exchange(other.process_, 0)) {}
  ChildProcess& operator=(ChildProcess&&) = delete;
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;
  ~ChildProcess() { end(); }

  void signal(int number) const;

  /// Kills it and waits until it is gone.
  void end();

 private:
  pid_t process_;
};

/// A message bus with no other services than those given.
class PrivateBus {
 public:
  PrivateBus();

  std::string address() const { return "unix:path=" + directory_.path("bus"); }

  /// Lets the bus start `command` for the name. Before the first call to that name.
  void addService(const std::string& name, const std::string& command) const;

  /// Stops the bus in the middle of whatever it does: connections stay, answers do not come.
  void freeze() const;
  void thaw() const;

  /// Ends the bus at once.
  void die() { daemon_.end(); }

 private:
  ScratchDirectory directory_;
  ChildProcess daemon_;
};

/// The filter that stands between a sandboxed application and the bus.
class FilteringProxy {
 public:
  /// Lets through what `policy` allows, options of xdg-dbus-proxy.
  FilteringProxy(const std::string& busAddress, const std::vector<std::string>& policy);

  std::string address() const { return "unix:path=" + directory_.path("proxy"); }

 private:
  ChildProcess startProxy(const std::string& busAddress, const std::vector<std::string>& policy);

  ScratchDirectory directory_;
  FileDescriptor lifeline_;
  ChildProcess proxy_;
};

/// A socket on which nobody accepts a connection. Clients connect all the same, and wait.
class DeafBus {
 public:
  DeafBus();

  std::string path() const { return directory_.path("bus"); }
  std::string address() const { return "unix:path=" + path(); }
  const FileDescriptor& listener() const { return listener_; }

  /// Leaves the socket's file behind, as a bus does that has crashed.
  void crash() { listener_ = FileDescriptor::adopt(-1); }

 private:
  ScratchDirectory directory_;
  FileDescriptor listener_;
};

/// A bus that lets one client in and answers nothing from then on, not even its greeting.
class MuteBus {
 public:
  MuteBus();
  MuteBus(const MuteBus&) = delete;
  MuteBus& operator=(const MuteBus&) = delete;
  ~MuteBus();

  std::string address() const { return socket_.address(); }

  /// Waits until the client has gone. Everything that it said after it was let in.
  const std::string& lastWords();

 private:
  DeafBus socket_;
  std::string lastWords_;
  std::thread server_;
};

}  // namespace velmora

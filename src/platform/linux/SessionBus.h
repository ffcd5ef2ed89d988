// The user's session bus, for a client that must never make its user wait.
//
// A bus may be absent, stale, hung, or die at any moment. Everything done with it is a hint to
// other programs, so no bus makes anything here fail outward or take longer than one limit of time
// for the process.
#pragma once

#include "platform/linux/GLibPointers.h"

#include <chrono>
#include <memory>
#include <optional>
#include <string>

namespace velmora {

class Environment;

/// What is called: the method `member` of an object at the owner of a bus name.
struct BusMethod {
  std::string busName;
  std::string objectPath;
  std::string interface;
  std::string member;
};

/// A call under way. Its time is limited from its start on.
class PendingCall {
 public:
  PendingCall(GDBusConnection& connection, const BusMethod& method, GVariant& arguments,
              std::chrono::milliseconds limit);
  ~PendingCall();
  PendingCall(const PendingCall&) = delete;
  PendingCall& operator=(const PendingCall&) = delete;

  /// Waits for the answer, at most for the rest of the time. Null when an error or nothing came.
  GLibPointer<GVariant> answer();

 private:
  void waitUntilFinished();

  // Of its own, so that waiting runs nothing but the end of this call.
  GLibPointer<GMainContext> context_;
  GObjectRef<GCancellable> cancellable_;
  GLibPointer<GVariant> answer_;
  bool finished_ = false;
};

/// Leaves a bus, waiting for nobody.
struct BusDisconnect {
  void operator()(GDBusConnection* connection) const noexcept;
};

/// Connects at the first use. `limit` runs from that moment on and covers connecting and all that
/// follows; when it is over or when there is no bus, every use returns at once without effect.
/// Arguments are tuples of D-Bus values. Uses throw PlatformError when GLib cannot be loaded. Main
/// thread only.
class SessionBus {
 public:
  /// `environment` is kept by reference.
  SessionBus(const Environment& environment, std::chrono::milliseconds limit);
  /// Calls and waits for the answer; null when there is none or it is an error.
  GLibPointer<GVariant> call(const BusMethod& method, GLibPointer<GVariant> arguments);

  /// Calls, starting the service if need be, and leaves the waiting to the caller; null when the
  /// call cannot be made.
  std::unique_ptr<PendingCall> startCall(const BusMethod& method, GLibPointer<GVariant> arguments);

  /// Sends a call that nobody answers, for a service that runs already.
  void send(const BusMethod& method, GLibPointer<GVariant> arguments);

  /// Broadcasts a signal without arguments.
  void emitSignal(const std::string& objectPath, const std::string& interface,
                  const std::string& member);

  /// Asks for a bus name without queueing for it. A refusal has no effect.
  void requestName(const std::string& name);

  /// Whether somebody has the name. False when that cannot be told.
  [[nodiscard]] bool nameHasOwner(const std::string& name);

  /// Waits until the bus has taken all that was sent: what is still on its way when a process ends
  /// may be lost.
  void flush();

 private:
  using BusConnection = std::unique_ptr<GDBusConnection, BusDisconnect>;

  GDBusConnection* usableConnection();
  BusConnection connect() const;
  std::chrono::milliseconds remainingTime() const;

  const Environment& environment_;
  const std::chrono::milliseconds limit_;
  std::optional<std::chrono::steady_clock::time_point> deadline_;
  BusConnection connection_;
};

}  // namespace velmora

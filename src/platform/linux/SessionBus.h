// The user's session bus, for a client that must never make its user wait.
//
// A bus may be absent, stale or hung, and may die at any moment. All calls and signals are only
// hints to other programs. Therefore failures of the bus are not reported, and all uses together
// take no longer than one time limit for the process.
#pragma once

#include "platform/linux/GLibPointers.h"

#include <chrono>
#include <memory>
#include <optional>
#include <string>

namespace velmora {

class Environment;

/// The target of a call: the method `member` of an object, at the owner of a bus name.
struct BusMethod {
  std::string busName;
  std::string objectPath;
  std::string interface;
  std::string member;
};

/// A call in progress. Its time limit begins with the constructor.
class PendingCall {
 public:
  PendingCall(GDBusConnection& connection, const BusMethod& method, GVariant& arguments,
              std::chrono::milliseconds limit);
  ~PendingCall();
  PendingCall(const PendingCall&) = delete;
  PendingCall& operator=(const PendingCall&) = delete;

  /// Waits for the answer, at most for the rest of the time. Null for an error or no answer.
  GLibPointer<GVariant> answer();

 private:
  void waitUntilFinished();

  /// Used by this call only, so that waiting runs no callback but its own.
  GLibPointer<GMainContext> context_;
  GObjectRef<GCancellable> cancellable_;
  GLibPointer<GVariant> answer_;
  bool finished_ = false;
};

/// Closes a connection without waiting for other programs.
struct BusDisconnect {
  void operator()(GDBusConnection* connection) const noexcept;
};

/// The longest time that a user waits for all services of the desktop together.
inline constexpr std::chrono::milliseconds sessionBusLimit{2000};

/// Connects at the first use. `limit` begins then, and covers the connecting and all later uses.
/// After that time, or without a bus, every use returns at once without effect. Arguments are
/// tuples of D-Bus values. Uses throw PlatformError when GLib cannot be loaded. Main thread only.
class SessionBus {
 public:
  /// `environment` is kept by reference.
  explicit SessionBus(const Environment& environment,
                      std::chrono::milliseconds limit = sessionBusLimit);
  /// Calls and waits for the answer; null for an error or no answer.
  GLibPointer<GVariant> call(const BusMethod& method, GLibPointer<GVariant> arguments);

  /// Starts a call, and the service if necessary; the caller waits for the answer. Null when the
  /// call cannot be made.
  std::unique_ptr<PendingCall> startCall(const BusMethod& method, GLibPointer<GVariant> arguments);

  /// Sends a call without waiting for an answer. Does not start the service.
  void send(const BusMethod& method, GLibPointer<GVariant> arguments);

  /// Broadcasts a signal without arguments.
  void emitSignal(const std::string& objectPath, const std::string& interface,
                  const std::string& member);

  /// Requests a bus name without queueing for it. A refusal is ignored.
  void requestName(const std::string& name);

  /// Whether a bus name has an owner. False when that cannot be determined.
  [[nodiscard]] bool nameHasOwner(const std::string& name);

  /// Waits until the bus has received everything sent before: messages still on their way may be
  /// lost when the process ends.
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

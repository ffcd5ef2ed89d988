// The user's session bus, for a client that must never make its user wait.
//
// A bus may be absent, stale or hung, may die at any moment, and may send anything. All calls and
// signals are only hints to other programs. Therefore failures of the bus are not reported, and all
// uses together take no longer than one time limit for the process.
#pragma once

#include "platform/linux/BusConnection.h"
#include "platform/linux/GLibPointers.h"

#include <chrono>
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

  /// Sends a call, and starts the service if necessary; the caller waits for the answer. None when
  /// the call cannot be sent.
  std::optional<PendingCall> startCall(const BusMethod& method, GLibPointer<GVariant> arguments);

  /// Waits for the answer to a call; null for an error or no answer. Answers to other calls that
  /// arrive meanwhile are lost.
  GLibPointer<GVariant> awaitAnswer(PendingCall call);

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
  /// Null without a bus.
  BusConnection* usableConnection();
  void connect();
  std::optional<PendingCall> sendMessage(GDBusMessage& message);

  const Environment& environment_;
  const std::chrono::milliseconds limit_;
  bool hasTried_ = false;
  std::optional<BusConnection> connection_;
};

}  // namespace velmora

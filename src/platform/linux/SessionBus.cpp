// All uses share one deadline, which the first use sets; the timeout of each call is the time left.
// GIO's connecting has no timeout, so a watchdog thread cancels it. Each call is asynchronous in a
// main context of its own, and waiting for its answer iterates only that context. After the
// deadline, usableConnection() returns null, and every use ends at once.
#include "platform/linux/SessionBus.h"

#include "platform/linux/Environment.h"
#include "platform/linux/GLib.h"
#include "platform/linux/SessionBusAddress.h"

#include <algorithm>
#include <condition_variable>
#include <mutex>
#include <stop_token>
#include <string_view>
#include <thread>

namespace velmora {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

/// Cancels `operation` after `limit`, unless it is destroyed before.
class Watchdog {
 public:
  Watchdog(GCancellable* operation, milliseconds limit)
      : thread_([this, operation, limit](const std::stop_token& stop) {
          std::unique_lock lock(mutex_);
          changed_.wait_for(lock, stop, limit, [] { return false; });
          if (!stop.stop_requested()) {
            glib().g_cancellable_cancel(operation);
          }
        }) {}

 private:
  std::mutex mutex_;
  std::condition_variable_any changed_;
  std::jthread thread_;
};

BusMethod busItself(const char* member) {
  return {"org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", member};
}

GLibPointer<GVariant> noArguments() { return ownVariant(glib().g_variant_new("()")); }

}  // namespace

PendingCall::PendingCall(GDBusConnection& connection, const BusMethod& method, GVariant& arguments,
                         milliseconds limit)
    : context_(glib().g_main_context_new()),
      cancellable_(GObjectRef<GCancellable>::adopt(glib().g_cancellable_new())) {
  const auto finish = [](GObject* source, GAsyncResult* result, gpointer self) {
    auto& call = *static_cast<PendingCall*>(self);
    // A plain cast, because G_DBUS_CONNECTION() calls a function that is not linked.
    auto* caller = reinterpret_cast<GDBusConnection*>(source);
    call.answer_.reset(glib().g_dbus_connection_call_finish(caller, result, nullptr));
    call.finished_ = true;
  };
  glib().g_main_context_push_thread_default(context_.get());
  glib().g_dbus_connection_call(&connection, method.busName.c_str(), method.objectPath.c_str(),
                                method.interface.c_str(), method.member.c_str(), &arguments,
                                /*reply_type=*/nullptr, G_DBUS_CALL_FLAGS_NONE,
                                static_cast<int>(limit.count()), cancellable_.get(), finish, this);
  glib().g_main_context_pop_thread_default(context_.get());
}

PendingCall::~PendingCall() {
  // GLib holds a pointer to this object until the call has ended.
  glib().g_cancellable_cancel(cancellable_.get());
  waitUntilFinished();
}

GLibPointer<GVariant> PendingCall::answer() {
  waitUntilFinished();
  return std::move(answer_);
}

void PendingCall::waitUntilFinished() {
  while (!finished_) {
    glib().g_main_context_iteration(context_.get(), /*may_block=*/TRUE);
  }
}

void BusDisconnect::operator()(GDBusConnection* connection) const noexcept {
  // Releasing our reference is not enough: GIO's thread may hold another one, and the connection
  // may then stay open until the process ends.
  glib().g_dbus_connection_close_sync(connection, /*cancellable=*/nullptr, /*error=*/nullptr);
  glib().g_object_unref(connection);
}

SessionBus::SessionBus(const Environment& environment, milliseconds limit)
    : environment_(environment), limit_(limit) {}

GLibPointer<GVariant> SessionBus::call(const BusMethod& method, GLibPointer<GVariant> arguments) {
  const std::unique_ptr<PendingCall> call = startCall(method, std::move(arguments));
  return call ? call->answer() : nullptr;
}

std::unique_ptr<PendingCall> SessionBus::startCall(const BusMethod& method,
                                                   GLibPointer<GVariant> arguments) {
  GDBusConnection* connection = usableConnection();
  if (connection == nullptr) {
    return nullptr;
  }
  // The time may have run out just now, and GIO takes -1 to mean 25 seconds.
  const milliseconds limit = std::max(remainingTime(), milliseconds(1));
  return std::make_unique<PendingCall>(*connection, method, *arguments, limit);
}

void SessionBus::send(const BusMethod& method, GLibPointer<GVariant> arguments) {
  GDBusConnection* connection = usableConnection();
  if (connection == nullptr) {
    return;
  }
  // No service is started: it would run only after this sender has ended, and the bus drops the
  // call then.
  glib().g_dbus_connection_call(
      connection, method.busName.c_str(), method.objectPath.c_str(), method.interface.c_str(),
      method.member.c_str(), arguments.get(),
      /*reply_type=*/nullptr, G_DBUS_CALL_FLAGS_NO_AUTO_START, /*timeout=*/-1,
      /*cancellable=*/nullptr, /*callback=*/nullptr, /*user_data=*/nullptr);
}

void SessionBus::emitSignal(const std::string& objectPath, const std::string& interface,
                            const std::string& member) {
  GDBusConnection* connection = usableConnection();
  if (connection == nullptr) {
    return;
  }
  glib().g_dbus_connection_emit_signal(connection, /*destination=*/nullptr, objectPath.c_str(),
                                       interface.c_str(), member.c_str(), /*parameters=*/nullptr,
                                       /*error=*/nullptr);
}

void SessionBus::requestName(const std::string& name) {
  constexpr guint32 doNotQueue = 4;
  call(busItself("RequestName"),
       ownVariant(glib().g_variant_new("(su)", name.c_str(), doNotQueue)));
}

bool SessionBus::nameHasOwner(const std::string& name) {
  const GLibPointer<GVariant> answer =
      call(busItself("NameHasOwner"), ownVariant(glib().g_variant_new("(s)", name.c_str())));
  if (!answer || std::string_view(glib().g_variant_get_type_string(answer.get())) != "(b)") {
    return false;
  }
  gboolean hasOwner = FALSE;
  glib().g_variant_get(answer.get(), "(b)", &hasOwner);
  return hasOwner != FALSE;
}

void SessionBus::flush() {
  // The bus answers a call after it has received everything sent before. GIO's own flush has no
  // time limit, and ends when the bytes are in the socket.
  call(busItself("GetId"), noArguments());
}

GDBusConnection* SessionBus::usableConnection() {
  if (!deadline_) {
    deadline_ = steady_clock::now() + limit_;
    connection_ = connect();
  }
  return remainingTime() > milliseconds::zero() ? connection_.get() : nullptr;
}

SessionBus::BusConnection SessionBus::connect() const {
  const std::optional<std::string> address = sessionBusAddress(environment_);
  if (!address) {
    return nullptr;
  }
  const auto cancellable = GObjectRef<GCancellable>::adopt(glib().g_cancellable_new());
  const Watchdog watchdog(cancellable.get(), remainingTime());
  // Not GIO's shared connection, which ends the process when the bus goes away. Not a "message bus
  // connection" either: GIO would send Hello itself, with a timeout of 25 seconds.
  BusConnection connection(glib().g_dbus_connection_new_for_address_sync(
      address->c_str(), G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT, /*observer=*/nullptr,
      cancellable.get(), /*error=*/nullptr));
  const milliseconds limit = remainingTime();
  if (!connection || limit <= milliseconds::zero()) {
    return nullptr;
  }
  PendingCall hello(*connection, busItself("Hello"), *noArguments(), limit);
  return hello.answer() ? std::move(connection) : nullptr;
}

milliseconds SessionBus::remainingTime() const {
  return std::chrono::duration_cast<milliseconds>(*deadline_ - steady_clock::now());
}

}  // namespace velmora

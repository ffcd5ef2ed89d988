// The first use connects: authentication, then the call Hello. It also sets the deadline that all
// uses share; the socket keeps it.
#include "platform/linux/SessionBus.h"

#include "platform/linux/BusAuthentication.h"
#include "platform/linux/Environment.h"
#include "platform/linux/GLib.h"
#include "platform/linux/SessionBusAddress.h"

#include <string_view>
#include <utility>

namespace velmora {
namespace {

BusMethod busItself(const char* member) {
  return {"org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", member};
}

GLibPointer<GVariant> noArguments() { return ownVariant(glib().g_variant_new("()")); }

GObjectRef<GDBusMessage> callMessage(const BusMethod& method, GVariant& arguments,
                                     GDBusMessageFlags flags) {
  auto message = GObjectRef<GDBusMessage>::adopt(
      glib().g_dbus_message_new_method_call(method.busName.c_str(), method.objectPath.c_str(),
                                            method.interface.c_str(), method.member.c_str()));
  glib().g_dbus_message_set_body(message.get(), &arguments);
  glib().g_dbus_message_set_flags(message.get(), flags);
  return message;
}

}  // namespace

SessionBus::SessionBus(const Environment& environment, std::chrono::milliseconds limit)
    : environment_(environment), limit_(limit) {}

GLibPointer<GVariant> SessionBus::call(const BusMethod& method, GLibPointer<GVariant> arguments) {
  const std::optional<PendingCall> call = startCall(method, std::move(arguments));
  return call ? awaitAnswer(*call) : nullptr;
}

std::optional<PendingCall> SessionBus::startCall(const BusMethod& method,
                                                 GLibPointer<GVariant> arguments) {
  return sendMessage(*callMessage(method, *arguments, G_DBUS_MESSAGE_FLAGS_NONE).get());
}

GLibPointer<GVariant> SessionBus::awaitAnswer(PendingCall call) {
  BusConnection* const connection = usableConnection();
  return connection == nullptr ? nullptr : connection->awaitAnswer(call);
}

void SessionBus::send(const BusMethod& method, GLibPointer<GVariant> arguments) {
  // No service is started: it would run only after this sender has ended, and the bus drops the
  // call then.
  constexpr auto flags = static_cast<GDBusMessageFlags>(G_DBUS_MESSAGE_FLAGS_NO_REPLY_EXPECTED |
                                                        G_DBUS_MESSAGE_FLAGS_NO_AUTO_START);
  sendMessage(*callMessage(method, *arguments, flags).get());
}

void SessionBus::emitSignal(const std::string& objectPath, const std::string& interface,
                            const std::string& member) {
  const auto message = GObjectRef<GDBusMessage>::adopt(
      glib().g_dbus_message_new_signal(objectPath.c_str(), interface.c_str(), member.c_str()));
  sendMessage(*message.get());
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
  // The bus answers a call after it has received everything sent before.
  call(busItself("GetId"), noArguments());
}

std::optional<PendingCall> SessionBus::sendMessage(GDBusMessage& message) {
  BusConnection* const connection = usableConnection();
  return connection == nullptr ? std::nullopt : connection->send(message);
}

BusConnection* SessionBus::usableConnection() {
  if (!hasTried_) {
    hasTried_ = true;
    connect();
  }
  return connection_ ? &*connection_ : nullptr;
}

void SessionBus::connect() {
  const BusSocket::Deadline deadline = std::chrono::steady_clock::now() + limit_;
  for (const std::string& name : sessionBusSockets(environment_)) {
    std::optional<BusSocket> socket = BusSocket::connect(name, deadline);
    if (!socket || !authenticate(*socket)) {
      continue;
    }
    BusConnection connection(*std::move(socket));
    const auto greeting =
        callMessage(busItself("Hello"), *noArguments(), G_DBUS_MESSAGE_FLAGS_NONE);
    const std::optional<PendingCall> call = connection.send(*greeting.get());
    if (call && connection.awaitAnswer(*call)) {
      connection_ = std::move(connection);
      return;
    }
  }
}

}  // namespace velmora

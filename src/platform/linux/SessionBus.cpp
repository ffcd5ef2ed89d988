// All uses share one deadline, which the first use sets; the socket keeps it. The connection begins
// with the authentication and the call Hello.
//
// GIO only packs and unpacks messages. Its own connection, GDBusConnection, is not used: it needs
// threads, it reads on without a limit while a bus sends without end, and it takes messages of 128
// megabytes. This client reads one message at a time, of limited length, and only while it waits
// for an answer.
#include "platform/linux/SessionBus.h"

#include "platform/linux/BusAuthentication.h"
#include "platform/linux/Environment.h"
#include "platform/linux/GLib.h"
#include "platform/linux/SessionBusAddress.h"

#include <cstddef>
#include <string_view>
#include <utility>
#include <vector>

namespace velmora {
namespace {

using std::chrono::steady_clock;

/// The fixed part of each message, from which GIO determines its length.
constexpr std::size_t headerLength = 16;
/// Far more than an answer to this program, which is a few words. A longer message ends the
/// connection.
constexpr std::size_t maxMessageLength = 64UL * 1024;

using Bytes = std::vector<unsigned char>;

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

/// Extends `bytes` to `length` from the socket. Returns false when the connection ends before.
bool receiveUpTo(Bytes& bytes, std::size_t length, BusSocket& socket) {
  std::size_t received = bytes.size();
  bytes.resize(length);
  while (received < length) {
    const std::size_t count =
        socket.receive(reinterpret_cast<char*>(bytes.data()) + received, length - received);
    if (count == 0) {
      return false;
    }
    received += count;
  }
  return true;
}

/// The next message; empty when the connection ends, or the message is too long or not valid.
Bytes receiveMessage(BusSocket& socket) {
  Bytes bytes;
  if (!receiveUpTo(bytes, headerLength, socket)) {
    return {};
  }
  const gssize length =
      glib().g_dbus_message_bytes_needed(bytes.data(), bytes.size(), /*error=*/nullptr);
  if (length < 0 || static_cast<std::size_t>(length) > maxMessageLength ||
      !receiveUpTo(bytes, static_cast<std::size_t>(length), socket)) {
    return {};
  }
  return bytes;
}

bool isAnswer(const Bytes& message) {
  const int type = message[1];
  return type == G_DBUS_MESSAGE_TYPE_METHOD_RETURN || type == G_DBUS_MESSAGE_TYPE_ERROR;
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
  while (const GObjectRef<GDBusMessage> answer = receiveAnswer()) {
    if (glib().g_dbus_message_get_reply_serial(answer.get()) != call.serial) {
      continue;
    }
    if (glib().g_dbus_message_get_message_type(answer.get()) == G_DBUS_MESSAGE_TYPE_ERROR) {
      return nullptr;
    }
    // An answer without values has no body.
    GVariant* const body = glib().g_dbus_message_get_body(answer.get());
    return body == nullptr ? noArguments() : ownVariant(body);
  }
  return nullptr;
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

BusSocket* SessionBus::usableSocket() {
  if (!deadline_) {
    deadline_ = steady_clock::now() + limit_;
    connect();
  }
  return socket_ && steady_clock::now() < *deadline_ ? &*socket_ : nullptr;
}

void SessionBus::connect() {
  for (const std::string& name : sessionBusSockets(environment_)) {
    std::optional<BusSocket> socket = BusSocket::connect(name, *deadline_);
    if (!socket || !authenticate(*socket)) {
      continue;
    }
    socket_ = std::move(socket);
    if (call(busItself("Hello"), noArguments())) {
      return;
    }
    socket_.reset();
  }
}

std::optional<PendingCall> SessionBus::sendMessage(GDBusMessage& message) {
  BusSocket* const socket = usableSocket();
  if (socket == nullptr) {
    return std::nullopt;
  }
  const PendingCall call = {.serial = ++lastSerial_};
  glib().g_dbus_message_set_serial(&message, call.serial);
  gsize length = 0;
  const GLibPointer<char> bytes(reinterpret_cast<char*>(glib().g_dbus_message_to_blob(
      &message, &length, G_DBUS_CAPABILITY_FLAGS_NONE, /*error=*/nullptr)));
  if (!bytes) {
    return std::nullopt;
  }
  if (!socket->send({bytes.get(), length})) {
    // A part of the message may have been sent.
    socket_.reset();
    return std::nullopt;
  }
  return call;
}

GObjectRef<GDBusMessage> SessionBus::receiveAnswer() {
  while (BusSocket* const socket = usableSocket()) {
    Bytes bytes = receiveMessage(*socket);
    if (bytes.empty()) {
      socket_.reset();
    } else if (isAnswer(bytes)) {
      auto message = GObjectRef<GDBusMessage>::adopt(glib().g_dbus_message_new_from_blob(
          bytes.data(), bytes.size(), G_DBUS_CAPABILITY_FLAGS_NONE, /*error=*/nullptr));
      if (message) {
        return message;
      }
      socket_.reset();
    }
  }
  return {};
}

}  // namespace velmora

// GIO only packs and unpacks messages. Its own connection, GDBusConnection, is not used: it needs
// threads, it reads on without a limit while a bus sends without end, and it takes messages of 128
// megabytes. This client reads one message at a time, of limited length, and only while it waits
// for an answer.
#include "platform/linux/BusConnection.h"

#include "platform/linux/GLib.h"

#include <cstddef>
#include <utility>
#include <vector>

namespace velmora {
namespace {

/// The fixed part of each message, from which GIO determines its length.
constexpr std::size_t headerLength = 16;
/// Far more than an answer to this program, which is a few words. A longer message ends the
/// connection.
constexpr std::size_t maxMessageLength = 64UL * 1024;

using Bytes = std::vector<unsigned char>;

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

BusConnection::BusConnection(BusSocket socket) : socket_(std::move(socket)) {}

std::optional<PendingCall> BusConnection::send(GDBusMessage& message) {
  const PendingCall call = {.serial = ++lastSerial_};
  glib().g_dbus_message_set_serial(&message, call.serial);
  gsize length = 0;
  const GLibPointer<char> bytes(reinterpret_cast<char*>(glib().g_dbus_message_to_blob(
      &message, &length, G_DBUS_CAPABILITY_FLAGS_NONE, /*error=*/nullptr)));
  if (!bytes || !socket_) {
    return std::nullopt;
  }
  if (!socket_->send({bytes.get(), length})) {
    // A part of the message may have been sent.
    socket_.reset();
    return std::nullopt;
  }
  return call;
}

GLibPointer<GVariant> BusConnection::awaitAnswer(PendingCall call) {
  while (const GObjectRef<GDBusMessage> answer = receiveAnswer()) {
    if (glib().g_dbus_message_get_reply_serial(answer.get()) != call.serial) {
      continue;
    }
    if (glib().g_dbus_message_get_message_type(answer.get()) == G_DBUS_MESSAGE_TYPE_ERROR) {
      return nullptr;
    }
    // An answer without values has no body.
    GVariant* const body = glib().g_dbus_message_get_body(answer.get());
    return ownVariant(body == nullptr ? glib().g_variant_new("()") : body);
  }
  return nullptr;
}

GObjectRef<GDBusMessage> BusConnection::receiveAnswer() {
  while (socket_) {
    Bytes bytes = receiveMessage(*socket_);
    if (!bytes.empty() && !isAnswer(bytes)) {
      continue;
    }
    auto message = GObjectRef<GDBusMessage>::adopt(
        bytes.empty() ? nullptr
                      : glib().g_dbus_message_new_from_blob(bytes.data(), bytes.size(),
                                                            G_DBUS_CAPABILITY_FLAGS_NONE,
                                                            /*error=*/nullptr));
    if (message) {
      return message;
    }
    socket_.reset();
  }
  return {};
}

}  // namespace velmora

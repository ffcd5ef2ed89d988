#include "tests/support/BusPeer.h"

#include <gio/gio.h>

#include <condition_variable>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <mutex>
#include <set>
#include <stdexcept>
#include <string_view>
#include <utility>

namespace velmora {
namespace {

constexpr const char* busName = "org.freedesktop.DBus";

/// Guards the state that peers share with GIO's thread, and outlives all peers. ThreadSanitizer
/// does not see GLib's locks. By this lock it sees that a peer is used only between its start and
/// its end.
std::mutex mutex;

struct Release {
  void operator()(GVariant* variant) const { g_variant_unref(variant); }
  void operator()(GDBusMessage* message) const { g_object_unref(message); }
};
using Variant = std::unique_ptr<GVariant, Release>;

/// Throws std::runtime_error with the message of `error`, if there is an error.
void raise(GError* error) {
  if (error != nullptr) {
    const std::string message = error->message;
    g_error_free(error);
    throw std::runtime_error(message);
  }
}

std::string orEmpty(const char* text) { return text == nullptr ? "" : text; }

std::string printed(GVariant* body) {
  const std::unique_ptr<char, decltype(&g_free)> text(
      body == nullptr ? g_strdup("()") : g_variant_print(body, TRUE), g_free);
  return text.get();
}

std::vector<std::string> namesAndContents(const std::string& directory) {
  std::vector<std::string> result;
  std::error_code absent;
  for (const auto& entry : std::filesystem::directory_iterator(directory, absent)) {
    std::ifstream file(entry.path(), std::ios::binary);
    result.push_back(entry.path().filename());
    result.emplace_back(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
  }
  return result;
}

}  // namespace

struct BusPeer::State {
  State() = default;
  State(const State&) = delete;
  State& operator=(const State&) = delete;
  ~State() { g_main_context_unref(context); }

  GMainContext* context = g_main_context_new();
  GDBusConnection* connection = nullptr;
  guint filter = 0;
  bool isFilterGone = false;

  // The lock guards these, because messages arrive on GIO's thread.
  std::condition_variable changed;
  std::vector<BusMessage> received;
  std::set<std::string> goneNames;
  std::string answer = "()";
  std::string directory;
  std::string ownersOf;

  Variant callBus(const char* member, GVariant* arguments) {
    GError* error = nullptr;
    Variant result(g_dbus_connection_call_sync(connection, busName, "/org/freedesktop/DBus",
                                               busName, member, arguments, nullptr,
                                               G_DBUS_CALL_FLAGS_NONE, -1, nullptr, &error));
    raise(error);
    return result;
  }

  void hear(const std::string& rule) {
    callBus("AddMatch", g_variant_new("(s)", ("type='signal'," + rule).c_str()));
  }

  /// Empty when the connection has left meanwhile.
  std::string processOf(const std::string& name) {
    try {
      return printed(
          callBus("GetConnectionUnixProcessID", g_variant_new("(s)", name.c_str())).get());
    } catch (const std::runtime_error&) {
      return {};
    }
  }

  /// Runs on GIO's thread for each message, in the order of arrival.
  static GDBusMessage* take(GDBusConnection*, GDBusMessage* message, gboolean isIncoming,
                            gpointer self) {
    const GDBusMessageType type = g_dbus_message_get_message_type(message);
    const bool isCall = type == G_DBUS_MESSAGE_TYPE_METHOD_CALL;
    if (isIncoming == FALSE || (!isCall && type != G_DBUS_MESSAGE_TYPE_SIGNAL)) {
      return message;
    }
    const std::unique_ptr<GDBusMessage, Release> owner(message);
    const std::lock_guard lock(mutex);
    auto& state = *static_cast<State*>(self);
    if (isCall || state.concernsTest(message)) {
      state.received.push_back({.isCall = isCall,
                                .sender = orEmpty(g_dbus_message_get_sender(message)),
                                .path = orEmpty(g_dbus_message_get_path(message)),
                                .interface = orEmpty(g_dbus_message_get_interface(message)),
                                .member = orEmpty(g_dbus_message_get_member(message)),
                                .arguments = printed(g_dbus_message_get_body(message)),
                                .files = namesAndContents(state.directory)});
    }
    if (isCall) {
      state.reply(message);
    }
    state.changed.notify_all();
    return nullptr;
  }

  /// Whether the test gets the signal. Among the bus's own signals, records the names that have
  /// left.
  bool concernsTest(GDBusMessage* signal) {
    if (orEmpty(g_dbus_message_get_sender(signal)) != busName) {
      return true;
    }
    if (orEmpty(g_dbus_message_get_member(signal)) != "NameOwnerChanged") {
      return false;
    }
    const char* name = nullptr;
    const char* newOwner = nullptr;
    g_variant_get(g_dbus_message_get_body(signal), "(&s&s&s)", &name, nullptr, &newOwner);
    if (*newOwner == '\0') {
      goneNames.insert(name);
    }
    return !ownersOf.empty() && std::string_view(name).starts_with(ownersOf);
  }

  void reply(GDBusMessage* call) const {
    if (answer.empty() ||
        (g_dbus_message_get_flags(call) & G_DBUS_MESSAGE_FLAGS_NO_REPLY_EXPECTED) != 0) {
      return;
    }
    const std::unique_ptr<GDBusMessage, Release> reply(g_dbus_message_new_method_reply(call));
    const Variant body(g_variant_parse(nullptr, answer.c_str(), nullptr, nullptr, nullptr));
    g_dbus_message_set_body(reply.get(), body.get());
    g_dbus_connection_send_message(connection, reply.get(), G_DBUS_SEND_MESSAGE_FLAGS_NONE, nullptr,
                                   nullptr);
  }
};

BusPeer::BusPeer(const std::string& address) : state_(std::make_unique<State>()) {
  GError* error = nullptr;
  GDBusConnection* connection = g_dbus_connection_new_for_address_sync(
      address.c_str(),
      static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                        G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
      nullptr, nullptr, &error);
  raise(error);
  {
    // The lock orders this write before the reads of GIO's thread.
    const std::lock_guard lock(mutex);
    state_->connection = connection;
  }
  // This context reports that the filter runs no more.
  g_main_context_push_thread_default(state_->context);
  state_->filter = g_dbus_connection_add_filter(
      connection, &State::take, state_.get(),
      [](gpointer self) { static_cast<State*>(self)->isFilterGone = true; });
  g_main_context_pop_thread_default(state_->context);
  state_->hear("sender='org.freedesktop.DBus',member='NameOwnerChanged'");
}

BusPeer::~BusPeer() {
  g_dbus_connection_flush_sync(state_->connection, nullptr, nullptr);
  g_dbus_connection_close_sync(state_->connection, nullptr, nullptr);
  g_dbus_connection_remove_filter(state_->connection, state_->filter);
  while (!state_->isFilterGone) {
    g_main_context_iteration(state_->context, TRUE);
  }
  g_object_unref(state_->connection);
  const std::lock_guard lock(mutex);
  state_.reset();
}

void BusPeer::listen(const std::string& interface) {
  state_->hear("interface='" + interface + "'");
}

void BusPeer::listenForOwners(const std::string& namesBeginning) {
  const std::lock_guard lock(mutex);
  state_->ownersOf = namesBeginning;
}

void BusPeer::answerWith(const std::string& answer) {
  const std::lock_guard lock(mutex);
  state_->answer = answer;
}

void BusPeer::watch(const std::string& directory) {
  const std::lock_guard lock(mutex);
  state_->directory = directory;
}

void BusPeer::own(const std::string& name) {
  state_->callBus("RequestName", g_variant_new("(su)", name.c_str(), 4U));
}

std::string BusPeer::ownerOf(const std::string& name) {
  try {
    const Variant answer = state_->callBus("GetNameOwner", g_variant_new("(s)", name.c_str()));
    const char* owner = nullptr;
    g_variant_get(answer.get(), "(&s)", &owner);
    return owner;
  } catch (const std::runtime_error&) {
    return {};
  }
}

void BusPeer::emitSignal(const std::string& path, const std::string& interface,
                         const std::string& member) {
  g_dbus_connection_emit_signal(state_->connection, nullptr, path.c_str(), interface.c_str(),
                                member.c_str(), nullptr, nullptr);
  // The bus keeps the order of messages, so its answer shows that it has the signal.
  state_->callBus("GetId", nullptr);
}

std::vector<BusMessage> BusPeer::received(std::size_t count) {
  std::unique_lock lock(mutex);
  state_->changed.wait(lock, [&] { return state_->received.size() >= count; });
  return state_->received;
}

std::vector<BusMessage> BusPeer::receivedUntilGone(pid_t process) {
  const std::string number = "(uint32 " + std::to_string(process) + ",)";
  const Variant reply = state_->callBus("ListNames", nullptr);
  const Variant names(g_variant_get_child_value(reply.get(), 0));
  for (gsize index = 0; index < g_variant_n_children(names.get()); ++index) {
    const char* name = nullptr;
    g_variant_get_child(names.get(), index, "&s", &name);
    if (*name == ':' && state_->processOf(name) == number) {
      // The bus delivers the messages of a process before the signal that it has left.
      std::unique_lock lock(mutex);
      state_->changed.wait(lock, [&] { return state_->goneNames.contains(name); });
    }
  }
  return received(0);
}

}  // namespace velmora

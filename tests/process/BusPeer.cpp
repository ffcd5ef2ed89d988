// A helper process of the tests, in two roles.
//
//   bus_peer record [--own NAME]... [--match RULE]... [--list DIRECTORY] [--reply VALUES | --mute]
//                   [--report SOCKET]
// is a participant of the session bus. It reports, in the order of the bus, every signal and every
// method call that reaches it, each with the content of DIRECTORY at that moment, and answers
// calls with VALUES, a tuple in GVariant text format, or never. To the request "gone" with a
// process identifier it answers when that process has left the bus. Requests and reports go over
// its standard input and output, or over SOCKET when the bus has started it.
//
//   bus_peer launched SOCKET [ARGUMENT]...
// is an application that a launcher starts: it reports how, and runs until SOCKET closes.

#include "tests/support/Records.h"

#include <gio/gio.h>

#include <unistd.h>

#include <charconv>
#include <condition_variable>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <memory>
#include <mutex>
#include <set>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

extern "C" char** environ;

namespace velmora::process {

namespace {

namespace filesystem = std::filesystem;

constexpr const char* busName = "org.freedesktop.DBus";
constexpr const char* busPath = "/org/freedesktop/DBus";

struct VariantDeleter {
  void operator()(GVariant* variant) const { g_variant_unref(variant); }
};
using Variant = std::unique_ptr<GVariant, VariantDeleter>;

struct ObjectDeleter {
  void operator()(gpointer object) const { g_object_unref(object); }
};
using Connection = std::unique_ptr<GDBusConnection, ObjectDeleter>;

/// Throws what `error` says, when it says something.
void raise(GError* error) {
  if (error == nullptr) {
    return;
  }
  const std::string message = error->message;
  g_error_free(error);
  throw std::runtime_error(message);
}

std::string takeText(char* text) {
  const std::unique_ptr<char, decltype(&g_free)> owner(text, g_free);
  return text == nullptr ? std::string() : std::string(text);
}

std::string orEmpty(const char* text) { return text == nullptr ? "" : text; }

std::string contentOf(const filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

struct Options {
  std::vector<std::string> names;
  std::vector<std::string> rules;
  std::string directory;
  std::string reply = "()";
  bool mute = false;
  std::string report;
};

Options parseOptions(std::span<char*> arguments) {
  Options options;
  for (auto argument = arguments.begin(); argument != arguments.end(); ++argument) {
    const std::string_view option = *argument;
    if (option == "--mute") {
      options.mute = true;
      continue;
    }
    if (++argument == arguments.end()) {
      throw std::invalid_argument("no value: " + std::string(option));
    }
    const std::string value = *argument;
    if (option == "--own") {
      options.names.push_back(value);
    } else if (option == "--match") {
      options.rules.push_back(value);
    } else if (option == "--list") {
      options.directory = value;
    } else if (option == "--reply") {
      options.reply = value;
    } else if (option == "--report") {
      options.report = value;
    } else {
      throw std::invalid_argument(std::string(option));
    }
  }
  return options;
}

class Recorder {
 public:
  explicit Recorder(const Options& options)
      : options_(options),
        channel_(options.report.empty() ? FileDescriptor::adopt(STDIN_FILENO)
                                        : connectTo(options.report)) {}

  void run() {
    connect();
    for (const std::string& rule : options_.rules) {
      callBus("AddMatch", g_variant_new("(s)", rule.c_str()));
    }
    callBus("AddMatch", g_variant_new("(s)",
                                      "type='signal',sender='org.freedesktop.DBus',"
                                      "member='NameOwnerChanged'"));
    for (const std::string& name : options_.names) {
      callBus("RequestName", g_variant_new("(su)", name.c_str(), 4U));
    }
    write("ready", "");
    serveRequests();
  }

 private:
  void connect() {
    GError* error = nullptr;
    connection_.reset(g_dbus_connection_new_for_address_sync(
        orEmpty(g_getenv("DBUS_SESSION_BUS_ADDRESS")).c_str(),
        static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                          G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
        nullptr, nullptr, &error));
    raise(error);
    g_dbus_connection_add_filter(connection_.get(), &Recorder::filter, this, nullptr);
  }

  Variant callBus(const char* member, GVariant* arguments) {
    GError* error = nullptr;
    Variant result(g_dbus_connection_call_sync(connection_.get(), busName, busPath, busName, member,
                                               arguments, nullptr, G_DBUS_CALL_FLAGS_NONE, -1,
                                               nullptr, &error));
    raise(error);
    return result;
  }

  void write(std::string_view name, std::string_view value) {
    Record record;
    record.add(name, value);
    write(record);
  }

  void write(const Record& record) {
    const std::lock_guard lock(mutex_);
    channel_.write(record);
  }

  void serveRequests() {
    try {
      while (true) {
        const std::string process = channel_.read().value("gone");
        awaitGone(process);
        write("gone", process);
      }
    } catch (const std::runtime_error&) {
      // The test has closed its end: nobody listens any more.
    }
  }

  /// What a process has sent comes before the news that it has left.
  void awaitGone(const std::string& process) {
    const Variant reply = callBus("ListNames", nullptr);
    const Variant names(g_variant_get_child_value(reply.get(), 0));
    for (gsize index = 0; index < g_variant_n_children(names.get()); ++index) {
      const Variant child(g_variant_get_child_value(names.get(), index));
      const std::string name = g_variant_get_string(child.get(), nullptr);
      if (name.starts_with(':') && processOf(name) == process) {
        std::unique_lock lock(mutex_);
        changed_.wait(lock, [&] { return gone_.contains(name); });
      }
    }
  }

  /// Empty when it has left meanwhile.
  std::string processOf(const std::string& name) {
    try {
      const Variant reply =
          callBus("GetConnectionUnixProcessID", g_variant_new("(s)", name.c_str()));
      guint32 process = 0;
      g_variant_get(reply.get(), "(u)", &process);
      return std::to_string(process);
    } catch (const std::runtime_error&) {
      return {};
    }
  }

  /// Runs on GIO's thread, for each message as it arrives and in that order.
  static GDBusMessage* filter(GDBusConnection*, GDBusMessage* message, gboolean incoming,
                              gpointer recorder) {
    try {
      if (incoming == FALSE || !static_cast<Recorder*>(recorder)->receive(message)) {
        return message;
      }
      g_object_unref(message);
      return nullptr;
    } catch (const std::exception&) {
      // Nobody listens to the reports any more.
      std::_Exit(EXIT_FAILURE);
    }
  }

  bool receive(GDBusMessage* message) {
    switch (g_dbus_message_get_message_type(message)) {
      case G_DBUS_MESSAGE_TYPE_SIGNAL:
        receiveSignal(message);
        return true;
      case G_DBUS_MESSAGE_TYPE_METHOD_CALL:
        write(describe(message, "call"));
        answer(message);
        return true;
      default:
        return false;
    }
  }

  void receiveSignal(GDBusMessage* message) {
    if (orEmpty(g_dbus_message_get_sender(message)) != busName) {
      return write(describe(message, "signal"));
    }
    if (orEmpty(g_dbus_message_get_member(message)) != "NameOwnerChanged") {
      return;
    }
    const char* name = nullptr;
    const char* oldOwner = nullptr;
    const char* newOwner = nullptr;
    g_variant_get(g_dbus_message_get_body(message), "(&s&s&s)", &name, &oldOwner, &newOwner);
    if (std::string_view(name).starts_with("io.tolvane.Velmora.FinderAction.")) {
      return write(*newOwner == '\0' ? "left" : "joined", name);
    }
    if (*newOwner == '\0') {
      const std::lock_guard lock(mutex_);
      gone_.insert(name);
      changed_.notify_all();
    }
  }

  Record describe(GDBusMessage* message, std::string_view type) const {
    Record record;
    record.add("type", type);
    record.add("sender", orEmpty(g_dbus_message_get_sender(message)));
    record.add("path", orEmpty(g_dbus_message_get_path(message)));
    record.add("interface", orEmpty(g_dbus_message_get_interface(message)));
    record.add("member", orEmpty(g_dbus_message_get_member(message)));
    record.add("signature", orEmpty(g_dbus_message_get_signature(message)));
    if (GVariant* body = g_dbus_message_get_body(message)) {
      record.add("body", takeText(g_variant_print(body, TRUE)));
    }
    std::error_code absent;
    for (const auto& entry : filesystem::directory_iterator(options_.directory, absent)) {
      record.add("file", entry.path().filename().string());
      record.add("content", contentOf(entry.path()));
    }
    return record;
  }

  void answer(GDBusMessage* call) const {
    if (options_.mute ||
        (g_dbus_message_get_flags(call) & G_DBUS_MESSAGE_FLAGS_NO_REPLY_EXPECTED) != 0) {
      return;
    }
    const std::unique_ptr<GDBusMessage, ObjectDeleter> reply(g_dbus_message_new_method_reply(call));
    GError* error = nullptr;
    const Variant body(g_variant_parse(nullptr, options_.reply.c_str(), nullptr, nullptr, &error));
    raise(error);
    g_dbus_message_set_body(reply.get(), body.get());
    g_dbus_connection_send_message(connection_.get(), reply.get(), G_DBUS_SEND_MESSAGE_FLAGS_NONE,
                                   nullptr, nullptr);
  }

  const Options options_;
  Connection connection_;
  /// Guards what follows and the writing to the channel: GIO's thread reports messages, the main
  /// thread answers requests. Only the main thread reads the channel.
  std::mutex mutex_;
  std::condition_variable changed_;
  std::set<std::string> gone_;
  Channel channel_;
};

void runLaunched(std::span<char*> arguments) {
  Record record;
  for (const char* argument : arguments.subspan(1)) {
    record.add("argument", argument);
  }
  record.add("process", std::to_string(::getpid()));
  record.add("directory", filesystem::current_path().string());
  for (char** variable = environ; *variable != nullptr; ++variable) {
    record.add("environment", *variable);
  }
  Channel channel(connectTo(arguments.front()));
  channel.write(record);
  channel.awaitEnd();
}

}  // namespace

}  // namespace velmora::process

int main(int count, char* words[]) {
  try {
    const std::span arguments(words, static_cast<std::size_t>(count));
    const std::string_view role = count > 1 ? arguments[1] : "";
    if (role == "record") {
      velmora::process::Recorder(velmora::process::parseOptions(arguments.subspan(2))).run();
      // GIO's thread may still be using the recorder.
    } else if (role == "launched" && count > 2) {
      velmora::process::runLaunched(arguments.subspan(2));
    } else {
      throw std::invalid_argument("unknown role");
    }
    return EXIT_SUCCESS;
  } catch (const std::exception& error) {
    std::cerr << "bus_peer: " << error.what() << '\n';
    return EXIT_FAILURE;
  }
}

#include "tests/platform/linux/BusPeer.h"

#include <gio/gio.h>

#include <stdexcept>
#include <utility>

namespace velmora {
namespace {

/// Throws what `error` says, when it says something.
void raise(GError* error) {
  if (error != nullptr) {
    const GLibPointer<GError> owner(error);
    throw std::runtime_error(error->message);
  }
}

std::string printed(GVariant* arguments) {
  const GLibPointer<char> text(g_variant_print(arguments, /*type_annotate=*/TRUE));
  return text.get();
}

/// Directs to `context` what is begun meanwhile.
class DefaultContext {
 public:
  explicit DefaultContext(GMainContext* context) : context_(context) {
    g_main_context_push_thread_default(context_);
  }
  DefaultContext(const DefaultContext&) = delete;
  DefaultContext& operator=(const DefaultContext&) = delete;
  ~DefaultContext() { g_main_context_pop_thread_default(context_); }

 private:
  GMainContext* context_;
};

}  // namespace

/// Where a served object's calls go.
struct BusPeer::Service {
  std::vector<BusMessage>& received;
  std::string answer;

  static void take(GDBusConnection*, const char* sender, const char* path, const char* interface,
                   const char* method, GVariant* arguments, GDBusMethodInvocation* invocation,
                   gpointer self) {
    auto& service = *static_cast<Service*>(self);
    service.received.push_back({sender, path, interface, method, printed(arguments)});
    const GLibPointer<GVariant> answer(
        g_variant_parse(nullptr, service.answer.c_str(), nullptr, nullptr, nullptr));
    g_dbus_method_invocation_return_value(invocation, answer.get());
  }
};

BusPeer::BusPeer(const std::string& address) : context_(g_main_context_new()) {
  const DefaultContext context(context_.get());
  GError* error = nullptr;
  connection_ = GObjectRef<GDBusConnection>::adopt(g_dbus_connection_new_for_address_sync(
      address.c_str(),
      static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                        G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
      nullptr, nullptr, &error));
  raise(error);
}

BusPeer::~BusPeer() { g_dbus_connection_close_sync(connection_.get(), nullptr, nullptr); }

void BusPeer::listen(const std::string& interface) {
  const auto hear = [](GDBusConnection*, const char* sender, const char* path,
                       const char* interfaceName, const char* member, GVariant* arguments,
                       gpointer received) {
    static_cast<std::vector<BusMessage>*>(received)->push_back(
        {sender, path, interfaceName, member, printed(arguments)});
  };
  {
    const DefaultContext context(context_.get());
    g_dbus_connection_signal_subscribe(connection_.get(), nullptr, interface.c_str(), nullptr,
                                       nullptr, nullptr, G_DBUS_SIGNAL_FLAGS_NONE, hear, &received_,
                                       nullptr);
  }
  // The bus takes messages in their order, so after an answer it knows of the subscription.
  callBus("GetId", nullptr);
}

void BusPeer::serve(const std::string& path, const std::string& interfaceXml,
                    const std::string& answer) {
  const DefaultContext context(context_.get());
  GError* error = nullptr;
  GDBusNodeInfo* node = g_dbus_node_info_new_for_xml(interfaceXml.c_str(), &error);
  raise(error);
  static constexpr GDBusInterfaceVTable methods = {&Service::take, nullptr, nullptr, {}};
  Service& service = *services_.emplace_back(std::make_unique<Service>(Service{received_, answer}));
  g_dbus_connection_register_object(connection_.get(), path.c_str(), node->interfaces[0], &methods,
                                    &service, nullptr, &error);
  g_dbus_node_info_unref(node);
  raise(error);
}

void BusPeer::own(const std::string& name) {
  callBus("RequestName", g_variant_new("(su)", name.c_str(), 4U));
}

std::string BusPeer::ownerOf(const std::string& name) {
  try {
    const GLibPointer<GVariant> answer =
        callBus("GetNameOwner", g_variant_new("(s)", name.c_str()));
    const char* owner = nullptr;
    g_variant_get(answer.get(), "(&s)", &owner);
    return owner;
  } catch (const std::runtime_error&) {
    return {};
  }
}

void BusPeer::emitSignal(const std::string& path, const std::string& interface,
                         const std::string& member) {
  g_dbus_connection_emit_signal(connection_.get(), nullptr, path.c_str(), interface.c_str(),
                                member.c_str(), nullptr, nullptr);
  callBus("GetId", nullptr);
}

const std::vector<BusMessage>& BusPeer::received(std::size_t count) {
  while (received_.size() < count) {
    g_main_context_iteration(context_.get(), TRUE);
  }
  return received_;
}

void BusPeer::flush() { g_dbus_connection_flush_sync(connection_.get(), nullptr, nullptr); }

GLibPointer<GVariant> BusPeer::callBus(const char* member, GVariant* arguments) {
  GError* error = nullptr;
  GLibPointer<GVariant> answer(g_dbus_connection_call_sync(
      connection_.get(), "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
      member, arguments, nullptr, G_DBUS_CALL_FLAGS_NONE, -1, nullptr, &error));
  raise(error);
  return answer;
}

}  // namespace velmora

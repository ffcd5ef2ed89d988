#include "platform/linux/LinuxNotificationCenter.h"

#include "platform/linux/GLib.h"
#include "platform/linux/SessionBus.h"

#include <unistd.h>

#include <algorithm>
#include <exception>
#include <string>

namespace velmora {
namespace {

/// A bus name below the application's name. The bus filter of a sandboxed application passes a
/// broadcast only from a sender that owns such a name. The process ID gives each sender a name of
/// its own; "p" comes first, because an element of a name must not begin with a digit.
std::string nameOfThisProcess() {
  return "io.tolvane.Velmora.FinderAction.p" + std::to_string(getpid());
}

void emitNotification(SessionBus& bus, std::string_view name) {
  const std::size_t lastDot = name.rfind('.');
  if (lastDot == std::string_view::npos) {
    return;
  }
  requireMemoryForGLib();
  const std::string interface(name.substr(0, lastDot));
  const std::string member(name.substr(lastDot + 1));
  if (!glib().g_dbus_is_interface_name(interface.c_str()) ||
      !glib().g_dbus_is_member_name(member.c_str())) {
    return;
  }
  std::string path = "/" + interface;
  std::replace(path.begin(), path.end(), '.', '/');
  bus.requestName(nameOfThisProcess());
  bus.emitSignal(path, interface, member);
  bus.flush();
}

}  // namespace

LinuxNotificationCenter::LinuxNotificationCenter(SessionBus& bus) : bus_(bus) {}

void LinuxNotificationCenter::post(std::string_view name) noexcept {
  try {
    emitNotification(bus_, name);
  } catch (const std::exception&) {
    // Only a hint is lost: the application also looks for requests when it starts.
  }
}

}  // namespace velmora

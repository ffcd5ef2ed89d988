#include "platform/linux/DesktopNotification.h"

#include "platform/linux/GLib.h"
#include "platform/linux/SessionBus.h"

#include <exception>

namespace velmora {
namespace {

void notify(SessionBus& bus, std::string_view summary) {
  requireMemoryForGLib();
  const GLibPointer<char> text(
      glib().g_utf8_make_valid(summary.data(), static_cast<gssize>(summary.size())));
  // Application, notification to replace, icon, summary, body, actions, hints, time to show it.
  // The text is the summary, because a desktop may parse a body as markup.
  bus.call({"org.freedesktop.Notifications", "/org/freedesktop/Notifications",
            "org.freedesktop.Notifications", "Notify"},
           ownVariant(glib().g_variant_new_parsed(
               "('Velmora', uint32 0, 'io.tolvane.Velmora', %s, '', @as [],"
               " {'urgency': <byte 1>, 'desktop-entry': <'io.tolvane.Velmora'>}, -1)",
               text.get())));
}

}  // namespace

void notifyDesktop(SessionBus& bus, std::string_view summary) noexcept {
  try {
    notify(bus, summary);
  } catch (const std::exception&) {
    // Standard error gets the message, too.
  }
}

}  // namespace velmora

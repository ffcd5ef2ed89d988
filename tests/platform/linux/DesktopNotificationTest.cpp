#include "platform/linux/DesktopNotification.h"
#include "platform/linux/Environment.h"
#include "platform/linux/SessionBus.h"
#include "tests/platform/linux/BusPeer.h"
#include "tests/platform/linux/Buses.h"

#include <gtest/gtest.h>

#include <chrono>
#include <latch>
#include <string>
#include <string_view>
#include <thread>

namespace velmora {
namespace {

using namespace std::chrono_literals;

constexpr const char* notificationsXml =
    "<node><interface name='org.freedesktop.Notifications'><method name='Notify'>"
    "<arg type='s' direction='in'/><arg type='u' direction='in'/><arg type='s' direction='in'/>"
    "<arg type='s' direction='in'/><arg type='s' direction='in'/><arg type='as' direction='in'/>"
    "<arg type='a{sv}' direction='in'/><arg type='i' direction='in'/>"
    "<arg type='u' direction='out'/></method></interface></node>";

/// What a desktop is told when `summary` is notified.
BusMessage notified(std::string_view summary) {
  const PrivateBus daemon;
  BusMessage message;
  std::latch isReady(1);
  // The caller waits for the answer, so the desktop needs a thread of its own.
  std::thread desktop([&] {
    BusPeer peer(daemon.address());
    peer.serve("/org/freedesktop/Notifications", notificationsXml, "(uint32 7,)");
    peer.own("org.freedesktop.Notifications");
    isReady.count_down();
    message = peer.received(1).front();
    peer.flush();
  });
  isReady.wait();
  const Environment environment({{"DBUS_SESSION_BUS_ADDRESS", daemon.address()}});
  SessionBus bus(environment, 60s);
  notifyDesktop(bus, summary);
  desktop.join();
  return message;
}

std::string argumentsWith(std::string_view summary) {
  return "('Velmora', uint32 0, 'io.tolvane.Velmora', '" + std::string(summary) +
         "', '', @as [], {'urgency': <byte 0x01>, 'desktop-entry': <'io.tolvane.Velmora'>}, -1)";
}

TEST(DesktopNotification, showsTheSentenceAsSummary) {
  const BusMessage message = notified("Select a <b>warped</b> item & 復元.");
  EXPECT_EQ(message.path, "/org/freedesktop/Notifications");
  EXPECT_EQ(message.interface, "org.freedesktop.Notifications");
  EXPECT_EQ(message.member, "Notify");
  EXPECT_EQ(message.arguments, argumentsWith("Select a <b>warped</b> item & 復元."));
}

TEST(DesktopNotification, mendsWhatIsNotUTF8) {
  EXPECT_EQ(notified("a\xFFz").arguments, argumentsWith("a\uFFFDz"));
}

TEST(DesktopNotification, showsNoMoreThanTheView) {
  EXPECT_EQ(notified(std::string_view("summary and more").substr(0, 7)).arguments,
            argumentsWith("summary"));
}

TEST(DesktopNotification, waitsForNoDesktopAndNoBus) {
  const PrivateBus withoutDesktop;
  const DeafBus deaf;
  for (const std::string& address : {std::string(), withoutDesktop.address(), deaf.address()}) {
    const Environment environment({{"DBUS_SESSION_BUS_ADDRESS", address}});
    SessionBus bus(environment, 200ms);
    notifyDesktop(bus, "Nobody reads this.");
    EXPECT_FALSE(bus.nameHasOwner("org.freedesktop.Notifications"));
  }
}

}  // namespace
}  // namespace velmora

#include "platform/linux/DesktopNotification.h"
#include "platform/linux/Environment.h"
#include "platform/linux/SessionBus.h"
#include "tests/support/BusPeer.h"
#include "tests/support/Buses.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <string_view>

namespace velmora {
namespace {

using namespace std::chrono_literals;

TEST(DesktopNotification, showsTheMessageAsSummary) {
  const PrivateBus daemon;
  BusPeer desktop(daemon.address());
  desktop.answerWith("(uint32 7,)");
  desktop.own("org.freedesktop.Notifications");
  const Environment environment({{"DBUS_SESSION_BUS_ADDRESS", daemon.address()}});
  SessionBus bus(environment, 60s);
  const struct {
    std::string_view summary;
    std::string shown;
  } rows[] = {{"Select a <b>warped</b> item & 復元.", "Select a <b>warped</b> item & 復元."},
              {"a\xFFz", "a\uFFFDz"},
              {std::string_view("summary and more").substr(0, 7), "summary"}};
  std::size_t count = 0;
  for (const auto& row : rows) {
    SCOPED_TRACE(row.shown);
    notifyDesktop(bus, row.summary);
    const BusMessage message = desktop.received(++count).back();
    EXPECT_EQ(message.path, "/org/freedesktop/Notifications");
    EXPECT_EQ(message.interface, "org.freedesktop.Notifications");
    EXPECT_EQ(message.member, "Notify");
    EXPECT_EQ(message.arguments, "('Velmora', uint32 0, 'io.tolvane.Velmora', '" + row.shown +
                                     "', '', @as [], {'urgency': <byte 0x01>, 'desktop-entry': "
                                     "<'io.tolvane.Velmora'>}, -1)");
  }
}

TEST(DesktopNotification, doesNotWaitForADesktopOrABus) {
  const PrivateBus withoutDesktop;
  const BrokenBus deaf(BusStage::connected);
  for (const std::string& address : {std::string(), withoutDesktop.address(), deaf.address()}) {
    const Environment environment({{"DBUS_SESSION_BUS_ADDRESS", address}});
    SessionBus bus(environment, 200ms);
    notifyDesktop(bus, "Nobody reads this.");
    EXPECT_FALSE(bus.nameHasOwner("org.freedesktop.Notifications"));
  }
}

}  // namespace
}  // namespace velmora

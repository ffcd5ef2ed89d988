#include "platform/linux/Environment.h"
#include "platform/linux/LinuxNotificationCenter.h"
#include "platform/linux/SessionBus.h"
#include "tests/contracts/NotificationCenterContract.h"
#include "tests/support/BusPeer.h"
#include "tests/support/Buses.h"

#include <gtest/gtest.h>

#include <unistd.h>

#include <chrono>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace velmora {
namespace {

using namespace std::chrono_literals;

constexpr const char* handoffName = "io.tolvane.Velmora.finderHandoff";

/// The bus name that this program owns while it posts.
std::string ownName() { return "io.tolvane.Velmora.FinderAction.p" + std::to_string(getpid()); }

Environment at(const std::string& address) {
  return Environment({{"DBUS_SESSION_BUS_ADDRESS", address}});
}

/// Posts once through a bus connection of its own.
void post(const std::string& busAddress, std::string_view name,
          std::chrono::milliseconds limit = 60s) {
  const Environment environment = at(busAddress);
  SessionBus bus(environment, limit);
  LinuxNotificationCenter(bus).post(name);
}

class LinuxCenterAdapter {
 public:
  LinuxCenterAdapter() { receiver_.listen("org.example.Application"); }

  NotificationCenter& center() { return center_; }

  std::vector<std::string> received(std::size_t count) {
    std::vector<std::string> names;
    for (const BusMessage& message : receiver_.received(count)) {
      names.push_back(message.interface + "." + message.member);
    }
    return names;
  }

  void breakDelivery() { daemon_.die(); }

 private:
  PrivateBus daemon_;
  BusPeer receiver_{daemon_.address()};
  Environment environment_ = at(daemon_.address());
  SessionBus bus_{environment_, 60s};
  LinuxNotificationCenter center_{bus_};
};

INSTANTIATE_TYPED_TEST_SUITE_P(Linux, NotificationCenterContract, LinuxCenterAdapter);

class LinuxNotificationCenterTest : public testing::Test {
 protected:
  LinuxNotificationCenterTest() { receiver.listen("io.tolvane.Velmora"); }

  PrivateBus daemon;
  BusPeer receiver{daemon.address()};
};

TEST_F(LinuxNotificationCenterTest, postsTheHandoffSignalUnderANameOfThisProcess) {
  const Environment environment = at(daemon.address());
  SessionBus bus(environment, 60s);
  LinuxNotificationCenter(bus).post(handoffName);
  const std::string sender = receiver.ownerOf(ownName());
  EXPECT_NE(sender, "");
  const std::vector<BusMessage> messages = receiver.received(1);
  ASSERT_EQ(messages.size(), 1U);
  EXPECT_FALSE(messages.front().isCall);
  EXPECT_EQ(messages.front().sender, sender);
  EXPECT_EQ(messages.front().path, "/io/tolvane/Velmora");
  EXPECT_EQ(messages.front().interface, "io.tolvane.Velmora");
  EXPECT_EQ(messages.front().member, "finderHandoff");
  EXPECT_EQ(messages.front().arguments, "()");
}

TEST_F(LinuxNotificationCenterTest, postsEvenIfTheNameIsRefused) {
  receiver.own(ownName());
  post(daemon.address(), handoffName);
  EXPECT_EQ(receiver.received(1).front().member, "finderHandoff");
}

TEST_F(LinuxNotificationCenterTest, reachesASandboxThatAdmitsOnlyTheApplicationsNames) {
  const FilteringProxy proxy(daemon.address(), {"--own=io.tolvane.Velmora.*"});
  BusPeer sandboxed(proxy.address());
  sandboxed.listen("io.tolvane.Velmora");
  receiver.emitSignal("/io/tolvane/Velmora", "io.tolvane.Velmora", "filteredOut");
  post(daemon.address(), handoffName);
  // The filter keeps the order of signals, so it has dropped the earlier one.
  EXPECT_EQ(sandboxed.received(1).front().member, "finderHandoff");
}

TEST_F(LinuxNotificationCenterTest, postsNothingForAnInvalidName) {
  for (const std::string_view name :
       {"", "finderHandoff", "Velmora.finderHandoff", "io.tolvane.Velmora.", ".finderHandoff",
        "io.tolvane.Velmora.finder handoff", "io..Velmora.finderHandoff",
        "io.tolvane.Velmora.1st"}) {
    post(daemon.address(), name);
  }
  post(daemon.address(), "io.tolvane.Velmora.last");
  EXPECT_EQ(receiver.received(1).front().member, "last");
}

TEST(LinuxNotificationCenters, returnFromABrokenBus) {
  const BrokenBus deaf(BusStage::connected);
  BrokenBus mute(BusStage::greeting);
  const BrokenBus crashed(BusStage::ended);
  for (const std::string& address :
       {std::string(), deaf.address(), mute.address(), crashed.address()}) {
    post(address, handoffName, 200ms);
  }
  // The bus that answers nothing got no message after the greeting.
  EXPECT_EQ(mute.receivedBytes().find("finderHandoff"), std::string::npos);
}

}  // namespace
}  // namespace velmora

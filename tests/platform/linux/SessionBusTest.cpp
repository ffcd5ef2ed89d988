// A session bus in every state. A test that ends shows that no call waits for ever, because the
// test runner's limit is far above the limits given here.
#include "platform/linux/Environment.h"
#include "platform/linux/GLibPointers.h"
#include "platform/linux/SessionBus.h"
#include "platform/posix/FileDescriptor.h"
#include "tests/support/BusPeer.h"
#include "tests/support/Buses.h"
#include "tests/support/ScratchDirectory.h"

#include <gio/gio.h>
#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>

#include <chrono>
#include <optional>
#include <string>

namespace velmora {
namespace {

using namespace std::chrono_literals;

/// More than any healthy bus needs under any sanitizer.
constexpr std::chrono::milliseconds ample = 60s;
constexpr std::chrono::milliseconds brief = 200ms;
/// Enough for the greeting to reach the bus, even on a busy machine.
constexpr std::chrono::milliseconds unhurried = 3s;
/// More than the test runner's limit.
constexpr std::chrono::milliseconds longerThanTheTest = 1h;

Environment at(const std::string& address) {
  return Environment({{"DBUS_SESSION_BUS_ADDRESS", address}});
}

const BusMethod echoMethod = {"org.example.Echo", "/org/example/Echo", "org.example.Echo", "Echo"};

GLibPointer<GVariant> nothing() { return ownVariant(g_variant_new("()")); }

/// Tries every operation many times. Returns whether the bus answered any of them.
bool answersAnything(SessionBus& bus) {
  // If each operation waited, this loop would take minutes.
  for (int round = 0; round < 1000; ++round) {
    bus.requestName("org.example.Name");
    bus.emitSignal("/org/example", "org.example.Signals", "happened");
    bus.send(echoMethod, nothing());
    bus.flush();
    const std::optional<PendingCall> pending = bus.startCall(echoMethod, nothing());
    if (bus.nameHasOwner("org.freedesktop.DBus") || bus.call(echoMethod, nothing()) ||
        (pending && bus.awaitAnswer(*pending))) {
      return true;
    }
  }
  return false;
}

bool answersAnything(const std::string& address, std::chrono::milliseconds limit = brief) {
  const Environment environment = at(address);
  SessionBus bus(environment, limit);
  return answersAnything(bus);
}

TEST(SessionBusTest, reportsWhetherANameHasAnOwner) {
  const PrivateBus daemon;
  BusPeer peer(daemon.address());
  const Environment environment = at(daemon.address());
  SessionBus bus(environment, ample);
  EXPECT_FALSE(bus.nameHasOwner("org.example.Echo"));
  peer.own("org.example.Echo");
  EXPECT_TRUE(bus.nameHasOwner("org.example.Echo"));
}

TEST(SessionBusTest, ownsTheGrantedNames) {
  const PrivateBus daemon;
  BusPeer peer(daemon.address());
  peer.own("org.example.Taken");
  const std::string peersName = peer.ownerOf("org.example.Taken");
  const Environment environment = at(daemon.address());
  SessionBus bus(environment, ample);
  bus.requestName("org.example.Taken");
  bus.requestName("org.example.Free");
  EXPECT_EQ(peer.ownerOf("org.example.Taken"), peersName);
  EXPECT_NE(peer.ownerOf("org.example.Free"), "");
  EXPECT_NE(peer.ownerOf("org.example.Free"), peersName);
}

TEST(SessionBusTest, deliversSignalsToTheBusByAFlush) {
  constexpr std::size_t senders = 50;
  const PrivateBus daemon;
  BusPeer peer(daemon.address());
  peer.listen("org.example.Signals");
  const Environment environment = at(daemon.address());
  for (std::size_t sender = 0; sender < senders; ++sender) {
    SessionBus bus(environment, ample);
    bus.emitSignal("/org/example", "org.example.Signals", "happened");
    bus.flush();
  }
  // The bus keeps its order, so all signals arrive before the answer to this call.
  peer.ownerOf("org.example.Name");
  EXPECT_EQ(peer.received(0).size(), senders);
}

TEST(SessionBusTest, returnsTheAnswerToACallOrNullForAnError) {
  const PrivateBus daemon;
  const Environment environment = at(daemon.address());
  SessionBus bus(environment, ample);
  const BusMethod getId = {"org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                           "GetId"};
  const GLibPointer<GVariant> answer = bus.call(getId, nothing());
  ASSERT_NE(answer, nullptr);
  EXPECT_STREQ(g_variant_get_type_string(answer.get()), "(s)");
  EXPECT_EQ(bus.call(echoMethod, nothing()), nullptr);
}

TEST(SessionBusTest, startsNoServiceForACallWithoutAnAnswer) {
  const PrivateBus daemon;
  // The service would read this pipe for ever, and a call to it would wait as long.
  const ScratchDirectory directory;
  const std::string pipe = directory.path("pipe");
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  const FileDescriptor writer = FileDescriptor::adopt(open(pipe.c_str(), O_RDWR | O_CLOEXEC));
  daemon.addService("org.example.Echo", "/bin/cat " + pipe);
  BusPeer peer(daemon.address());
  const Environment environment = at(daemon.address());
  SessionBus bus(environment, ample);
  bus.send({"org.example.Echo", "/org/example/Echo", "org.example.Echo", "TooEarly"}, nothing());
  bus.flush();
  peer.own("org.example.Echo");
  bus.send(echoMethod, nothing());
  EXPECT_EQ(peer.received(1).front().member, "Echo");
}

TEST(SessionBusTest, hasNoEffectWithoutABus) {
  const Environment environment;
  SessionBus bus(environment, ample);
  EXPECT_FALSE(answersAnything(bus));
}

TEST(SessionBusTest, hasNoEffectWhereNothingListens) {
  const BrokenBus bus(BusStage::ended);
  EXPECT_FALSE(answersAnything(bus.address()));
  EXPECT_FALSE(answersAnything("unix:path=/does/not/exist"));
  EXPECT_FALSE(answersAnything("no address at all"));
}

TEST(SessionBusTest, doesNotWaitForABusThatDoesNotAuthenticate) {
  const BrokenBus bus(BusStage::connected);
  EXPECT_FALSE(answersAnything(bus.address()));
}

TEST(SessionBusTest, doesNotWaitForABusThatDoesNotGreet) {
  BrokenBus bus(BusStage::greeting);
  EXPECT_FALSE(answersAnything(bus.address(), unhurried));
  // The client sent its greeting and nothing else.
  EXPECT_NE(bus.receivedBytes().find("Hello"), std::string::npos);
  EXPECT_EQ(bus.receivedBytes().find("RequestName"), std::string::npos);
}

TEST(SessionBusTest, takesNoMessageForAnAnswerThatIsNone) {
  for (const BusManner manner : {BusManner::closes, BusManner::babbles, BusManner::sendsSignals,
                                 BusManner::sendsHugeAnswer}) {
    for (const BusStage stage : {BusStage::greeting, BusStage::calling}) {
      SCOPED_TRACE(static_cast<int>(manner));
      const BrokenBus bus(stage, manner);
      EXPECT_FALSE(answersAnything(bus.address()));
    }
  }
}

TEST(SessionBusTest, triesTheNextAddress) {
  const BrokenBus ended(BusStage::ended);
  const BrokenBus closing(BusStage::connected, BusManner::closes);
  const PrivateBus daemon;
  EXPECT_TRUE(answersAnything(
      "tcp:host=localhost;" + ended.address() + ";" + closing.address() + ";" + daemon.address(),
      ample));
}

TEST(SessionBusTest, doesNotWaitForABusThatFreezes) {
  const PrivateBus daemon;
  const Environment environment = at(daemon.address());
  SessionBus bus(environment, 1s);
  bus.flush();
  daemon.freeze();
  EXPECT_FALSE(answersAnything(bus));
}

TEST(SessionBusTest, sendsNothingAfterTheTimeLimit) {
  const PrivateBus daemon;
  BusPeer peer(daemon.address());
  peer.listen("org.example.Signals");
  const Environment environment = at(daemon.address());
  SessionBus slow(environment, brief);
  slow.requestName("org.example.Name");
  daemon.freeze();
  slow.flush();
  daemon.thaw();
  slow.emitSignal("/org/example", "org.example.Signals", "tooLate");
  SessionBus other(environment, ample);
  other.emitSignal("/org/example", "org.example.Signals", "marker");
  EXPECT_EQ(peer.received(1).front().member, "marker");
}

TEST(SessionBusTest, survivesTheEndOfTheBus) {
  PrivateBus daemon;
  const Environment environment = at(daemon.address());
  SessionBus bus(environment, ample);
  EXPECT_TRUE(bus.nameHasOwner("org.freedesktop.DBus"));
  daemon.die();
  EXPECT_FALSE(answersAnything(bus));
}

TEST(SessionBusTest, dropsACallWhoseAnswerNobodyAwaits) {
  const PrivateBus daemon;
  BusPeer silent(daemon.address());
  silent.answerWith("");
  silent.own("org.example.Echo");
  const Environment environment = at(daemon.address());
  SessionBus bus(environment, longerThanTheTest);
  EXPECT_TRUE(bus.startCall(echoMethod, nothing()));
  EXPECT_TRUE(bus.nameHasOwner("org.example.Echo"));
}

TEST(SessionBusTest, leavesTheBusWhenDestroyed) {
  const PrivateBus daemon;
  BusPeer peer(daemon.address());
  const Environment environment = at(daemon.address());
  // The loop repeats this, because a leaked reference keeps the connection alive only now and then.
  for (int round = 0; round < 100; ++round) {
    const std::string name = "org.example.Name" + std::to_string(round);
    SessionBus(environment, ample).requestName(name);
    while (!peer.ownerOf(name).empty()) {
    }
  }
}

}  // namespace
}  // namespace velmora

// The signal is a hint: without a bus, or with one that does not answer, the request is the same.

#include "tests/process/ProcessTest.h"

#include <optional>

namespace velmora::process {

namespace {

class BrokenBusTest : public ProcessTest {
 protected:
  /// One request that succeeds and one that does not, which tries to show a notification.
  void expectServedAsEver() {
    expectHandedOver(run({folder}), {folder});
    expectCancelled(run({home.makeFile("file")}), 1, message("en", chooseWarpFolders) + "\n");
  }

  /// The application is started nevertheless, and finds the bus that it would find without us.
  void expectLaunchedWithAddress(const std::optional<std::string>& address) {
    installApplication("DBusActivatable=true\n" + execLine());
    expectCompleted(run({folder}));
    const auto application = launched();
    ASSERT_NE(application, nullptr);
    EXPECT_EQ(application->variable("DBUS_SESSION_BUS_ADDRESS"), address);
  }

  const std::string folder = home.makeFolder("A");
};

TEST_F(BrokenBusTest, noBus) {
  // Where there is a display, libraries like to start a bus of their own.
  command.environment["DISPLAY"] = ":99";
  expectServedAsEver();
  writeFile(home.runtimeDirectory() / "bus", "");
  expectServedAsEver();
  command.environment.erase("XDG_RUNTIME_DIR");
  expectServedAsEver();
  expectLaunchedWithAddress(std::nullopt);
}

TEST_F(BrokenBusTest, addressOfNoKind) {
  for (const char* address : {"nonsense", "unix:", "disabled:", "unix:path=", ";", "tcp:port=0"}) {
    SCOPED_TRACE(address);
    setBus(address);
    expectServedAsEver();
  }
}

TEST_F(BrokenBusTest, busInAnyStateOfDecay) {
  for (const BusFault fault :
       {BusFault::crashed, BusFault::letsNobodyIn, BusFault::answersNothing, BusFault::hangsUp}) {
    SCOPED_TRACE(static_cast<int>(fault));
    const BrokenBus bus(fault);
    setBus(bus.address());
    // There is a notification to show.
    expectCancelled(run({home.makeFile("file")}), 1, message("en", chooseWarpFolders) + "\n");
    EXPECT_TRUE(fault != BusFault::letsNobodyIn || bus.hasCaller());
    expectLaunchedWithAddress(bus.address());
    EXPECT_EQ(onlyRequest().folderPaths, std::vector<std::string>{folder});
  }
}

TEST_F(BrokenBusTest, busThatFreezes) {
  const PrivateBus bus;
  bus.freeze();
  setBus(bus.address());
  expectLaunchedWithAddress(bus.address());
}

}  // namespace

}  // namespace velmora::process

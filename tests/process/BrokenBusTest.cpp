// The signal is only a hint: a missing or broken bus does not change the request.

#include "tests/process/ProcessTest.h"

#include <optional>

namespace velmora::process {

namespace {

class BrokenBusTest : public ProcessTest {
 protected:
  /// Expects one request to succeed. Another fails and tries to show a notification.
  void expectServedAsUsual() {
    expectHandedOver(run({folder}), {folder});
    expectCancelled(run({home.makeFile("file")}), 1, message("en", chooseWarpFolders) + "\n");
  }

  /// Expects the application to start with the same bus address as without this program.
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
  // With a display, libraries may start a bus of their own.
  command.environment["DISPLAY"] = ":99";
  expectServedAsUsual();
  writeFile(home.runtimeDirectory() / "bus", "");
  expectServedAsUsual();
  command.environment.erase("XDG_RUNTIME_DIR");
  expectServedAsUsual();
  expectLaunchedWithAddress(std::nullopt);
}

TEST_F(BrokenBusTest, invalidAddress) {
  for (const char* address : {"nonsense", "unix:", "disabled:", "unix:path=", ";", "tcp:port=0"}) {
    SCOPED_TRACE(address);
    setBus(address);
    expectServedAsUsual();
  }
}

TEST_F(BrokenBusTest, brokenBus) {
  for (const BusFault fault :
       {BusFault::crashed, BusFault::letsNobodyIn, BusFault::answersNothing, BusFault::hangsUp}) {
    SCOPED_TRACE(static_cast<int>(fault));
    const BrokenBus bus(fault);
    setBus(bus.address());
    // This failure tries to show a notification.
    expectCancelled(run({home.makeFile("file")}), 1, message("en", chooseWarpFolders) + "\n");
    EXPECT_TRUE(fault != BusFault::letsNobodyIn || bus.hasCaller());
    expectLaunchedWithAddress(bus.address());
    EXPECT_EQ(onlyRequest().folderPaths, std::vector<std::string>{folder});
  }
}

TEST_F(BrokenBusTest, frozenBusAndNobodyWhoReadsStandardError) {
  const BrokenBus bus(BusFault::answersNothing);
  setBus(bus.address());
  command.standardError = StandardError::stuckPipe;
  expectCancelled(run({home.makeFile("file")}), 1, "");
  writeFile(home.container(), "");
  expectCancelled(run({folder}), 2, "");
}

TEST_F(BrokenBusTest, busThatFreezes) {
  const PrivateBus bus;
  bus.freeze();
  setBus(bus.address());
  expectLaunchedWithAddress(bus.address());
}

}  // namespace

}  // namespace velmora::process

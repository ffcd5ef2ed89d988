// The signal is only a hint: a missing or broken bus does not change the request.

#include "tests/process/ProcessTest.h"

#include <optional>

namespace velmora::process {

namespace {

/// In kilobytes; twice the memory of this test, which counts as the program's. A bus sends as much
/// in a few milliseconds.
[[maybe_unused]] constexpr long maxPeakMemory = 64L * 1024;

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
    const Outcome outcome = run({folder});
    expectCompleted(outcome);
#ifndef VELMORA_TEST_WITH_SANITIZERS
    EXPECT_LE(outcome.peakMemory, maxPeakMemory);
#endif
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
  for (const char* address :
       {"nonsense", "unix:", "disabled:", "unix:path=", "unix:path=%", ";", "tcp:port=0"}) {
    SCOPED_TRACE(address);
    setBus(address);
    expectServedAsUsual();
  }
}

TEST_F(BrokenBusTest, brokenBus) {
  using enum BusManner;
  const struct {
    BusStage stage;
    std::vector<BusManner> manners;
  } rows[] = {
      {BusStage::ended, {closes}},
      {BusStage::connected, {hangs, closes, babbles}},
      {BusStage::authenticating, {hangs, closes, babbles}},
      {BusStage::greeting, {hangs, closes, babbles, sendsSignals, sendsHugeAnswer}},
      {BusStage::calling, {hangs, closes, babbles, sendsSignals, sendsHugeAnswer}},
  };
  for (const auto& [stage, manners] : rows) {
    for (const BusManner manner : manners) {
      SCOPED_TRACE(std::to_string(static_cast<int>(stage)) + " " +
                   std::to_string(static_cast<int>(manner)));
      const BrokenBus bus(stage, manner);
      setBus(bus.address());
      expectLaunchedWithAddress(bus.address());
      EXPECT_EQ(onlyRequest().folderPaths, std::vector<std::string>{folder});
    }
  }
}

TEST_F(BrokenBusTest, frozenBusAndNobodyWhoReadsStandardError) {
  const BrokenBus bus(BusStage::connected);
  setBus(bus.address());
  command.standardError = StandardError::stuckPipe;
  expectCancelled(run({home.makeFile("file")}), 1, "");
  writeFile(home.container(), "");
  expectCancelled(run({folder}), 2, "");
}

TEST_F(BrokenBusTest, notificationOnABusThatHangs) {
  const BrokenBus bus(BusStage::connected);
  setBus(bus.address());
  // The program tries to show a notification.
  expectCancelled(run({home.makeFile("file")}), 1, message("en", chooseWarpFolders) + "\n");
  EXPECT_TRUE(bus.hasCaller());
}

TEST_F(BrokenBusTest, busThatFreezes) {
  const PrivateBus bus;
  bus.freeze();
  setBus(bus.address());
  expectLaunchedWithAddress(bus.address());
}

}  // namespace

}  // namespace velmora::process

// The signal is a hint: without a bus, or with one that does not answer, the request is the same.

#include "tests/process/Buses.h"
#include "tests/process/ProcessTest.h"

namespace velmora::process {

namespace {

class BrokenBusTest : public ProcessTest {
 protected:
  void setAddress(const std::string& address) {
    command.environment["DBUS_SESSION_BUS_ADDRESS"] = address;
  }

  /// One request that succeeds and one that does not, which tries to show a notification.
  void expectServedAsEver() {
    expectCompleted(run({folder}));
    EXPECT_EQ(leftRunning(), std::set<pid_t>());
    EXPECT_EQ(onlyRequest().folderPaths, std::vector<std::string>{folder});
    expectCancelled(run({home.makeFile("file")}), 1, message("en", chooseWarpFolders) + "\n");
  }

  /// The application is started nevertheless, and finds the bus that it would find without us.
  void expectLaunchedWithAddress(const std::string& address) {
    installApplication("DBusActivatable=true\n" + execLine());
    expectCompleted(run({folder}));
    const auto application = launched();
    ASSERT_NE(application, nullptr);
    EXPECT_TRUE(application->hasVariable("DBUS_SESSION_BUS_ADDRESS=" + address));
  }

  const std::string folder = home.makeFolder("A");
};

TEST_F(BrokenBusTest, noBus) {
  // Where there is a display, libraries like to start a bus of their own.
  command.environment["DISPLAY"] = ":99";
  expectServedAsEver();
  installApplication(execLine());
  expectCompleted(run({folder}));
  const auto application = launched();
  ASSERT_NE(application, nullptr);
  EXPECT_FALSE(application->hasVariableNamed("DBUS_SESSION_BUS_ADDRESS"));
}

TEST_F(BrokenBusTest, noBusAndNoRuntimeDirectory) {
  command.environment.erase("XDG_RUNTIME_DIR");
  command.environment["DISPLAY"] = ":99";
  expectServedAsEver();
}

TEST_F(BrokenBusTest, placeOfTheBusIsAFile) {
  writeFile(home.runtimeDirectory() / "bus", "");
  expectServedAsEver();
}

TEST_F(BrokenBusTest, addressOfNoKind) {
  for (const char* address : {"nonsense", "unix:", "disabled:", "unix:path=", ";", "tcp:port=0"}) {
    SCOPED_TRACE(address);
    setAddress(address);
    expectServedAsEver();
  }
}

TEST_F(BrokenBusTest, deadBus) {
  const std::filesystem::path socket = home.runtimeDirectory() / "dead";
  { const Listener listener(socket); }
  ASSERT_TRUE(std::filesystem::is_socket(socket));
  setAddress("unix:path=" + socket.string());
  expectServedAsEver();
  expectLaunchedWithAddress("unix:path=" + socket.string());
}

TEST_F(BrokenBusTest, busThatSaysNothing) {
  const SilentBus bus(home, Silence::fromTheStart);
  setAddress(bus.address());
  expectServedAsEver();
  EXPECT_TRUE(bus.hasCaller());
  expectLaunchedWithAddress(bus.address());
}

TEST_F(BrokenBusTest, busThatSaysNothingAfterAuthentication) {
  const SilentBus bus(home, Silence::afterAuthentication);
  setAddress(bus.address());
  expectServedAsEver();
  expectLaunchedWithAddress(bus.address());
}

TEST_F(BrokenBusTest, busThatHangsUp) {
  const SilentBus bus(home, Silence::hangsUp);
  setAddress(bus.address());
  expectServedAsEver();
  expectLaunchedWithAddress(bus.address());
}

}  // namespace

}  // namespace velmora::process

// After the handoff the program starts the application, or activates the running one.

#include "tests/process/ProcessTest.h"
#include "tests/process/Trace.h"
#include "tests/support/HostileFiles.h"

#include <sys/stat.h>

namespace velmora::process {

namespace {

constexpr const char* applicationName = "io.tolvane.Velmora";
constexpr const char* entryName = "io.tolvane.Velmora.desktop";
constexpr const char* tokens =
    "({'activation-token': <'wayland token'>, 'desktop-startup-id': <'x11 startup'>},)";

void makePipe(const std::filesystem::path& path) {
  std::filesystem::create_directories(path.parent_path());
  require(::mkfifo(path.c_str(), 0600) == 0, path);
}

class LaunchTest : public ProcessTest {
 protected:
  LaunchTest() {
    setBus(bus.address());
    command.environment["XDG_ACTIVATION_TOKEN"] = "wayland token";
    command.environment["DESKTOP_STARTUP_ID"] = "x11 startup";
  }

  void expectLaunchedWithTokens() {
    // No other process has the program's output open while the application runs.
    expectCompleted(run({folder}));
    const auto application = launched();
    ASSERT_NE(application, nullptr);
    EXPECT_EQ(application->values("argument"), std::vector<std::string>());
    EXPECT_EQ(application->variable("XDG_ACTIVATION_TOKEN"), "wayland token");
    EXPECT_EQ(application->variable("DESKTOP_STARTUP_ID"), "x11 startup");
    EXPECT_EQ(application->variable("DBUS_SESSION_BUS_ADDRESS"), bus.address());
  }

  std::string folder = home.makeFolder("A");
  PrivateBus bus;
};

TEST_F(LaunchTest, applicationIsStarted) {
  installApplication(execLine("%U"));
  expectLaunchedWithTokens();
  // An application outside the menus is started, too.
  installApplication("NoDisplay=true\n" + execLine());
  expectLaunchedWithTokens();
}

TEST_F(LaunchTest, runningApplicationIsActivated) {
  installApplication("DBusActivatable=true\n" + execLine());
  BusPeer application(bus.address());
  application.own(applicationName);
  // The result does not depend on the answer.
  for (const char* answer : {"()", ""}) {
    application.answerWith(answer);
    const Outcome outcome = run({folder});
    expectHandedOver(outcome, {folder});
    const std::vector<BusMessage> received = application.receivedUntilGone(outcome.process);
    ASSERT_FALSE(received.empty());
    const BusMessage& call = received.back();
    EXPECT_TRUE(call.isCall);
    EXPECT_EQ(call.path, "/io/tolvane/Velmora");
    EXPECT_EQ(call.interface, "org.freedesktop.Application");
    EXPECT_EQ(call.member, "Activate");
    EXPECT_EQ(call.arguments, tokens);
  }
  EXPECT_EQ(application.received(0).size(), 2U);
}

TEST_F(LaunchTest, activatableApplicationThatDoesNotRunIsStartedByItsCommand) {
  // The program must not call the service, because the bus may lose a call whose sender ends.
  const Listener service(home.runtimeDirectory() / "service");
  bus.addService(applicationName, applicationCommand(service));
  installApplication("DBusActivatable=true\n" + execLine());
  expectLaunchedWithTokens();
  EXPECT_FALSE(service.hasCaller());
}

TEST_F(LaunchTest, activatableApplicationWithoutCommandIsStartedByTheBus) {
  const Listener service(home.runtimeDirectory() / "service");
  bus.addService(applicationName, applicationCommand(service, "", applicationName));
  installApplication("DBusActivatable=true\n");
  expectCompleted(run({folder}));
  EXPECT_EQ(LaunchedApplication(service).values("call"),
            std::vector{"/io/tolvane/Velmora org.freedesktop.Application.Activate" +
                        std::string(tokens)});
}

TEST_F(LaunchTest, applicationThatCannotBeLaunchedIsNoError) {
  expectHandedOver(run({folder}), {folder});
  for (const std::string& entry :
       {"Hidden=true\n" + execLine(), "TryExec=/nowhere/velmora\n" + execLine(),
        std::string("Exec=/nowhere/velmora\n"), std::string("DBusActivatable=true\n"),
        std::string()}) {
    SCOPED_TRACE(entry);
    installApplication(entry);
    expectHandedOver(run({folder}), {folder});
  }
}

TEST_F(LaunchTest, applicationIsFoundBesideHostileFiles) {
  const std::filesystem::path shared = home.path() / "share" / "applications" / entryName;
  installApplication(execLine());
  std::filesystem::create_directories(shared.parent_path());
  std::filesystem::rename(home.dataHome() / "applications" / entryName, shared);
  makePipe(home.dataHome() / "applications" / entryName);
  makePipe(home.configHome() / "mimeapps.list");
  makePipe(home.path() / "etc" / "mimeapps.list");
  for (const auto& directory : {home.dataHome() / "applications", shared.parent_path()}) {
    for (const char* name : {"mimeapps.list", "defaults.list", "mimeinfo.cache"}) {
      makePipe(directory / name);
    }
    // GIO would list these for ever.
    std::filesystem::create_symlink(".", directory / "one");
    std::filesystem::create_symlink(".", directory / "other");
  }
  expectLaunchedWithTokens();
}

TEST_F(LaunchTest, onlyTheEntryIsOpenedForALaunch) {
  // The trace lasts until the application ends. The leak checker does not work in a traced process.
  installApplication("Exec=/bin/true\n");
  command.environment["ASAN_OPTIONS"] += ":detect_leaks=0";
  const std::filesystem::path trace = home.path() / "trace";
  command.arguments = tracingCommand(trace, "?open,openat,execve", {});
  EXPECT_EQ(run({VELMORA_TEST_PROGRAM, folder}).exitStatus, 0);
  const std::string calls = readFile(trace);
  EXPECT_NE(calls.find("\"/bin/true\""), std::string::npos);
  EXPECT_NE(calls.find(entryName), std::string::npos);
  for (const char* name : {"mimeapps.list", "defaults.list", "mimeinfo.cache"}) {
    EXPECT_EQ(calls.find(name), std::string::npos) << name;
  }
}

TEST_F(LaunchTest, applicationInTheWorkingDirectoryIsNotStarted) {
  writeFile(home.path() / "applications" / entryName,
            "[Desktop Entry]\nType=Application\nName=Velmora\n" + execLine());
  for (const char* directories : {".", ":", "none:", "./"}) {
    SCOPED_TRACE(directories);
    command.environment["XDG_DATA_DIRS"] = directories;
    expectHandedOver(run({folder}), {folder});
  }
  command.environment["XDG_DATA_HOME"] = ".";
  expectHandedOver(run({folder}), {folder});
}

}  // namespace

}  // namespace velmora::process

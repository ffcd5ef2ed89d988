// The application is opened after the handoff: started, or told to come to the front.

#include "tests/process/Buses.h"
#include "tests/process/ProcessTest.h"

#include <gio/gio.h>

#include <sys/stat.h>

#include <memory>

namespace velmora::process {

namespace {

constexpr const char* applicationName = "io.tolvane.Velmora";

struct VariantDeleter {
  void operator()(GVariant* variant) const { g_variant_unref(variant); }
};

/// The text stored under `key` in the platform data of an Activate call; empty without.
std::string platformData(const Record& call, const char* key) {
  const std::string body = call.value("body");
  const std::unique_ptr<GVariant, VariantDeleter> arguments(
      g_variant_parse(G_VARIANT_TYPE("(a{sv})"), body.c_str(), nullptr, nullptr, nullptr));
  if (arguments == nullptr) {
    return "not platform data: " + body;
  }
  const std::unique_ptr<GVariant, VariantDeleter> data(
      g_variant_get_child_value(arguments.get(), 0));
  const char* text = "";
  g_variant_lookup(data.get(), key, "&s", &text);
  return text;
}

void expectActivation(const std::vector<Record>& records) {
  const std::vector<Record> calls = named(records, "Activate");
  ASSERT_EQ(calls.size(), 1U);
  EXPECT_EQ(calls.front().value("type"), "call");
  EXPECT_EQ(calls.front().value("path"), "/io/tolvane/Velmora");
  EXPECT_EQ(calls.front().value("interface"), "org.freedesktop.Application");
  EXPECT_EQ(platformData(calls.front(), "activation-token"), "wayland token");
  EXPECT_EQ(platformData(calls.front(), "desktop-startup-id"), "x11 startup");
}

class LaunchTest : public ProcessTest {
 protected:
  LaunchTest() {
    command.environment["XDG_ACTIVATION_TOKEN"] = "wayland token";
    command.environment["DESKTOP_STARTUP_ID"] = "x11 startup";
  }

  void use(const PrivateBus& bus) {
    command.environment["DBUS_SESSION_BUS_ADDRESS"] = bus.address();
  }

  void expectLaunchedWithTokens() {
    const auto application = launched();
    ASSERT_NE(application, nullptr);
    EXPECT_EQ(application->arguments(), std::vector<std::string>());
    EXPECT_TRUE(application->hasVariable("XDG_ACTIVATION_TOKEN=wayland token"));
    EXPECT_TRUE(application->hasVariable("DESKTOP_STARTUP_ID=x11 startup"));
  }

  std::string folder = home.makeFolder("A");
};

TEST_F(LaunchTest, entryThatIsAPipeIsNotWaitedFor) {
  const std::filesystem::path entry =
      home.dataHome() / "applications" / "io.tolvane.Velmora.desktop";
  std::filesystem::create_directories(entry.parent_path());
  ASSERT_EQ(::mkfifo(entry.c_str(), 0600), 0);
  expectCompleted(run({folder}));
  EXPECT_TRUE(leftRunning().empty());
}

TEST_F(LaunchTest, plainApplicationIsStarted) {
  const PrivateBus bus(home);
  use(bus);
  installApplication(execLine("%U"));
  // Nobody else has the program's output open while the application runs: see expectCompleted.
  expectCompleted(run({folder}));
  const auto application = launched();
  ASSERT_NE(application, nullptr);
  EXPECT_EQ(application->arguments(), std::vector<std::string>());
  EXPECT_TRUE(application->hasVariable("XDG_ACTIVATION_TOKEN=wayland token"));
  EXPECT_TRUE(application->hasVariable("DESKTOP_STARTUP_ID=x11 startup"));
  EXPECT_TRUE(application->hasVariable("DBUS_SESSION_BUS_ADDRESS=" + bus.address()));
}

TEST_F(LaunchTest, runningApplicationIsActivated) {
  const PrivateBus bus(home);
  use(bus);
  installApplication("DBusActivatable=true\n" + execLine());
  Peer application(bus.address(), {"--own", applicationName});
  const Outcome outcome = run({folder});
  expectCompleted(outcome);
  EXPECT_EQ(leftRunning(), std::set<pid_t>());
  expectActivation(application.recordsUntilGone(outcome.process));
}

TEST_F(LaunchTest, runningApplicationThatNeverAnswersIsActivated) {
  const PrivateBus bus(home);
  use(bus);
  installApplication("DBusActivatable=true\n" + execLine());
  Peer application(bus.address(), {"--own", applicationName, "--mute"});
  const Outcome outcome = run({folder});
  expectCompleted(outcome);
  EXPECT_EQ(leftRunning(), std::set<pid_t>());
  expectActivation(application.recordsUntilGone(outcome.process));
}

TEST_F(LaunchTest, activatableApplicationThatDoesNotRunIsStartedByItsCommand) {
  // The service must stay out of it: a call to it could be lost with its sender.
  const Listener service(home.runtimeDirectory() / "service");
  const PrivateBus bus(home, {{applicationName, helperCommand({"launched", service.path()})}});
  use(bus);
  installApplication("DBusActivatable=true\n" + execLine());
  const Outcome outcome = run({folder});
  expectCompleted(outcome);
  expectLaunchedWithTokens();
  EXPECT_FALSE(service.hasCaller());
}

TEST_F(LaunchTest, activatableApplicationWithoutCommandIsStartedByTheBus) {
  const Listener service(home.runtimeDirectory() / "service");
  const PrivateBus bus(home, {{applicationName, helperCommand({"record", "--own", applicationName,
                                                               "--report", service.path()})}});
  use(bus);
  installApplication("DBusActivatable=true\n");
  const Outcome outcome = run({folder});
  expectCompleted(outcome);
  Peer application(service);
  expectActivation(application.recordsUntilGone(outcome.process));
}

TEST_F(LaunchTest, activatableApplicationWithoutCommandOrServiceIsNoError) {
  const PrivateBus bus(home);
  use(bus);
  installApplication("DBusActivatable=true\n");
  expectCompleted(run({folder}));
  EXPECT_EQ(leftRunning(), std::set<pid_t>());
  EXPECT_EQ(onlyRequest().folderPaths, std::vector<std::string>{folder});
}

TEST_F(LaunchTest, absentApplicationIsNoError) {
  const PrivateBus bus(home);
  use(bus);
  expectCompleted(run({folder}));
  EXPECT_EQ(leftRunning(), std::set<pid_t>());
  EXPECT_EQ(onlyRequest().folderPaths, std::vector<std::string>{folder});
}

TEST_F(LaunchTest, applicationOutsideTheMenusIsStarted) {
  installApplication("NoDisplay=true\n" + execLine());
  expectCompleted(run({folder}));
  expectLaunchedWithTokens();
}

TEST_F(LaunchTest, applicationThatCannotBeLaunchedIsNoError) {
  const std::string lines[] = {
      "Hidden=true\n" + execLine(),
      "TryExec=/nowhere/velmora\n" + execLine(),
      "Exec=/nowhere/velmora\n",
      "",
  };
  for (const std::string& entry : lines) {
    SCOPED_TRACE(entry);
    installApplication(entry);
    expectCompleted(run({folder}));
    EXPECT_EQ(leftRunning(), std::set<pid_t>());
    EXPECT_EQ(onlyRequest().folderPaths, std::vector<std::string>{folder});
  }
}

}  // namespace

}  // namespace velmora::process

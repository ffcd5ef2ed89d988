// Opens applications on a desktop that main() prepares, because GLib reads the directories of
// desktop entries only once.
#include "platform/linux/Environment.h"
#include "platform/linux/LinuxWorkspace.h"
#include "platform/linux/SessionBus.h"
#include "platform/posix/PosixFileReader.h"
#include "tests/contracts/WorkspaceContract.h"
#include "tests/support/BusPeer.h"
#include "tests/support/Buses.h"
#include "tests/support/LaunchedApplication.h"
#include "tests/support/ScratchDirectory.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstddef>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace velmora {
namespace {

using namespace std::chrono_literals;

constexpr OpenConfiguration activating = {.activates = true, .addsToRecentItems = false};

constexpr const char* tokens =
    "({'activation-token': <'wayland-token'>, 'desktop-startup-id': <'x11-id'>},)";

std::string dataHome() {
  return std::string(captureEnvironment().variable("XDG_DATA_HOME").value());
}

/// Started applications connect here, each with its name as argument.
std::unique_ptr<Listener> launches;

/// The name of the next started application. The call ends the application.
std::string nextStarted() { return LaunchedApplication(*launches).value("argument"); }

class LinuxWorkspaceAdapter {
 public:
  Workspace& workspace() { return workspace_; }
  static std::string installedApplication() { return "org.example.Plain"; }
  static std::string otherInstalledApplication() { return "org.example.Activatable"; }
  static Text emptyLocation() { return {"/does/not/exist.desktop"}; }

  static std::vector<std::string> opened(std::size_t count) {
    std::vector<std::string> applications;
    while (applications.size() < count) {
      applications.push_back(nextStarted());
    }
    return applications;
  }

 private:
  PrivateBus daemon_;
  Environment environment_{{{"DBUS_SESSION_BUS_ADDRESS", daemon_.address()}}};
  SessionBus bus_{environment_, 60s};
  PosixFileReader fileReader_;
  LinuxWorkspace workspace_{bus_, environment_, fileReader_};
};

INSTANTIATE_TYPED_TEST_SUITE_P(Linux, WorkspaceContract, LinuxWorkspaceAdapter);

TEST(ApplicationLookUp, findsTheDesktopEntry) {
  const struct {
    const char* application;
    bool isFound;
  } rows[] = {
      {"org.example.Plain", true},
      {"org.example.Activatable", true},
      {"org.example.BusOnly", true},
      {"org.example.NoDisplay", true},
      {"org.example.Hidden", false},
      {"org.example.TryExecMissing", false},
      {"org.example.CommandMissing", false},
      {"org.example.TooLong", false},
      {"org.example.Absent", false},
      {"org.example.Plain.desktop", false},
      {"", false},
  };
  for (const auto& row : rows) {
    const Environment environment;
    SessionBus bus(environment, 60s);
    const PosixFileReader fileReader;
    LinuxWorkspace workspace(bus, environment, fileReader);
    const std::string file = dataHome() + "/applications/" + row.application + ".desktop";
    EXPECT_EQ(workspace.applicationLocation(row.application),
              row.isFound ? std::optional<Text>(file) : std::nullopt)
        << row.application;
  }
}

/// A desktop where a launcher has passed both tokens to this program.
class LinuxWorkspaceTest : public testing::Test {
 protected:
  using Variables = Environment::Variables;

  static Variables tokensAnd(const std::string& busAddress) {
    return {{"DBUS_SESSION_BUS_ADDRESS", busAddress},
            {"XDG_ACTIVATION_TOKEN", "wayland-token"},
            {"DESKTOP_STARTUP_ID", "x11-id"}};
  }

  /// Opens an application and finishes the pending activation.
  static void open(const std::string& application, const Variables& variables,
                   OpenConfiguration configuration = activating,
                   std::chrono::milliseconds limit = 60s) {
    const Environment environment(variables);
    SessionBus bus(environment, limit);
    const PosixFileReader fileReader;
    LinuxWorkspace workspace(bus, environment, fileReader);
    const std::optional<Text> location = workspace.applicationLocation(application);
    if (!location) {
      throw std::invalid_argument(application);
    }
    workspace.openApplication(*location, configuration);
    workspace.finishPendingActivation();
  }

  /// Expects that the next started application has this name, and has the three variables only as
  /// given.
  static void expectStarted(const std::string& application, const Variables& variables) {
    const LaunchedApplication started(*launches);
    EXPECT_EQ(started.value("argument"), application);
    for (const char* name :
         {"DBUS_SESSION_BUS_ADDRESS", "XDG_ACTIVATION_TOKEN", "DESKTOP_STARTUP_ID"}) {
      const auto given = variables.find(name);
      EXPECT_EQ(started.variable(name),
                given == variables.end() ? std::nullopt : std::optional(given->second))
          << name;
    }
  }

  PrivateBus daemon;
};

TEST_F(LinuxWorkspaceTest, activatesARunningApplicationWithBothTokens) {
  BusPeer application(daemon.address());
  application.own("org.example.Activatable");
  open("org.example.Activatable", tokensAnd(daemon.address()));
  open("org.example.Plain", tokensAnd(daemon.address()));

  const std::vector<BusMessage> received = application.received(1);
  ASSERT_EQ(received.size(), 1U);
  EXPECT_TRUE(received.front().isCall);
  EXPECT_EQ(received.front().path, "/org/example/Activatable");
  EXPECT_EQ(received.front().interface, "org.freedesktop.Application");
  EXPECT_EQ(received.front().member, "Activate");
  EXPECT_EQ(received.front().arguments, tokens);
  // The running application was not started again.
  EXPECT_EQ(nextStarted(), "org.example.Plain");
}

TEST_F(LinuxWorkspaceTest, activatesWithoutMissingTokens) {
  BusPeer application(daemon.address());
  application.own("org.example.with-dash");
  open("org.example.with-dash", {{"DBUS_SESSION_BUS_ADDRESS", daemon.address()},
                                 {"XDG_ACTIVATION_TOKEN", ""},
                                 {"DESKTOP_STARTUP_ID", "not UTF-8: \xFF"}});
  const BusMessage call = application.received(1).front();
  EXPECT_EQ(call.path, "/org/example/with_dash");
  EXPECT_EQ(call.arguments, "(@a{sv} {},)");
}

TEST_F(LinuxWorkspaceTest, startsAnActivatableApplicationThatDoesNotRun) {
  // A service that the bus started would end at once.
  daemon.addService("org.example.Activatable", "/bin/false");
  open("org.example.Activatable", tokensAnd(daemon.address()));
  expectStarted("org.example.Activatable", tokensAnd(daemon.address()));
}

TEST_F(LinuxWorkspaceTest, runsTheCommandOfAnApplicationThatIsNotActivatable) {
  BusPeer application(daemon.address());
  application.own("org.example.Plain");
  open("org.example.Plain", tokensAnd(daemon.address()));
  expectStarted("org.example.Plain", tokensAnd(daemon.address()));
}

TEST_F(LinuxWorkspaceTest, detachesTheCommandFromThisProgram) {
  open("org.example.Plain", {});
  const LaunchedApplication started(*launches);
  EXPECT_EQ(started.values("stream"), std::vector<std::string>(3, "/dev/null"));
  EXPECT_EQ(started.value("session"), started.value("process"));
  // GIO ignores SIGPIPE, but its children must not.
  EXPECT_EQ(started.value("ignoresBrokenPipes"), "no");
}

TEST_F(LinuxWorkspaceTest, givesTheCommandOnlyTheTokensOfThisProgram) {
  open("org.example.Plain", {});
  expectStarted("org.example.Plain", {});
}

TEST_F(LinuxWorkspaceTest, neitherActivatesNorPassesTokensUnlessAsked) {
  BusPeer application(daemon.address());
  application.own("org.example.Activatable");
  open("org.example.Activatable", tokensAnd(daemon.address()), {.activates = false});
  expectStarted("org.example.Activatable", {{"DBUS_SESSION_BUS_ADDRESS", daemon.address()}});
}

TEST_F(LinuxWorkspaceTest, waitsWhileTheBusStartsTheApplication) {
  daemon.addService("org.example.BusOnly",
                    applicationCommand(*launches, "", "org.example.BusOnly"));
  open("org.example.BusOnly", tokensAnd(daemon.address()));
  EXPECT_EQ(LaunchedApplication(*launches).values("call"),
            std::vector{"/org/example/BusOnly org.freedesktop.Application.Activate" +
                        std::string(tokens)});
}

TEST_F(LinuxWorkspaceTest, returnsWhenTheBusCannotStartTheApplication) {
  const BrokenBus deaf(BusFault::letsNobodyIn);
  for (const std::string& address : {std::string(), daemon.address(), deaf.address()}) {
    open("org.example.BusOnly", tokensAnd(address), activating, 200ms);
  }
  open("org.example.Plain", {});
  EXPECT_EQ(nextStarted(), "org.example.Plain");
}

TEST_F(LinuxWorkspaceTest, startsTheApplicationWhileTheBusHangs) {
  for (const BusFault fault : {BusFault::letsNobodyIn, BusFault::answersNothing}) {
    const BrokenBus bus(fault);
    open("org.example.Activatable", tokensAnd(bus.address()), activating, 200ms);
    expectStarted("org.example.Activatable", tokensAnd(bus.address()));
  }
}

/// Creates a desktop in `home`.
void makeDesktop(const ScratchDirectory& home) {
  launches = std::make_unique<Listener>(home.path("launches"));
  const auto install = [&home](const std::string& application, const std::string& lines) {
    home.write("applications/" + application + ".desktop",
               "[Desktop Entry]\nType=Application\nName=Example\n" + lines);
  };
  const auto command = [](const std::string& application) {
    return "Exec=" + applicationCommand(*launches, application) + "\n";
  };
  install("org.example.Plain", command("org.example.Plain"));
  install("org.example.Activatable", "DBusActivatable=true\n" + command("org.example.Activatable"));
  install("org.example.with-dash", "DBusActivatable=true\n" + command("org.example.with-dash"));
  install("org.example.BusOnly", "DBusActivatable=true\n");
  install("org.example.NoDisplay", "NoDisplay=true\n" + command("org.example.NoDisplay"));
  install("org.example.Hidden", "Hidden=true\n" + command("org.example.Hidden"));
  install("org.example.TryExecMissing",
          "TryExec=/does/not/exist\n" + command("org.example.TryExecMissing"));
  install("org.example.CommandMissing", "Exec=/does/not/exist\n");
  install("org.example.TooLong",
          command("org.example.TooLong") + "#" + std::string(1024 * 1024, 'x') + "\n");
}

int runTests() {
  const ScratchDirectory home;
  makeDesktop(home);
  setenv("XDG_DATA_HOME", home.path().c_str(), 1);
  setenv("XDG_DATA_DIRS", home.path("none").c_str(), 1);
  detachSessionBusFromLibraries();
  return RUN_ALL_TESTS();
}

}  // namespace
}  // namespace velmora

int main(int count, char** words) {
  try {
    testing::InitGoogleTest(&count, words);
    return velmora::runTests();
  } catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
    return EXIT_FAILURE;
  }
}

#include "platform/linux/Environment.h"
#include "platform/linux/LinuxWorkspace.h"
#include "platform/linux/SessionBus.h"
#include "platform/posix/PosixFileReader.h"
#include "tests/contracts/WorkspaceContract.h"
#include "tests/support/BusPeer.h"
#include "tests/support/Buses.h"
#include "tests/support/HostileFiles.h"
#include "tests/support/LaunchedApplication.h"
#include "tests/support/Process.h"
#include "tests/support/ScratchDirectory.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

#include <chrono>
#include <cstddef>
#include <filesystem>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace velmora {
namespace {

using namespace std::chrono_literals;

using Variables = Environment::Variables;

constexpr OpenConfiguration activating = {.activates = true, .addsToRecentItems = false};

constexpr const char* tokens =
    "({'activation-token': <'wayland-token'>, 'desktop-startup-id': <'x11-id'>},)";

/// A data home with applications, which report their starts.
class Desktop {
 public:
  Desktop() {
    install("org.example.Plain", command("org.example.Plain"));
    for (const char* application : {"org.example.Activatable", "org.example.with-dash"}) {
      install(application, "DBusActivatable=true\n" + command(application));
    }
    install("org.example.BusOnly", "DBusActivatable=true\n");
  }

  std::string install(const std::string& application, const std::string& lines) const {
    return home_.write("applications/" + application + ".desktop",
                       "[Desktop Entry]\nType=Application\nName=Example\n" + lines);
  }

  /// The line of an entry that starts an application with its name as argument.
  std::string command(const std::string& application) const {
    return "Exec=" + applicationCommand(launches, application) + "\n";
  }

  /// `variables` and those that every program needs here.
  Environment environmentWith(Variables variables) const {
    variables.emplace("XDG_DATA_HOME", home_.path());
    for (const auto& variable : process::helperEnvironment()) {
      variables.insert(variable);
    }
    return Environment(std::move(variables));
  }

  /// The name of the next started application. The call ends the application.
  std::string nextStarted() const { return LaunchedApplication(launches).value("argument"); }

 private:
  ScratchDirectory home_;

 public:
  const Listener launches{home_.path("launches")};
};

class LinuxWorkspaceAdapter {
 public:
  Workspace& workspace() { return workspace_; }
  static std::string installedApplication() { return "org.example.Plain"; }
  static std::string otherInstalledApplication() { return "org.example.Activatable"; }
  static Text emptyLocation() { return {"/does/not/exist.desktop"}; }

  std::vector<std::string> opened(std::size_t count) const {
    std::vector<std::string> applications;
    while (applications.size() < count) {
      applications.push_back(desktop_.nextStarted());
    }
    return applications;
  }

 private:
  Desktop desktop_;
  PrivateBus daemon_;
  Environment environment_ =
      desktop_.environmentWith({{"DBUS_SESSION_BUS_ADDRESS", daemon_.address()}});
  SessionBus bus_{environment_, 60s};
  PosixFileReader fileReader_;
  LinuxWorkspace workspace_{bus_, environment_, fileReader_};
};

INSTANTIATE_TYPED_TEST_SUITE_P(Linux, WorkspaceContract, LinuxWorkspaceAdapter);

/// A desktop where a launcher has passed both tokens to this program.
class LinuxWorkspaceTest : public testing::Test {
 protected:
  static Variables tokensAnd(const std::string& busAddress) {
    return {{"DBUS_SESSION_BUS_ADDRESS", busAddress},
            {"XDG_ACTIVATION_TOKEN", "wayland-token"},
            {"DESKTOP_STARTUP_ID", "x11-id"}};
  }

  /// Opens an application and finishes the pending activation.
  void open(const std::string& application, const Variables& variables,
            OpenConfiguration configuration = activating,
            std::chrono::milliseconds limit = 60s) const {
    const Environment environment = desktop.environmentWith(variables);
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
  void expectStarted(const std::string& application, const Variables& variables) const {
    const LaunchedApplication started(desktop.launches);
    EXPECT_EQ(started.value("argument"), application);
    for (const char* name :
         {"DBUS_SESSION_BUS_ADDRESS", "XDG_ACTIVATION_TOKEN", "DESKTOP_STARTUP_ID"}) {
      const auto given = variables.find(name);
      EXPECT_EQ(started.variable(name),
                given == variables.end() ? std::nullopt : std::optional(given->second))
          << name;
    }
  }

  const Desktop desktop;
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
  EXPECT_EQ(desktop.nextStarted(), "org.example.Plain");
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
  const LaunchedApplication started(desktop.launches);
  EXPECT_EQ(started.values("stream"), std::vector<std::string>(3, "/dev/null"));
  EXPECT_EQ(started.value("session"), started.value("process"));
  // This program ignores SIGPIPE, but its children must not.
  EXPECT_EQ(started.value("ignoresBrokenPipes"), "no");
}

TEST_F(LinuxWorkspaceTest, runsTheCommandWithItsArgumentsInItsDirectory) {
  const ScratchDirectory directory;
  desktop.install("org.example.Argument",
                  "Exec=" + applicationCommand(desktop.launches, R"(%U "a \\"b\\" \\$c %%")") +
                      "\nPath=" + directory.path() + "\n");
  open("org.example.Argument", {});
  const LaunchedApplication started(desktop.launches);
  EXPECT_EQ(started.values("argument"), std::vector<std::string>{R"(a "b" $c %)"});
  EXPECT_EQ(started.value("directory"), std::filesystem::canonical(directory.path()));
}

TEST_F(LinuxWorkspaceTest, neitherActivatesNorPassesTokensUnlessAsked) {
  BusPeer application(daemon.address());
  application.own("org.example.Activatable");
  open("org.example.Activatable", tokensAnd(daemon.address()), {.activates = false});
  expectStarted("org.example.Activatable", {{"DBUS_SESSION_BUS_ADDRESS", daemon.address()}});
}

TEST_F(LinuxWorkspaceTest, opensTheEntryThatItFound) {
  const std::string file = desktop.install("org.example.Changing", desktop.command("found"));
  const Environment environment = desktop.environmentWith({});
  SessionBus bus(environment);
  const PosixFileReader fileReader;
  LinuxWorkspace workspace(bus, environment, fileReader);
  ASSERT_EQ(workspace.applicationLocation("org.example.Changing"), Text(file));
  std::filesystem::remove(file);
  require(::mkfifo(file.c_str(), 0600) == 0, file);
  workspace.openApplication(file, activating);
  EXPECT_EQ(desktop.nextStarted(), "found");
}

TEST_F(LinuxWorkspaceTest, waitsWhileTheBusStartsTheApplication) {
  daemon.addService("org.example.BusOnly",
                    applicationCommand(desktop.launches, "", "org.example.BusOnly"));
  open("org.example.BusOnly", tokensAnd(daemon.address()));
  EXPECT_EQ(LaunchedApplication(desktop.launches).values("call"),
            std::vector{"/org/example/BusOnly org.freedesktop.Application.Activate" +
                        std::string(tokens)});
}

TEST_F(LinuxWorkspaceTest, letsTheBusStartAnApplicationWhoseCommandCannotBeRun) {
  const ScratchDirectory directory;
  const std::string program = directory.write("program", "#!/does/not/exist\n");
  std::filesystem::permissions(program, std::filesystem::perms::owner_all);
  desktop.install("org.example.Broken", "DBusActivatable=true\nExec=" + program + "\n");
  daemon.addService("org.example.Broken",
                    applicationCommand(desktop.launches, "service", "org.example.Broken"));
  open("org.example.Broken", tokensAnd(daemon.address()));
  EXPECT_EQ(desktop.nextStarted(), "service");
}

TEST_F(LinuxWorkspaceTest, returnsWhenTheBusCannotStartTheApplication) {
  const BrokenBus deaf(BusStage::connected);
  for (const std::string& address : {std::string(), daemon.address(), deaf.address()}) {
    open("org.example.BusOnly", tokensAnd(address), activating, 200ms);
  }
  open("org.example.Plain", {});
  EXPECT_EQ(desktop.nextStarted(), "org.example.Plain");
}

TEST_F(LinuxWorkspaceTest, startsTheApplicationWhileTheBusHangs) {
  for (const BusStage stage : {BusStage::connected, BusStage::greeting}) {
    const BrokenBus bus(stage);
    open("org.example.Activatable", tokensAnd(bus.address()), activating, 200ms);
    expectStarted("org.example.Activatable", tokensAnd(bus.address()));
  }
}

}  // namespace
}  // namespace velmora

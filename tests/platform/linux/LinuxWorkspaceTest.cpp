// Applications on a desktop of their own, which main() sets up: GLib looks for desktop entries
// where the environment told it to when it first looked.
#include "platform/linux/Environment.h"
#include "platform/linux/LinuxWorkspace.h"
#include "platform/linux/SessionBus.h"
#include "platform/posix/FileDescriptor.h"
#include "platform/posix/PosixFileReader.h"
#include "tests/support/RowName.h"
#include "tests/support/ScratchDirectory.h"
#include "tests/contracts/WorkspaceContract.h"
#include "tests/platform/linux/BusPeer.h"
#include "tests/platform/linux/Buses.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstddef>
#include <cstdlib>
#include <exception>
#include <fstream>
#include <iostream>
#include <optional>
#include <ostream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace velmora {
namespace {

using namespace std::chrono_literals;

constexpr OpenConfiguration activating = {.activates = true, .addsToRecentItems = false};

std::string dataHome() {
  return std::string(captureEnvironment().variable("XDG_DATA_HOME").value());
}

std::string reportsPipe(const std::string& home) { return home + "/reports"; }

/// The name as the path of an application's object.
std::string objectPath(std::string name) {
  for (char& character : name) {
    character = character == '.' ? '/' : character;
    character = character == '-' ? '_' : character;
  }
  return "/" + name;
}

/// What the started applications tell of themselves.
class Reports {
 public:
  /// The next report: lines of a name and a value, in the order in which they were written.
  std::vector<std::pair<std::string, std::string>> next() {
    std::vector<std::pair<std::string, std::string>> report;
    for (std::string line = readLine(); line != "end"; line = readLine()) {
      const std::size_t equals = line.find('=');
      report.emplace_back(line.substr(0, equals), line.substr(equals + 1));
    }
    return report;
  }

 private:
  std::string readLine() {
    std::string line;
    for (char character = 0; read(pipe_.get(), &character, 1) == 1 && character != '\n';) {
      line.push_back(character);
    }
    return line;
  }

  // For writing, too: an application that reports to nobody must not wait for a reader for ever.
  FileDescriptor pipe_ =
      FileDescriptor::adopt(open(reportsPipe(dataHome()).c_str(), O_RDWR | O_CLOEXEC));
};

std::optional<std::string> value(const std::vector<std::pair<std::string, std::string>>& report,
                                 std::string_view name) {
  for (const auto& [lineName, lineValue] : report) {
    if (lineName == name) {
      return lineValue;
    }
  }
  return std::nullopt;
}

class LinuxWorkspaceAdapter {
 public:
  Workspace& workspace() { return workspace_; }
  static std::string installedApplication() { return "org.example.Plain"; }
  static std::string otherInstalledApplication() { return "org.example.Activatable"; }
  static Text emptyLocation() { return {"/does/not/exist.desktop"}; }

  std::vector<std::string> opened(std::size_t count) {
    std::vector<std::string> applications;
    while (applications.size() < count) {
      applications.push_back(value(reports_.next(), "started").value());
    }
    return applications;
  }

 private:
  PrivateBus daemon_;
  Environment environment_{{{"DBUS_SESSION_BUS_ADDRESS", daemon_.address()}}};
  SessionBus bus_{environment_, 60s};
  PosixFileReader fileReader_;
  LinuxWorkspace workspace_{bus_, environment_, fileReader_};
  Reports reports_;
};

INSTANTIATE_TYPED_TEST_SUITE_P(Linux, WorkspaceContract, LinuxWorkspaceAdapter);

struct LookUpCase {
  std::string name;
  std::string application;
  bool isFound;
};

std::ostream& operator<<(std::ostream& out, const LookUpCase& row) { return out << row.name; }

class ApplicationLookUp : public testing::TestWithParam<LookUpCase> {};

TEST_P(ApplicationLookUp, findsTheDesktopEntry) {
  const Environment environment;
  SessionBus bus(environment, 60s);
  const PosixFileReader fileReader;
  LinuxWorkspace workspace(bus, environment, fileReader);
  const std::string file = dataHome() + "/applications/" + GetParam().application + ".desktop";
  EXPECT_EQ(workspace.applicationLocation(GetParam().application),
            GetParam().isFound ? std::optional<Text>(file) : std::nullopt);
}

INSTANTIATE_TEST_SUITE_P(
    Table, ApplicationLookUp,
    testing::Values(LookUpCase{"plain", "org.example.Plain", true},
                    LookUpCase{"activatable", "org.example.Activatable", true},
                    LookUpCase{"activatableWithoutCommand", "org.example.BusOnly", true},
                    LookUpCase{"noDisplay", "org.example.NoDisplay", true},
                    LookUpCase{"hidden", "org.example.Hidden", false},
                    LookUpCase{"tryExecMissing", "org.example.TryExecMissing", false},
                    LookUpCase{"commandMissing", "org.example.CommandMissing", false},
                    LookUpCase{"longerThanTheLimit", "org.example.TooLong", false},
                    LookUpCase{"noEntry", "org.example.Absent", false},
                    LookUpCase{"fileName", "org.example.Plain.desktop", false},
                    LookUpCase{"empty", "", false}),
    RowName());

/// A desktop on which a launcher has given this program both tokens.
class LinuxWorkspaceTest : public testing::Test {
 protected:
  using Variables = Environment::Variables;

  static Variables tokensAnd(const std::string& busAddress) {
    return {{"DBUS_SESSION_BUS_ADDRESS", busAddress},
            {"XDG_ACTIVATION_TOKEN", "wayland-token"},
            {"DESKTOP_STARTUP_ID", "x11-id"}};
  }

  /// Opens an application and does what is left to do before the end of the program.
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

  static void runOn(BusPeer& peer, const std::string& application) {
    peer.serve(objectPath(application), applicationInterfaceXml, "()");
    peer.own(application);
  }

  Reports reports;
};

TEST_F(LinuxWorkspaceTest, activatesARunningApplicationWithBothTokens) {
  const PrivateBus daemon;
  BusPeer application(daemon.address());
  runOn(application, "org.example.Activatable");
  open("org.example.Activatable", tokensAnd(daemon.address()));
  open("org.example.Plain", tokensAnd(daemon.address()));

  const std::vector<BusMessage> received = application.received(1);
  ASSERT_EQ(received.size(), 1U);
  EXPECT_EQ(received.front().path, "/org/example/Activatable");
  EXPECT_EQ(received.front().interface, "org.freedesktop.Application");
  EXPECT_EQ(received.front().member, "Activate");
  EXPECT_EQ(received.front().arguments,
            "({'activation-token': <'wayland-token'>, 'desktop-startup-id': <'x11-id'>},)");
  // It was not started as well.
  EXPECT_EQ(value(reports.next(), "started"), "org.example.Plain");
}

TEST_F(LinuxWorkspaceTest, activatesWithoutTokensThatAreNotThere) {
  const PrivateBus daemon;
  BusPeer application(daemon.address());
  runOn(application, "org.example.with-dash");
  open("org.example.with-dash", {{"DBUS_SESSION_BUS_ADDRESS", daemon.address()},
                                 {"XDG_ACTIVATION_TOKEN", ""},
                                 {"DESKTOP_STARTUP_ID", "not UTF-8: \xFF"}});
  EXPECT_EQ(application.received(1).front().path, "/org/example/with_dash");
  EXPECT_EQ(application.received(1).front().arguments, "(@a{sv} {},)");
}

TEST_F(LinuxWorkspaceTest, startsAnActivatableApplicationThatDoesNotRun) {
  const PrivateBus daemon;
  // What the bus would start ends at once.
  daemon.addService("org.example.Activatable", "/bin/false");
  open("org.example.Activatable", tokensAnd(daemon.address()));
  const auto report = reports.next();
  EXPECT_EQ(value(report, "started"), "org.example.Activatable");
  EXPECT_EQ(value(report, "DBUS_SESSION_BUS_ADDRESS"), daemon.address());
  EXPECT_EQ(value(report, "XDG_ACTIVATION_TOKEN"), "wayland-token");
  EXPECT_EQ(value(report, "DESKTOP_STARTUP_ID"), "x11-id");
}

TEST_F(LinuxWorkspaceTest, runsTheCommandOfAnApplicationThatIsNotActivatable) {
  const PrivateBus daemon;
  BusPeer application(daemon.address());
  runOn(application, "org.example.Plain");
  open("org.example.Plain", tokensAnd(daemon.address()));
  EXPECT_EQ(value(reports.next(), "started"), "org.example.Plain");
}

TEST_F(LinuxWorkspaceTest, cutsTheCommandOffFromItsStarter) {
  open("org.example.Plain", {});
  const auto report = reports.next();
  for (const std::string_view stream : {"0", "1", "2"}) {
    EXPECT_EQ(value(report, stream), "/dev/null") << stream;
  }
  EXPECT_EQ(value(report, "session"), value(report, "process"));
  // GIO ignores broken pipes; its children should not.
  const unsigned long long ignored =
      std::strtoull(value(report, "ignored").value().c_str(), nullptr, 16);
  EXPECT_EQ(ignored >> (SIGPIPE - 1) & 1U, 0U);
}

TEST_F(LinuxWorkspaceTest, givesTheCommandOnlyWhatThisProgramWasGiven) {
  open("org.example.Plain", {});
  const auto report = reports.next();
  EXPECT_EQ(value(report, "DBUS_SESSION_BUS_ADDRESS"), std::nullopt);
  EXPECT_EQ(value(report, "XDG_ACTIVATION_TOKEN"), std::nullopt);
  EXPECT_EQ(value(report, "DESKTOP_STARTUP_ID"), std::nullopt);
}

TEST_F(LinuxWorkspaceTest, neitherActivatesNorPassesTokensUnlessAsked) {
  const PrivateBus daemon;
  BusPeer application(daemon.address());
  runOn(application, "org.example.Activatable");
  open("org.example.Activatable", tokensAnd(daemon.address()), {.activates = false});
  const auto report = reports.next();
  EXPECT_EQ(value(report, "started"), "org.example.Activatable");
  EXPECT_EQ(value(report, "DBUS_SESSION_BUS_ADDRESS"), daemon.address());
  EXPECT_EQ(value(report, "XDG_ACTIVATION_TOKEN"), std::nullopt);
  EXPECT_EQ(value(report, "DESKTOP_STARTUP_ID"), std::nullopt);
}

TEST_F(LinuxWorkspaceTest, waitsForAnApplicationThatOnlyTheBusCanStart) {
  const PrivateBus daemon;
  daemon.addService("org.example.BusOnly", "/proc/" + std::to_string(getpid()) +
                                               "/exe --application org.example.BusOnly " +
                                               reportsPipe(dataHome()));
  open("org.example.BusOnly", tokensAnd(daemon.address()));
  EXPECT_EQ(value(reports.next(), "activated"),
            "({'activation-token': <'wayland-token'>, 'desktop-startup-id': <'x11-id'>},)");
}

TEST_F(LinuxWorkspaceTest, comesBackWhenTheBusCannotStartTheApplication) {
  const PrivateBus daemon;
  const DeafBus deaf;
  for (const std::string& address : {std::string(), daemon.address(), deaf.address()}) {
    open("org.example.BusOnly", tokensAnd(address), activating, 200ms);
  }
  open("org.example.Plain", {});
  EXPECT_EQ(value(reports.next(), "started"), "org.example.Plain");
}

TEST_F(LinuxWorkspaceTest, startsTheApplicationThoughTheBusHangs) {
  const DeafBus deaf;
  const MuteBus mute;
  for (const std::string& address : {deaf.address(), mute.address()}) {
    open("org.example.Activatable", tokensAnd(address), activating, 200ms);
    const auto report = reports.next();
    EXPECT_EQ(value(report, "started"), "org.example.Activatable");
    EXPECT_EQ(value(report, "DBUS_SESSION_BUS_ADDRESS"), address);
  }
}

/// The program of org.example.BusOnly: takes one activation, reports it and ends.
int runApplication(const std::string& name, const std::string& reports) {
  BusPeer peer(std::string(captureEnvironment().variable(sessionBusAddressVariable).value()));
  peer.serve(objectPath(name), applicationInterfaceXml, "()");
  peer.own(name);
  const std::string arguments = peer.received(1).front().arguments;
  peer.flush();
  std::ofstream(reports) << "activated=" << arguments << "\nend\n";
  return EXIT_SUCCESS;
}

/// The program of the others: reports how it was started, to the pipe that is its second argument.
constexpr std::string_view reportingProgram = R"sh(#!/bin/sh
report=$(
  echo "started=$1"
  env | grep -E '^(DBUS_SESSION_BUS_ADDRESS|XDG_ACTIVATION_TOKEN|DESKTOP_STARTUP_ID)='
  for stream in 0 1 2; do echo "$stream=$(readlink /proc/$$/fd/$stream)"; done
  echo "process=$$"
  echo "session=$(cut -d' ' -f6 /proc/$$/stat)"
  sed -n 's/^SigIgn:[[:blank:]]*/ignored=/p' /proc/$$/status
)
printf '%s\nend\n' "$report" > "$2"
)sh";

/// Makes a desktop in `home`.
void makeDesktop(const ScratchDirectory& home) {
  const std::string reports = reportsPipe(home.path());
  if (mkfifo(reports.c_str(), 0600) != 0) {
    throw std::runtime_error(reports);
  }
  const std::string program = home.write("program", reportingProgram);
  chmod(program.c_str(), 0700);
  const auto install = [&home](const std::string& application, const std::string& lines) {
    home.write("applications/" + application + ".desktop",
               "[Desktop Entry]\nType=Application\nName=Example\n" + lines);
  };
  const auto command = [&](const std::string& application) {
    return "Exec=" + program + " " + application + " " + reports + "\n";
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
    const std::vector<std::string> arguments(words, words + count);
    if (count == 4 && arguments[1] == "--application") {
      return velmora::runApplication(arguments[2], arguments[3]);
    }
    testing::InitGoogleTest(&count, words);
    return velmora::runTests();
  } catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
    return EXIT_FAILURE;
  }
}
